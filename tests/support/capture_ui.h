// A MessageUi that records what would have been shown, for assertions.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "varnel/messages.h"

namespace varnel::testing {

struct ShownMessage {
  enum Kind { Error, Information, Box } kind;
  std::string caption;  // form caption or box title
  std::string title;    // FrmShowErr.Txt_Title ("Error:94")
  std::string text;     // description, information text or box prompt
};

class CaptureUi : public MessageUi {
 public:
  void ShowErrForm(FrmShowErr& form) override {
    shown.push_back(
        {ShownMessage::Error, form.Caption, form.Txt_Title.Text, form.Txt_ErrDescription.Text});
  }
  void ShowInforForm(FrmShowInfor& form) override {
    shown.push_back({ShownMessage::Information, form.Caption, "", form.Txt_ErrDescription.Text});
  }
  int32_t MsgBox(const std::string& prompt, int32_t, const std::string& title) override {
    shown.push_back({ShownMessage::Box, title, "", prompt});
    return 1;
  }

  std::vector<ShownMessage> shown;
};

// Installs a CaptureUi for the current thread for the scope's lifetime and
// sets the UI language (English by default).
class CaptureScope {
 public:
  explicit CaptureScope(int32_t language = 1033) {
    SetMessageUi(ui_);
    SetThreadUILanguage(language);
  }
  ~CaptureScope() {
    SetMessageUi(nullptr);
    SetThreadUILanguage(0);
  }
  CaptureUi& ui() { return *ui_; }
  const std::vector<ShownMessage>& shown() const { return ui_->shown; }
  // The last message's text, or "" when none was shown.
  std::string LastText() const { return shown().empty() ? std::string() : shown().back().text; }

 private:
  std::shared_ptr<CaptureUi> ui_ = std::make_shared<CaptureUi>();
};

}  // namespace varnel::testing
