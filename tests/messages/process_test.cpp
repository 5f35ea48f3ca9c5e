#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "support/capture_ui.h"
#include "varnel/messages.h"

namespace varnel {
namespace {

using testing::CaptureScope;
using testing::ShownMessage;

constexpr int32_t kBase = -2147221504;

TEST(ShowErr, ShowsTheNormalisedNumberAfterTheErrorPrefix) {
  struct Case {
    int32_t number;
    int32_t language;
    const char* title_line;
  };
  const Case cases[] = {
      {kBase + 513, 1033, "Error:513"},
      {94, 1033, "Error:94"},
      {kBase + 70000, 1033, "Error:-2147151504"},
      {kBase, 1033, "Error:-2147221504"},
      {kBase + 65534, 1033, "Error:65534"},
      {kBase + 65535, 1033, "Error:-2147155969"},
      {-1, 1033, "Error:-1"},
      {94, 2052, "错误：94"},
  };
  for (const Case& c : cases) {
    CaptureScope capture(c.language);
    bool state = false;
    MdlProcess::ShowErr("Title", c.number, "Description", state);
    ASSERT_EQ(capture.shown().size(), 1u) << c.number;
    const ShownMessage& shown = capture.shown()[0];
    EXPECT_EQ(shown.kind, ShownMessage::Error);
    EXPECT_EQ(shown.caption, "Title");
    EXPECT_EQ(shown.title, c.title_line);
    EXPECT_EQ(shown.text, "Description");
    EXPECT_EQ(MdlProcess::ErrForm().CmdOk.Caption, c.language == 2052 ? "确定" : "OK");
    EXPECT_TRUE(capture.ui().saw_visible);
    EXPECT_FALSE(MdlProcess::ErrForm().Visible);
    EXPECT_FALSE(state);
  }
}

TEST(ShowErr, NumberZeroShowsNothingAndLeavesTheFlag) {
  CaptureScope capture;
  for (bool initial : {false, true}) {
    bool state = initial;
    MdlProcess::ShowErr("Title", 0, "Description", state);
    int16_t buttons = 0;
    MdlProcess::ShowErrBox("Title", 0, "Description", buttons, state);
    EXPECT_EQ(state, initial);
  }
  EXPECT_TRUE(capture.shown().empty());
}

// A UI that runs a callback while a form or box is on screen.
class CallbackUi : public testing::CaptureUi {
 public:
  std::function<void()> while_shown;
  void ShowErrForm(FrmShowErr& form) override {
    Run();
    CaptureUi::ShowErrForm(form);
  }
  void ShowInforForm(FrmShowInfor& form) override {
    Run();
    CaptureUi::ShowInforForm(form);
  }
  int32_t MsgBox(const std::string& prompt, int32_t buttons, const std::string& title) override {
    Run();
    last_buttons = buttons;
    return CaptureUi::MsgBox(prompt, buttons, title);
  }
  int32_t last_buttons = -1;

 private:
  void Run() {
    if (auto run = std::exchange(while_shown, nullptr)) {
      run();
    }
  }
};

struct CallbackScope {
  std::shared_ptr<CallbackUi> ui = std::make_shared<CallbackUi>();
  CallbackScope() {
    SetMessageUi(ui);
    SetThreadUILanguage(1033);
  }
  ~CallbackScope() {
    SetMessageUi(nullptr);
    SetThreadUILanguage(0);
  }
};

TEST(MessageProcedures, HoldSysErrStateTrueOnlyWhileTheMessageIsShown) {
  CallbackScope scope;
  bool state = false;
  std::vector<bool> seen;
  auto observe = [&] { seen.push_back(state); };
  scope.ui->while_shown = observe;
  MdlProcess::ShowErr("T", 94, "D", state);
  scope.ui->while_shown = observe;
  MdlProcess::ShowInfor("I", state);
  int16_t buttons = 0;
  scope.ui->while_shown = observe;
  MdlProcess::ShowErrBox("T", 94, "D", buttons, state);
  EXPECT_EQ(seen, (std::vector<bool>{true, true, true}));
  EXPECT_FALSE(state);
}

TEST(ShowErr, AVisibleFormIsReusedWithTheNewTexts) {
  CallbackScope scope;
  bool state = false;
  FrmShowErr seen_inside;
  scope.ui->while_shown = [&] {
    bool inner = false;
    MdlProcess::ShowErr("Second", kBase + 7, "Again", inner);
    seen_inside = MdlProcess::ErrForm();
  };
  MdlProcess::ShowErr("First", 94, "Once", state);
  ASSERT_EQ(scope.ui->shown.size(), 1u) << "the visible form is not shown again";
  EXPECT_EQ(seen_inside.Caption, "Second");
  EXPECT_EQ(seen_inside.Txt_Title.Text, "Error:7");
  EXPECT_EQ(seen_inside.Txt_ErrDescription.Text, "Again");
  EXPECT_TRUE(seen_inside.Visible);
  EXPECT_EQ(scope.ui->shown[0].caption, "Second");
  EXPECT_FALSE(MdlProcess::ErrForm().Visible);
}

TEST(ShowInfor, ShowsTheInformationCaptionAndReusesAVisibleForm) {
  for (int32_t language : {1033, 2052}) {
    CallbackScope scope;
    SetThreadUILanguage(language);
    bool state = false;
    scope.ui->while_shown = [] {
      bool inner = false;
      MdlProcess::ShowInfor("replaced", inner);
    };
    MdlProcess::ShowInfor("first", state);
    ASSERT_EQ(scope.ui->shown.size(), 1u);
    EXPECT_EQ(scope.ui->shown[0].caption, language == 2052 ? "信息" : "Information");
    EXPECT_EQ(scope.ui->shown[0].text, "replaced");
    EXPECT_EQ(MdlProcess::InforForm().CmdOk.Caption, language == 2052 ? "确定" : "OK");
    EXPECT_TRUE(scope.ui->saw_visible);
    EXPECT_FALSE(MdlProcess::InforForm().Visible);
  }
}

TEST(ShowErrBox, ShowsNumberLineAndDescriptionWithTheCallersButtonsAndTitle) {
  CallbackScope scope;
  bool state = false;
  int16_t buttons = 4 + 32;
  MdlProcess::ShowErrBox("Refresh", kBase + 513, "Lost connection", buttons, state);
  ASSERT_EQ(scope.ui->shown.size(), 1u);
  EXPECT_EQ(scope.ui->shown[0].kind, ShownMessage::Box);
  EXPECT_EQ(scope.ui->shown[0].caption, "Refresh");
  EXPECT_EQ(scope.ui->shown[0].text, "Error:513\r\nLost connection");
  EXPECT_EQ(scope.ui->last_buttons, 36);
}

TEST(MessageUi, AFailingUiCountsAsClosed) {
  CallbackScope scope;
  bool state = false;
  scope.ui->while_shown = [] { throw std::runtime_error("window system gone"); };
  EXPECT_NO_THROW(MdlProcess::ShowErr("T", 94, "D", state));
  EXPECT_FALSE(state);
  EXPECT_FALSE(MdlProcess::ErrForm().Visible);
  scope.ui->while_shown = [] { throw 1; };
  EXPECT_EQ(MsgBox("prompt"), 0);
}

}  // namespace
}  // namespace varnel
