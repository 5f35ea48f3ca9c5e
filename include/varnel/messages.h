/// \file
/// Messages to the user: the two-language string table, the error and
/// information forms, and the MessageUi through which a thread shows them.
///
///     varnel::SetThreadUILanguage(2052);           // Chinese texts from now on
///     bool busy = false;
///     varnel::MdlProcess::ShowErr(varnel::LoadResString(101), 94, "...", busy);
///
/// By default messages go to the built-in console UI (standard error); a screen
/// installs its own with SetMessageUi. What was last reported is also readable
/// by the program: see LastError() in varnel/errors.h.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "varnel/errors.h"
#include "varnel/export.h"

VARNEL_API_BEGIN

namespace varnel {

/// A text box of a message form.
struct TextBox {
  std::string Text;  ///< the text shown
};
/// A command button of a message form.
struct CommandButton {
  std::string Caption;  ///< the button's caption ("OK", string 600)
};
/// The error form: a caption, the "Error:" and number line, the description.
struct FrmShowErr {
  std::string Caption;         ///< the window title (the caller's Title, "Error")
  TextBox Txt_Title;           ///< string 106 and the error number: "Error:94"
  TextBox Txt_ErrDescription;  ///< the error's description
  CommandButton CmdOk;         ///< the OK button (string 600)
  bool Visible = false;        ///< true while the form is being shown
};
/// The information form: one message and an OK button, titled "Information".
struct FrmShowInfor {
  std::string Caption;         ///< the window title (string 602, "Information")
  TextBox Txt_ErrDescription;  ///< the message
  CommandButton CmdOk;         ///< the OK button (string 600)
  bool Visible = false;        ///< true while the form is being shown
};

/// Buttons and icon of a message box (MsgBox's Buttons): one button group plus
/// at most one icon plus the default button, added together.
enum Enum_MsgBoxStyle : int32_t {
  vbOKOnly = 0,            ///< OK
  vbOKCancel = 1,          ///< OK, Cancel
  vbAbortRetryIgnore = 2,  ///< Abort, Retry, Ignore
  vbYesNoCancel = 3,       ///< Yes, No, Cancel
  vbYesNo = 4,             ///< Yes, No
  vbRetryCancel = 5,       ///< Retry, Cancel
  vbCritical = 16,         ///< the error icon
  vbQuestion = 32,         ///< the question icon
  vbExclamation = 48,      ///< the warning icon
  vbInformation = 64,      ///< the information icon
  vbDefaultButton1 = 0,    ///< the first button is the default
  vbDefaultButton2 = 256,  ///< the second button is the default
  vbDefaultButton3 = 512,  ///< the third button is the default
};

/// The button that closed a message box (MsgBox's result).
enum Enum_MsgBoxResult : int32_t {
  vbOK = 1,      ///< OK
  vbCancel = 2,  ///< Cancel (also closing the box otherwise)
  vbAbort = 3,   ///< Abort
  vbRetry = 4,   ///< Retry
  vbIgnore = 5,  ///< Ignore
  vbYes = 6,     ///< Yes
  vbNo = 7,      ///< No
};

/// How this thread shows messages to its user. A screen derives from it and
/// installs it with SetMessageUi; the library fills the forms' texts first.
class MessageUi {
 public:
  /// UIs are deleted through this interface.
  virtual ~MessageUi() = default;
  /// Shows the error form modally; returns when OK was pressed.
  virtual void ShowErrForm(FrmShowErr& Form) = 0;
  /// Shows the information form modally; returns when OK was pressed.
  virtual void ShowInforForm(FrmShowInfor& Form) = 0;
  /// Shows a message box with Buttons (Enum_MsgBoxStyle) and returns the button
  /// pressed (Enum_MsgBoxResult). A "" Title means the program's name.
  virtual int32_t MsgBox(const std::string& Prompt, int32_t Buttons, const std::string& Title) = 0;
};

/// Installs the calling thread's UI; nullptr restores the built-in console UI.
void SetMessageUi(std::shared_ptr<MessageUi> Ui);
/// The calling thread's UI (never null).
MessageUi& CurrentMessageUi();

/// The string-table entry Id in the thread's UI language; "" for an unknown id.
std::string LoadResString(int32_t Id);
/// Sets the calling thread's UI language: 1033 English, 2052 Chinese, 0 to follow
/// the environment (LANGUAGE, LC_ALL, LC_MESSAGES, LANG; a zh language means 2052).
void SetThreadUILanguage(int32_t LangId);
/// The calling thread's UI language: 1033 or 2052.
int32_t GetThreadUILanguage();

/// Shows a message box through the thread's UI; returns the button pressed
/// (Enum_MsgBoxResult), or 0 when the UI failed.
int32_t MsgBox(const std::string& Prompt, int32_t Buttons = vbOKOnly,
               const std::string& Title = "");

/// The message procedures. Each holds the caller's SysErrState true while its
/// message is on screen, reuses a form already visible, and records what it
/// shows as the thread's LastError().
namespace MdlProcess {
/// The error form: caption Title, "Error:" and the number (an application error,
/// base -2147221504 plus n, shows n), Description. A number that shows as 0 shows nothing.
void ShowErr(const std::string& Title, int32_t Number, const std::string& Description,
             bool& SysErrState);
/// The information form with Message.
void ShowInfor(const std::string& Message, bool& SysErrState);
/// The same report as ShowErr, as a message box with the caller's Buttons.
void ShowErrBox(const std::string& Title, int32_t Number, const std::string& Description,
                int16_t& Buttons, bool& SysErrState);
/// The thread's error form instance (created on first use).
FrmShowErr& ErrForm();
/// The thread's information form instance (created on first use).
FrmShowInfor& InforForm();
}  // namespace MdlProcess

}  // namespace varnel

VARNEL_API_END
