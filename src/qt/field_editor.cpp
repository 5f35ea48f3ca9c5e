#include "qt/field_editor.h"

#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QDateEdit>
#include <QDateTimeEdit>
#include <QLineEdit>
#include <QLocale>
#include <QRegularExpressionValidator>
#include <QTimeEdit>

#include "qt/value_convert.h"

namespace varnel::qt::detail {
namespace {

// The earliest date an editor takes stands for "no date": it shows blank.
const QDateTime kBlankDate(QDate(100, 1, 1), QTime(0, 0), Qt::UTC);

const char* Pattern(ValueKind kind) {
  switch (kind) {
    case ValueKind::kInteger:
      return R"(^\s*[-+]?\d*\s*$)";
    case ValueKind::kFloat:
      return R"(^\s*[-+]?\d*\.?\d*([eE][-+]?\d*)?\s*$)";
    case ValueKind::kPercent:
      return R"(^\s*[-+]?\d*\.?\d*\s*%?\s*$)";
    case ValueKind::kCurrency:  // an amount, optionally with its sign before it
      return R"(^\s*[-+]?[^\d\s.+-]{0,3}\s*\d*\.?\d{0,4}\s*$)";
    default:
      return nullptr;
  }
}

QLineEdit* LineEditFor(const ClsFields& field, QWidget* parent) {
  auto* edit = new QLineEdit(parent);
  const ValueKind kind = KindOf(field);
  if (const char* pattern = Pattern(kind)) {
    edit->setValidator(new QRegularExpressionValidator(QRegularExpression(pattern), edit));
    edit->setAlignment(Qt::AlignRight);
  } else if (field.DefinedSize > 0 && kind == ValueKind::kText) {
    edit->setMaxLength(field.DefinedSize);
  }
  return edit;
}

QDateTimeEdit* DateEditFor(ValueKind kind, const ClsFields& field, QWidget* parent) {
  QDateTimeEdit* edit = nullptr;
  if (kind == ValueKind::kDate) {
    edit = new QDateEdit(parent);
    edit->setDisplayFormat("yyyy-MM-dd");
  } else if (kind == ValueKind::kTime) {
    edit = new QTimeEdit(parent);
    edit->setDisplayFormat(field.DateType == D_HN ? "HH:mm" : "HH:mm:ss");
  } else {
    edit = new QDateTimeEdit(parent);
    edit->setDisplayFormat(field.DateType == D_YMDHN ? "yyyy-MM-dd HH:mm" : "yyyy-MM-dd HH:mm:ss");
  }
  edit->setTimeSpec(Qt::UTC);
  if (kind != ValueKind::kTime) {
    edit->setMinimumDateTime(kBlankDate);
    edit->setSpecialValueText(" ");
    edit->setCalendarPopup(true);
  }
  return edit;
}

// The text a line edit starts from: numbers as the user types them, without
// grouping; currency without its sign (the caption shows it); percent with "%".
QString EditText(const ClsFields& field, const Variant& value) {
  if (value.IsBlank()) {
    return {};
  }
  try {
    switch (KindOf(field)) {
      case ValueKind::kCurrency:
        return SignedAmountText(value, QString());
      case ValueKind::kPercent:
        return QLocale::c().toString(value.ToDouble() * 100, 'g', 12) + "%";
      case ValueKind::kText:
      case ValueKind::kBoolean:
        return DisplayText(field, value, 0);
      default:
        return ToQString(CStr(value));
    }
  } catch (const std::exception&) {
    return ToQString(CStr(value));
  }
}

}  // namespace

QWidget* CreateEditor(const ClsFields& field, QWidget* parent, bool with_check_box) {
  const ValueKind kind = KindOf(field);
  switch (kind) {
    case ValueKind::kBoolean:
      if (with_check_box) {
        return new QCheckBox(parent);
      }
      return LineEditFor(field, parent);
    case ValueKind::kDate:
    case ValueKind::kDateTime:
    case ValueKind::kTime:
      return DateEditFor(kind, field, parent);
    default:
      return LineEditFor(field, parent);
  }
}

void ShowValue(QWidget* editor, const ClsFields& field, const Variant& value) {
  const QVariant shown = EditValue(field, value);
  if (auto* check = qobject_cast<QCheckBox*>(editor)) {
    const QSignalBlocker quiet(check);
    check->setChecked(shown.toBool());
  } else if (auto* when = qobject_cast<QDateTimeEdit*>(editor)) {
    const QSignalBlocker quiet(when);
    if (!shown.isValid()) {
      when->setDateTime(when->minimumDateTime());
    } else if (shown.typeId() == QMetaType::QTime) {
      when->setTime(shown.toTime());
    } else if (shown.typeId() == QMetaType::QDate) {
      when->setDate(shown.toDate());
    } else {
      when->setDateTime(shown.toDateTime());
    }
  } else if (auto* line = qobject_cast<QLineEdit*>(editor)) {
    const QSignalBlocker quiet(line);
    line->setText(EditText(field, value));
    line->setCursorPosition(0);
  }
}

QVariant ReadEditor(const QWidget* editor) {
  if (const auto* check = qobject_cast<const QCheckBox*>(editor)) {
    return check->isChecked();
  }
  if (const auto* when = qobject_cast<const QDateTimeEdit*>(editor)) {
    if (when->dateTime() == when->minimumDateTime() && !when->specialValueText().isEmpty()) {
      return {};
    }
    if (qobject_cast<const QTimeEdit*>(editor) != nullptr) {
      return when->time();
    }
    if (qobject_cast<const QDateEdit*>(editor) != nullptr) {
      return when->date();
    }
    return when->dateTime();
  }
  if (const auto* line = qobject_cast<const QLineEdit*>(editor)) {
    return line->text();
  }
  return {};
}

void OnEditorCommitted(QWidget* editor, QObject* receiver, const std::function<void()>& slot) {
  if (auto* check = qobject_cast<QCheckBox*>(editor)) {
    QObject::connect(check, &QCheckBox::clicked, receiver, slot);
  } else if (auto* when = qobject_cast<QDateTimeEdit*>(editor)) {
    QObject::connect(when, &QDateTimeEdit::editingFinished, receiver, slot);
  } else if (auto* line = qobject_cast<QLineEdit*>(editor)) {
    QObject::connect(line, &QLineEdit::editingFinished, receiver, slot);
  }
}

void SetEditorReadOnly(QWidget* editor, bool read_only) {
  if (auto* line = qobject_cast<QLineEdit*>(editor)) {
    line->setReadOnly(read_only);
  } else if (auto* spin = qobject_cast<QAbstractSpinBox*>(editor)) {
    spin->setReadOnly(read_only);
  } else {
    editor->setEnabled(!read_only);
  }
}

}  // namespace varnel::qt::detail
