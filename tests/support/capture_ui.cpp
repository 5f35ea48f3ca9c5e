#include "capture_ui.h"

namespace varnel::testing {

void CaptureUi::ShowErrForm(FrmShowErr& form) {
  saw_visible = saw_visible && form.Visible;
  shown.push_back({ShownMessage::Error, form.Caption, form.Txt_Title.Text,
                   form.Txt_ErrDescription.Text});
}

void CaptureUi::ShowInforForm(FrmShowInfor& form) {
  saw_visible = saw_visible && form.Visible;
  shown.push_back({ShownMessage::Information, form.Caption, "", form.Txt_ErrDescription.Text});
}

int32_t CaptureUi::MsgBox(const std::string& prompt, int32_t, const std::string& title) {
  shown.push_back({ShownMessage::Box, title, "", prompt});
  return 1;
}

CaptureScope::CaptureScope(int32_t language) : ui_(std::make_shared<CaptureUi>()) {
  SetMessageUi(ui_);
  SetThreadUILanguage(language);
}

CaptureScope::~CaptureScope() {
  SetMessageUi(nullptr);
  SetThreadUILanguage(0);
}

std::string CaptureScope::LastText() const {
  return ui_->shown.empty() ? std::string() : ui_->shown.back().text;
}

}  // namespace varnel::testing
