#include "varnel/qt/message_dialogs.h"

#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

#include "qt/value_convert.h"

namespace varnel::qt {

using detail::ToQString;

namespace {

QPlainTextEdit* DescriptionBox(QWidget* parent) {
  auto* box = new QPlainTextEdit(parent);
  box->setObjectName("Txt_ErrDescription");
  box->setReadOnly(true);
  box->setMinimumSize(360, 90);
  return box;
}

QPushButton* OkButton(QDialog* dialog) {
  auto* ok = new QPushButton(dialog);
  ok->setObjectName("CmdOk");
  ok->setDefault(true);
  QObject::connect(ok, &QPushButton::clicked, dialog, &QDialog::accept);
  return ok;
}

// While a dialog is shown, the engine may write new texts into its form (a
// second message while the first is on screen): they are taken over here.
template <class Dialog, class Form>
void RunFollowing(Dialog* dialog, Form& form, void (Dialog::*take)(const Form&)) {
  (dialog->*take)(form);
  QTimer follow;
  QObject::connect(&follow, &QTimer::timeout, dialog, [&] { (dialog->*take)(form); });
  follow.start(100);
  dialog->exec();
}

}  // namespace

ErrorDialog::ErrorDialog(QWidget* Parent) : QDialog(Parent) {
  setObjectName("FrmShowErr");
  setWindowModality(Qt::ApplicationModal);
  auto* layout = new QVBoxLayout(this);
  title_ = new QLineEdit(this);
  title_->setObjectName("Txt_Title");
  title_->setReadOnly(true);
  description_ = DescriptionBox(this);
  ok_ = OkButton(this);
  layout->addWidget(title_);
  layout->addWidget(description_);
  layout->addWidget(ok_, 0, Qt::AlignRight);
}

void ErrorDialog::Take(const FrmShowErr& form) {
  setWindowTitle(ToQString(form.Caption));
  title_->setText(ToQString(form.Txt_Title.Text));
  if (description_->toPlainText() != ToQString(form.Txt_ErrDescription.Text)) {
    description_->setPlainText(ToQString(form.Txt_ErrDescription.Text));
  }
  ok_->setText(ToQString(form.CmdOk.Caption));
}

void ErrorDialog::ShowModal(FrmShowErr& Form) { RunFollowing(this, Form, &ErrorDialog::Take); }

InformationDialog::InformationDialog(QWidget* Parent) : QDialog(Parent) {
  setObjectName("FrmShowInfor");
  setWindowModality(Qt::ApplicationModal);
  auto* layout = new QVBoxLayout(this);
  description_ = DescriptionBox(this);
  ok_ = OkButton(this);
  layout->addWidget(description_);
  layout->addWidget(ok_, 0, Qt::AlignRight);
}

void InformationDialog::Take(const FrmShowInfor& form) {
  setWindowTitle(ToQString(form.Caption));
  if (description_->toPlainText() != ToQString(form.Txt_ErrDescription.Text)) {
    description_->setPlainText(ToQString(form.Txt_ErrDescription.Text));
  }
  ok_->setText(ToQString(form.CmdOk.Caption));
}

void InformationDialog::ShowModal(FrmShowInfor& Form) {
  RunFollowing(this, Form, &InformationDialog::Take);
}

QtMessageUi::QtMessageUi() = default;
QtMessageUi::~QtMessageUi() = default;

ErrorDialog& QtMessageUi::ErrDialog() {
  if (!err_) {
    err_ = std::make_unique<ErrorDialog>();
  }
  return *err_;
}

InformationDialog& QtMessageUi::InforDialog() {
  if (!infor_) {
    infor_ = std::make_unique<InformationDialog>();
  }
  return *infor_;
}

void QtMessageUi::ShowErrForm(FrmShowErr& Form) {
  if (ErrDialog().isVisible()) {
    return;  // the dialog on screen takes the new texts; never stacked
  }
  ErrDialog().ShowModal(Form);
}

void QtMessageUi::ShowInforForm(FrmShowInfor& Form) {
  if (InforDialog().isVisible()) {
    return;
  }
  InforDialog().ShowModal(Form);
}

namespace {

struct ButtonCode {
  QMessageBox::StandardButton button;
  int32_t code;
};

constexpr ButtonCode kCodes[] = {
    {QMessageBox::Ok, 1},    {QMessageBox::Cancel, 2}, {QMessageBox::Abort, 3},
    {QMessageBox::Retry, 4}, {QMessageBox::Ignore, 5}, {QMessageBox::Yes, 6},
    {QMessageBox::No, 7},
};

// The buttons of a style's low four bits, in the order they appear.
std::vector<QMessageBox::StandardButton> ButtonsOf(int32_t style) {
  switch (style & 0xF) {
    case 1:
      return {QMessageBox::Ok, QMessageBox::Cancel};
    case 2:
      return {QMessageBox::Abort, QMessageBox::Retry, QMessageBox::Ignore};
    case 3:
      return {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel};
    case 4:
      return {QMessageBox::Yes, QMessageBox::No};
    case 5:
      return {QMessageBox::Retry, QMessageBox::Cancel};
    default:
      return {QMessageBox::Ok};
  }
}

QMessageBox::Icon IconOf(int32_t style) {
  switch (style & 0x70) {
    case 16:
      return QMessageBox::Critical;
    case 32:
      return QMessageBox::Question;
    case 48:
      return QMessageBox::Warning;
    case 64:
      return QMessageBox::Information;
    default:
      return QMessageBox::NoIcon;
  }
}

}  // namespace

int32_t QtMessageUi::MsgBox(const std::string& Prompt, int32_t Buttons, const std::string& Title) {
  const QString title = Title.empty() ? QApplication::applicationName() : ToQString(Title);
  QMessageBox box(IconOf(Buttons), title, ToQString(Prompt), QMessageBox::NoButton,
                  QApplication::activeWindow());
  box.setObjectName("MsgBox");
  const std::vector<QMessageBox::StandardButton> buttons = ButtonsOf(Buttons);
  for (QMessageBox::StandardButton button : buttons) {
    box.addButton(button);
  }
  const size_t default_at = static_cast<size_t>((Buttons & 0x300) >> 8);
  box.setDefaultButton(buttons[default_at < buttons.size() ? default_at : 0]);
  box.exec();
  QMessageBox::StandardButton pressed = box.standardButton(box.clickedButton());
  if (pressed == QMessageBox::NoButton) {  // closed by the window: Cancel where there is one
    pressed = std::find(buttons.begin(), buttons.end(), QMessageBox::Cancel) != buttons.end()
                  ? QMessageBox::Cancel
                  : buttons.front();
  }
  for (const ButtonCode& code : kCodes) {
    if (code.button == pressed) {
      return code.code;
    }
  }
  return 1;
}

std::shared_ptr<QtMessageUi> InstallMessageDialogs() {
  auto ui = std::make_shared<QtMessageUi>();
  SetMessageUi(ui);
  return ui;
}

}  // namespace varnel::qt
