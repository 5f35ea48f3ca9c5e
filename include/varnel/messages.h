// Messages to the user: the two-language string table, the error and
// information forms, and the MessageUi through which a thread shows them.
//
//   varnel::SetThreadUILanguage(2052);           // Chinese texts from now on
//   bool busy = false;
//   varnel::MdlProcess::ShowErr(varnel::LoadResString(101), 94, "...", busy);
//
// By default messages go to the built-in console UI (standard error); a screen
// installs its own with SetMessageUi.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace varnel {

struct TextBox {
  std::string Text;
};
struct CommandButton {
  std::string Caption;
};
struct FrmShowErr {
  std::string Caption;
  TextBox Txt_Title;
  TextBox Txt_ErrDescription;
  CommandButton CmdOk;
  bool Visible = false;
};
struct FrmShowInfor {
  std::string Caption;
  TextBox Txt_ErrDescription;
  CommandButton CmdOk;
  bool Visible = false;
};

// How this thread shows messages to its user.
class MessageUi {
 public:
  virtual ~MessageUi() = default;
  virtual void ShowErrForm(FrmShowErr& Form) = 0;      // modal: returns when OK was pressed
  virtual void ShowInforForm(FrmShowInfor& Form) = 0;  // modal
  // "" title = the program's name. Returns the button pressed (1 = OK).
  virtual int32_t MsgBox(const std::string& Prompt, int32_t Buttons, const std::string& Title) = 0;
};

// Installs the calling thread's UI; nullptr restores the built-in console UI.
void SetMessageUi(std::shared_ptr<MessageUi> Ui);
// The calling thread's UI (never null).
MessageUi& CurrentMessageUi();

// The string-table entry Id in the thread's UI language; "" for an unknown id.
std::string LoadResString(int32_t Id);
// 1033 English, 2052 Chinese, 0 to follow the environment (LANGUAGE, LC_ALL,
// LC_MESSAGES, LANG; a zh language means 2052). Per calling thread.
void SetThreadUILanguage(int32_t LangId);
int32_t GetThreadUILanguage();

// Shows a message box through the thread's UI (buttons: 0 = OK only).
int32_t MsgBox(const std::string& Prompt, int32_t Buttons = 0, const std::string& Title = "");

namespace MdlProcess {
// The error form: caption Title, "Error:" and the normalised number, Description.
void ShowErr(const std::string& Title, int32_t Number, const std::string& Description,
             bool& SysErrState);
// The information form with Message.
void ShowInfor(const std::string& Message, bool& SysErrState);
// The same report as ShowErr, as a message box with the caller's Buttons.
void ShowErrBox(const std::string& Title, int32_t Number, const std::string& Description,
                int16_t& Buttons, bool& SysErrState);
// The thread's form instances (created on first use).
FrmShowErr& ErrForm();
FrmShowInfor& InforForm();
}  // namespace MdlProcess

}  // namespace varnel
