// The console's MessageUi: every error, notice and message box of the library
// is written to the console's output as a bracketed line, in the order it
// happens between the forms. The user has nothing to press: each returns as
// soon as it is written (a message box answers OK).
//
//   [Error] Error:94 Please enter value 'Customer' can not be null.
//   [Information] You can not update the read only field.
#pragma once

#include <ostream>
#include <string>

#include "varnel/messages.h"

namespace varnel::app {

class ConsoleUi : public MessageUi {
 public:
  explicit ConsoleUi(std::ostream& out) : out_(out) {}

  void ShowErrForm(FrmShowErr& Form) override;
  void ShowInforForm(FrmShowInfor& Form) override;
  int32_t MsgBox(const std::string& Prompt, int32_t Buttons, const std::string& Title) override;

 private:
  void Write(const std::string& caption, const std::string& text);

  std::ostream& out_;
};

}  // namespace varnel::app
