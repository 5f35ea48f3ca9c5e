#include "messages/console_ui.h"

#include <cstdio>
#include <cstdlib>

namespace varnel::internal {
namespace {

// Dialog texts use "\r\n" between lines; on a console each further line is
// indented so that one message stays recognisable as one block.
std::string ConsoleLines(const std::string& text) {
  std::string out;
  out.reserve(text.size() + 8);
  for (size_t i = 0; i < text.size(); ++i) {
    char c = text[i];
    if (c == '\r') {
      if (i + 1 < text.size() && text[i + 1] == '\n') {
        ++i;
      }
      c = '\n';
    }
    out += c;
    if (c == '\n') {
      out += "  ";
    }
  }
  return out;
}

// One write per message, so that messages of different threads do not mix.
void WriteLine(const std::string& text) {
  const std::string line = text + "\n";
  std::fwrite(line.data(), 1, line.size(), stderr);
  std::fflush(stderr);
}

}  // namespace

std::string ConsoleUi::ErrorText(const FrmShowErr& form) {
  return ConsoleLines(form.Caption + " [" + form.Txt_Title.Text + "] " +
                      form.Txt_ErrDescription.Text);
}

std::string ConsoleUi::InformationText(const FrmShowInfor& form) {
  return ConsoleLines(form.Caption + ": " + form.Txt_ErrDescription.Text);
}

std::string ConsoleUi::BoxText(const std::string& prompt, const std::string& title) {
  return ConsoleLines((title.empty() ? ProgramName() : title) + ": " + prompt);
}

int32_t ConsoleUi::DefaultButton(int32_t buttons) {
  // Buttons of each group, left to right: OK, OK/Cancel, Abort/Retry/Ignore,
  // Yes/No/Cancel, Yes/No, Retry/Cancel.
  static constexpr int32_t kGroups[6][3] = {{1, 1, 1}, {1, 2, 2}, {3, 4, 5},
                                            {6, 7, 2}, {6, 7, 7}, {4, 2, 2}};
  const int32_t group = buttons & 0x0F;
  const int32_t which = (buttons >> 8) & 0x0F;  // 0 first, 1 second, 2 third
  if (group > 5 || which > 2) {
    return 1;
  }
  return kGroups[group][which];
}

void ConsoleUi::ShowErrForm(FrmShowErr& Form) { WriteLine(ErrorText(Form)); }

void ConsoleUi::ShowInforForm(FrmShowInfor& Form) { WriteLine(InformationText(Form)); }

int32_t ConsoleUi::MsgBox(const std::string& Prompt, int32_t Buttons, const std::string& Title) {
  WriteLine(BoxText(Prompt, Title));
  return DefaultButton(Buttons);
}

std::string ProgramName() {
#ifdef __GLIBC__
  if (program_invocation_short_name != nullptr && program_invocation_short_name[0] != '\0') {
    return program_invocation_short_name;
  }
#endif
  return "varnel";
}

}  // namespace varnel::internal
