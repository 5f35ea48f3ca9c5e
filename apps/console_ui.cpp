#include "console_ui.h"

#include "texts.h"

namespace varnel::app {
namespace {

// The providers' generic error: the text after it is the database's own.
constexpr const char* kProviderError = "-2147467259";

}  // namespace

void ConsoleUi::ShowErrForm(FrmShowErr& Form) {
  Write(Form.Caption, Plain(Form.Txt_Title.Text, Form.Txt_ErrDescription.Text));
}

void ConsoleUi::ShowInforForm(FrmShowInfor& Form) {
  Write(Form.Caption, Form.Txt_ErrDescription.Text);
}

int32_t ConsoleUi::MsgBox(const std::string& Prompt, int32_t, const std::string& Title) {
  const size_t line_end = Prompt.find("\r\n");
  const std::string body = line_end == std::string::npos
                               ? Prompt
                               : Plain(Prompt.substr(0, line_end), Prompt.substr(line_end + 2));
  Write(Title.empty() ? "varnel" : Title, body);
  return 1;  // OK
}

// A refusal of the database ("<its text> while preparing '<statement>'")
// becomes its text alone and a pointer to details; other errors stay as they are.
std::string ConsoleUi::Plain(const std::string& number_line, const std::string& description) {
  if (number_line.find(kProviderError) == std::string::npos) {
    return number_line + " " + description;
  }
  details_ = description;
  ++refusals_;
  const size_t statement = description.find(" while ");
  const std::string reason = description.substr(0, statement);
  return Say(Text::DatabaseRefused, fmt::arg("reason", reason));
}

// One line per message; the further lines of a long text are indented under it.
void ConsoleUi::Write(const std::string& caption, const std::string& text) {
  ++shown_;
  std::string body;
  for (char c : secrets_.Hide(text)) {
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
