#include "console_ui.h"

namespace varnel::app {

void ConsoleUi::ShowErrForm(FrmShowErr& Form) {
  Write(Form.Caption, Form.Txt_Title.Text + " " + Form.Txt_ErrDescription.Text);
}

void ConsoleUi::ShowInforForm(FrmShowInfor& Form) {
  Write(Form.Caption, Form.Txt_ErrDescription.Text);
}

int32_t ConsoleUi::MsgBox(const std::string& Prompt, int32_t, const std::string& Title) {
  Write(Title.empty() ? "varnel" : Title, Prompt);
  return 1;  // OK
}

// One line per message; the further lines of a long text are indented under it.
void ConsoleUi::Write(const std::string& caption, const std::string& text) {
  std::string body;
  for (char c : text) {
    if (c == '\r') {
      continue;
    }
    body += c;
    if (c == '\n') {
      body += "    ";
    }
  }
  out_ << "[" << caption << "] " << body << "\n" << std::flush;
}

}  // namespace varnel::app
