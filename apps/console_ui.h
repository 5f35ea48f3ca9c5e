// The console's MessageUi: every error, notice and message box of the library
// is written to the console's output as a bracketed line, in the order it
// happens between the forms. The user has nothing to press: each returns as
// soon as it is written (a message box answers OK).
//
//   [Error] Error:94 Please enter value 'Customer' can not be null.
//   [Information] You can not update the read only field.
//
// A database's refusal is told in plain words; the statement and the
// database's own text are kept for the details command. Nothing of the
// connection string is ever shown (Secrets).
#pragma once

#include <ostream>
#include <string>

#include "secrets.h"
#include "varnel/messages.h"

namespace varnel::app {

class ConsoleUi : public MessageUi {
 public:
  ConsoleUi(std::ostream& out, const Secrets& secrets) : out_(out), secrets_(secrets) {}

  void ShowErrForm(FrmShowErr& Form) override;
  void ShowInforForm(FrmShowInfor& Form) override;
  int32_t MsgBox(const std::string& Prompt, int32_t Buttons, const std::string& Title) override;

  // How many messages have been shown so far: a command that raised one failed.
  int Shown() const { return shown_; }
  // The full text of the last database refusal ("" when none yet).
  const std::string& Details() const { return details_; }

 private:
  void Write(const std::string& caption, const std::string& text);
  std::string Plain(const std::string& number_line, const std::string& description);

  std::ostream& out_;
  const Secrets& secrets_;
  int shown_ = 0;
  std::string details_;
};

}  // namespace varnel::app
