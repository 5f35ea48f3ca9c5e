// Messages to the user: the two-language string table and the UI language,
// the error and information forms and the error box, the error trap, and the
// built-in console UI.
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <functional>
#include <optional>
#include <stdexcept>
#include <thread>
#include <tuple>
#include <utility>
#include <vector>

#include "messages/console_ui.h"
#include "messages/error_trap.h"
#include "support/capture_ui.h"
#include "varnel/variant.h"

namespace varnel::testing {
namespace {

constexpr int32_t kBase = -2147221504;  // an application error is this base plus its code

// Texts 106 (the "Error:" title) and 113 (the percent bounds) are checked in
// both languages where FormatValue refuses a value (tests/query).
TEST(StringTable, HoldsBothLanguagesByteForByteAndTheLanguageIsPerThread) {
  const std::tuple<int32_t, const char*, const char*> rows[] = {
      {105, " can not be null.", "  不能为空！"},
      {602, "Information", "信息"},
      {603, "", ""},
  };
  for (const auto& [id, english, chinese] : rows) {
    SetThreadUILanguage(1033);
    EXPECT_EQ(LoadResString(id), english) << id;
    SetThreadUILanguage(2052);
    EXPECT_EQ(LoadResString(id), chinese) << id;
  }
  std::thread([] {
    SetThreadUILanguage(1041);
    EXPECT_EQ(LoadResString(101), "Error") << "any other language reads English";
  }).join();
  EXPECT_EQ(LoadResString(101), "错误");
  SetThreadUILanguage(0);
}

TEST(UiLanguage, ZeroFollowsTheFirstNonEmptyLocaleVariable) {
  const char* names[] = {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"};
  std::array<std::optional<std::string>, 4> before;  // restored at the end
  for (size_t i = 0; i < 4; ++i) {
    if (const char* value = std::getenv(names[i])) {
      before[i] = value;
    }
  }
  // The values of names (nullptr: unset), and the text of 101 they lead to.
  const std::pair<std::array<const char*, 4>, const char*> rows[] = {
      {{nullptr, nullptr, nullptr, nullptr}, "Error"},
      {{"", "", "", "zh_TW"}, "错误"},
      {{"en_US:zh_CN", nullptr, nullptr, "zh_CN.UTF-8"}, "Error"},
      {{"zh_CN:en", "C", nullptr, nullptr}, "错误"},
      {{nullptr, "de_DE.UTF-8", "zh_CN", "zh_CN"}, "Error"},
      {{nullptr, nullptr, "zh", "en_US"}, "错误"},
  };
  SetThreadUILanguage(0);
  for (const auto& [locale, error] : rows) {
    for (size_t i = 0; i < 4; ++i) {
      locale[i] ? setenv(names[i], locale[i], 1) : unsetenv(names[i]);
    }
    EXPECT_EQ(LoadResString(101), error) << ::testing::PrintToString(locale);
  }
  SetThreadUILanguage(1033);
  EXPECT_EQ(LoadResString(101), "Error") << "a language set for the thread wins";
  SetThreadUILanguage(0);
  for (size_t i = 0; i < 4; ++i) {
    before[i] ? setenv(names[i], before[i]->c_str(), 1) : unsetenv(names[i]);
  }
}

// Records each message as "caption|title|text" (a box: "title|buttons|prompt"),
// marked when shown with SysErrState false or its form not Visible, and runs
// `during` (once) while it is shown.
struct HookUi : MessageUi {
  explicit HookUi(const bool& flag) : state(flag) {}
  const bool& state;
  std::vector<std::string> shown;
  std::function<void()> during = [] {};
  void ShowErrForm(FrmShowErr& f) override {
    Show(f.Caption + "|" + f.Txt_Title.Text + "|" + f.Txt_ErrDescription.Text, f.Visible);
  }
  void ShowInforForm(FrmShowInfor& f) override {
    Show(f.Caption + "||" + f.Txt_ErrDescription.Text, f.Visible);
  }
  int32_t MsgBox(const std::string& prompt, int32_t buttons, const std::string& title) override {
    return Show(title + "|" + std::to_string(buttons) + "|" + prompt, true);
  }
  int32_t Show(const std::string& line, bool visible) {
    shown.push_back(line + (visible ? "" : " (hidden)") + (state ? "" : " (SysErrState false)"));
    std::exchange(during, [] {})();
    return 1;
  }
};

class Process : public ::testing::Test {
 protected:
  void SetUp() override { SetMessageUi(ui); }
  CaptureScope english;  // English texts; the built-in UI again at the end
  bool state = false;
  std::shared_ptr<HookUi> ui = std::make_shared<HookUi>(state);
};

TEST_F(Process, EachMessageIsShownWithSysErrStateTrueAndTheNormalisedNumber) {
  const std::pair<int32_t, const char*> rows[] = {{94, "Error:94"},
                                                  {-1, "Error:-1"},
                                                  {kBase, "Error:-2147221504"},
                                                  {kBase + 1, "Error:1"},
                                                  {kBase + 65534, "Error:65534"},
                                                  {kBase + 65535, "Error:-2147155969"}};
  for (const auto& [number, title] : rows) {
    MdlProcess::ShowErr("Title", number, "Description", state);
    EXPECT_EQ(ui->shown.back(), std::string("Title|") + title + "|Description");
  }
  ui->shown.clear();
  MdlProcess::ShowInfor("Saved.", state);
  int16_t buttons = 4 + 32;
  MdlProcess::ShowErrBox("Refresh", kBase + 513, "Lost connection", buttons, state);
  EXPECT_FALSE(state || MdlProcess::ErrForm().Visible || MdlProcess::InforForm().Visible);
  state = true;  // number 0 shows nothing and leaves the flag as it was
  MdlProcess::ShowErr("Title", 0, "Description", state);
  MdlProcess::ShowErrBox("Title", 0, "Description", buttons, state);
  EXPECT_TRUE(state);
  EXPECT_EQ(ui->shown, (std::vector<std::string>{"Information||Saved.",
                                                 "Refresh|36|Error:513\r\nLost connection"}));
  EXPECT_EQ(MdlProcess::ErrForm().CmdOk.Caption + MdlProcess::InforForm().CmdOk.Caption, "OKOK");
}

TEST_F(Process, AVisibleFormIsReusedWithTheNewTextsAndAFailingUiCountsAsClosed) {
  bool inner = false;
  ui->during = [&] { MdlProcess::ShowErr("Second", kBase + 7, "Again", inner); };
  MdlProcess::ShowErr("First", 94, "Once", state);
  ui->during = [&] { MdlProcess::ShowInfor("replaced", inner); };
  MdlProcess::ShowInfor("first", state);
  const FrmShowErr& error = MdlProcess::ErrForm();
  EXPECT_EQ(error.Caption + "|" + error.Txt_Title.Text + "|" + error.Txt_ErrDescription.Text,
            "Second|Error:7|Again");
  EXPECT_EQ(MdlProcess::InforForm().Txt_ErrDescription.Text, "replaced");
  EXPECT_EQ(ui->shown, (std::vector<std::string>{"First|Error:94|Once", "Information||first"}));
  ui->during = [] { throw std::runtime_error("window system gone"); };
  MdlProcess::ShowErr("T", 94, "D", state);
  EXPECT_FALSE(state || MdlProcess::ErrForm().Visible);
  ui->during = [] { throw 1; };
  EXPECT_EQ(MsgBox("prompt"), 0);
}

TEST_F(Process, TheErrorTrapReportsAnyErrorAndReturnsTheFailure) {
  const std::tuple<int32_t, int (*)(), std::vector<std::string>> rows[] = {
      {1033, []() -> int { throw VbError(94, "No Null"); }, {"Error|Error:94|No Null"}},
      {2052, []() -> int { throw VbError(kBase + 3, "x"); }, {"错误|错误：3|x"}},
      {1033, []() -> int { throw std::out_of_range("row 7"); }, {"Error|Error:5|row 7"}},
      {1033, []() -> int { throw 42; }, {"Error|Error:5|Invalid procedure call or argument"}},
      {1033, []() -> int { throw VbError(0, ""); }, {}},
  };
  for (const auto& [language, raise, shown] : rows) {
    SetThreadUILanguage(language);
    ui->shown.clear();
    EXPECT_EQ(internal::Trapped(state, 7, raise), 7);
    EXPECT_EQ(ui->shown, shown);
  }
}

TEST(ConsoleUi, WritesEachMessageAsOneBlockOnStandardErrorAndPressesTheDefaultButton) {
  CaptureScope english;
  SetMessageUi(nullptr);
  bool state = false;
  ::testing::internal::CaptureStderr();
  MdlProcess::ShowErr("Error", 94, "Please enter value Qty can not be null.", state);
  MdlProcess::ShowInfor("You can not update the read only field.", state);
  EXPECT_EQ(MsgBox("Division by zero\r\n1/0", 4 + 0x100, "Operate"), 7);
  EXPECT_EQ(MsgBox("Hello"), 1);
  EXPECT_EQ(::testing::internal::GetCapturedStderr(),
            "Error [Error:94] Please enter value Qty can not be null.\n"
            "Information: You can not update the read only field.\n"
            "Operate: Division by zero\n  1/0\n" +
                internal::ProgramName() + ": Hello\n");
  const std::pair<int32_t, int32_t> pressed[] = {{1, 1},         {2, 3},         {3, 6}, {5, 4},
                                                 {3 + 0x200, 2}, {2 + 0x100, 4}, {9, 1}};
  for (const auto& [buttons, button] : pressed) {
    EXPECT_EQ(internal::ConsoleUi::DefaultButton(buttons), button) << buttons;
  }
}

}  // namespace
}  // namespace varnel::testing
