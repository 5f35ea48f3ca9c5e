// The built-in MessageUi: writes each message as one block of text to standard
// error and returns at once, as if the user had pressed the default button.
#pragma once

#include <cstdint>
#include <string>

#include "varnel/messages.h"

namespace varnel::internal {

class ConsoleUi final : public MessageUi {
 public:
  void ShowErrForm(FrmShowErr& Form) override;
  void ShowInforForm(FrmShowInfor& Form) override;
  int32_t MsgBox(const std::string& Prompt, int32_t Buttons, const std::string& Title) override;

  // The texts written, exposed for tests:
  //   "Error [Error:94] Please enter value Qty can not be null."
  static std::string ErrorText(const FrmShowErr& form);
  //   "Information: You can not update the read only field."
  static std::string InformationText(const FrmShowInfor& form);
  //   "Operate: Division by zero\n  1/0" ("" title: the program's name)
  static std::string BoxText(const std::string& prompt, const std::string& title);
  // The button a user accepting the box's default would press (1 OK, 3 Abort,
  // 4 Retry, 6 Yes, ...), from the button group and default-button bits.
  static int32_t DefaultButton(int32_t buttons);
};

// The program's name, shown as the title of an untitled message box.
std::string ProgramName();

}  // namespace varnel::internal
