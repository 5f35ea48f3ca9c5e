#include "console_ui.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "texts.h"
#include "varnel/errors.h"

namespace varnel::app {
namespace {

// The operations that read rows from the database; a refusal during any
// other one refused a change.
constexpr std::array<std::string_view, 5> kLoadingOperations = {
    "InitDataSource", "RefreshDataSource", "ExecuteQuery", "ReadTableFields",
    "ReadFieldsInformation"};

// The database's refusal being shown: the thread's last error, when it is one
// and it is the report on screen (not a later one of the same operation).
const ErrorInfo* Refusal(const std::string& description) {
  const ErrorInfo& error = LastError();
  const bool refusal =
      error.Kind == K_Error && error.Number == Err_Provider && error.Description == description;
  return refusal ? &error : nullptr;
}

Text RefusalText(const ErrorInfo& refusal) {
  const bool loading = std::find(kLoadingOperations.begin(), kLoadingOperations.end(),
                                 refusal.Operation) != kLoadingOperations.end();
  return loading ? Text::DatabaseRefusedLoad : Text::DatabaseRefusedChange;
}

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

// A refusal of the database is told in plain words, and where the database's
// own words and the statement are. The library's message for a refused save
// says in its first line what to correct (the database's words follow on the
// next); a bare refusal gets the console's words for what was refused. Other
// errors stay as the library says them.
std::string ConsoleUi::Plain(const std::string& number_line, const std::string& description) {
  const ErrorInfo* refusal = Refusal(description);
  if (refusal == nullptr) {
    return number_line + " " + description;
  }
  details_ = description;
  const size_t first_line_end = description.find('\n');
  if (first_line_end == std::string::npos) {
    return Tr(RefusalText(*refusal));
  }
  return description.substr(0, first_line_end) + " " + Tr(Text::DetailsHint);
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
