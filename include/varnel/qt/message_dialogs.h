// The engine's message forms as real Qt dialogs, and the MessageUi that shows
// them. Install once, after the QApplication exists:
//
//   varnel::qt::InstallMessageDialogs();   // SetMessageUi with a QtMessageUi
//
// FrmShowErr and FrmShowInfor are modal QDialogs whose controls carry the
// engine's names as object names (Txt_Title, Txt_ErrDescription, CmdOk) and
// the captions the engine set from its string table; a dialog on screen is
// reused with the new texts, never stacked. MsgBox is a QMessageBox that
// honours the button and icon codes and returns the pressed button's code.
#pragma once

#include <QDialog>
#include <memory>

#include "varnel/export.h"
#include "varnel/messages.h"

class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QTimer;

VARNEL_API_BEGIN

namespace varnel::qt {

/// The error form: the caption, Txt_Title (the error-number line), Txt_ErrDescription, CmdOk.
class ErrorDialog : public QDialog {
  Q_OBJECT

 public:
  /// Object name "FrmShowErr".
  explicit ErrorDialog(QWidget* Parent = nullptr);
  /// Shows Form's texts modally; returns when CmdOk was pressed. While shown,
  /// texts the engine writes into Form again appear in the dialog.
  void ShowModal(FrmShowErr& Form);

 private:
  void Take(const FrmShowErr& form);
  QLineEdit* title_;
  QPlainTextEdit* description_;
  QPushButton* ok_;
};

/// The information form: caption "Information" (string 602), Txt_ErrDescription, CmdOk.
class InformationDialog : public QDialog {
  Q_OBJECT

 public:
  /// Object name "FrmShowInfor".
  explicit InformationDialog(QWidget* Parent = nullptr);
  /// Shows Form's texts modally; returns when CmdOk was pressed.
  void ShowModal(FrmShowInfor& Form);

 private:
  void Take(const FrmShowInfor& form);
  QPlainTextEdit* description_;
  QPushButton* ok_;
};

/// A MessageUi on Qt dialogs, parented to the application's active window.
class QtMessageUi : public MessageUi {
 public:
  QtMessageUi();
  ~QtMessageUi() override;
  /// Shows the error dialog (reused while visible).
  void ShowErrForm(FrmShowErr& Form) override;
  /// Shows the information dialog (reused while visible).
  void ShowInforForm(FrmShowInfor& Form) override;
  /// A QMessageBox with the button set, icon and default button of Buttons;
  /// returns vbOK 1, vbCancel 2, vbAbort 3, vbRetry 4, vbIgnore 5, vbYes 6 or vbNo 7.
  int32_t MsgBox(const std::string& Prompt, int32_t Buttons, const std::string& Title) override;

  /// The error dialog (made on first use).
  ErrorDialog& ErrDialog();
  /// The information dialog (made on first use).
  InformationDialog& InforDialog();

 private:
  std::unique_ptr<ErrorDialog> err_;
  std::unique_ptr<InformationDialog> infor_;
};

/// Installs a QtMessageUi for the calling thread (SetMessageUi) and returns it.
std::shared_ptr<QtMessageUi> InstallMessageDialogs();

}  // namespace varnel::qt

VARNEL_API_END
