// MdlProcess: the error form, the information form and the error message box.
// Each holds the caller's SysErrState true while its message is on screen.
#include <string>

#include "messages/last_error.h"
#include "varnel/messages.h"

namespace varnel::MdlProcess {
namespace {

// Application errors are raised as this base plus their own code.
constexpr int64_t kApplicationErrorBase = -2147221504;

// An application error (base + 1..65534) is shown by its own code; any other
// number as it is.
int32_t NormalisedNumber(int32_t number) {
  const int64_t relative = int64_t{number} - kApplicationErrorBase;
  return (relative < 1 || relative >= 65535) ? number : static_cast<int32_t>(relative);
}

std::string ErrorNumberLine(int32_t number) { return LoadResString(106) + std::to_string(number); }

// SysErrState is true from here until the scope ends, however it ends.
class ShowingMessage {
 public:
  explicit ShowingMessage(bool& state) : state_(state) { state_ = true; }
  ~ShowingMessage() { state_ = false; }
  ShowingMessage(const ShowingMessage&) = delete;
  ShowingMessage& operator=(const ShowingMessage&) = delete;

 private:
  bool& state_;
};

// Shows form modally through the thread's UI, Visible while it is shown. A UI
// that fails counts as closed: messages never raise errors of their own.
template <class Form, class Show>
void ShowModal(Form& form, Show show) {
  form.Visible = true;
  try {
    show(CurrentMessageUi(), form);
  } catch (...) {
  }
  form.Visible = false;
}

}  // namespace

FrmShowErr& ErrForm() {
  thread_local FrmShowErr form;
  return form;
}

FrmShowInfor& InforForm() {
  thread_local FrmShowInfor form;
  return form;
}

void ShowErr(const std::string& Title, int32_t Number, const std::string& Description,
             bool& SysErrState) {
  const int32_t number = NormalisedNumber(Number);
  if (number == 0) {
    return;  // how callers suppress a report
  }
  internal::RecordReport(K_Error, Number, Description);
  ShowingMessage showing(SysErrState);
  FrmShowErr& form = ErrForm();
  form.Caption = Title;
  form.Txt_Title.Text = ErrorNumberLine(number);
  form.Txt_ErrDescription.Text = Description;
  if (form.Visible) {
    return;  // the error on screen shows the new texts; never stacked
  }
  form.CmdOk.Caption = LoadResString(600);
  ShowModal(form, [](MessageUi& ui, FrmShowErr& f) { ui.ShowErrForm(f); });
}

void ShowInfor(const std::string& Message, bool& SysErrState) {
  internal::RecordReport(K_Notice, 0, Message);
  ShowingMessage showing(SysErrState);
  FrmShowInfor& form = InforForm();
  form.Txt_ErrDescription.Text = Message;
  if (form.Visible) {
    return;
  }
  form.Caption = LoadResString(602);
  form.CmdOk.Caption = LoadResString(600);
  ShowModal(form, [](MessageUi& ui, FrmShowInfor& f) { ui.ShowInforForm(f); });
}

void ShowErrBox(const std::string& Title, int32_t Number, const std::string& Description,
                int16_t& Buttons, bool& SysErrState) {
  const int32_t number = NormalisedNumber(Number);
  if (number == 0) {
    return;
  }
  internal::RecordReport(K_Error, Number, Description);
  ShowingMessage showing(SysErrState);
  MsgBox(ErrorNumberLine(number) + "\r\n" + Description, Buttons, Title);
}

}  // namespace varnel::MdlProcess
