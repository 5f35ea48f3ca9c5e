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
  void ShowErrForm(FrmShowErr& form) override;
  void ShowInforForm(FrmShowInfor& form) override;
  int32_t MsgBox(const std::string& prompt, int32_t buttons, const std::string& title) override;

  std::vector<ShownMessage> shown;
  bool saw_visible = true;  // every form was Visible while shown
};

// Installs a CaptureUi for the current thread for the scope's lifetime and
// sets the UI language (English by default).
class CaptureScope {
 public:
  explicit CaptureScope(int32_t language = 1033);
  ~CaptureScope();
  CaptureUi& ui() { return *ui_; }
  const std::vector<ShownMessage>& shown() const { return ui_->shown; }
  // The last message's text, or "" when none was shown.
  std::string LastText() const;

 private:
  std::shared_ptr<CaptureUi> ui_;
};

}  // namespace varnel::testing
