#include "qt/value_convert.h"

#include <QDateTime>
#include <QLocale>
#include <cmath>

#include "fields/field_access.h"
#include "varnel/qt/value_text.h"

namespace varnel::qt::detail {
namespace {

const QDate kDayZero(1899, 12, 30);
const Variant kNoValue;
constexpr qint64 kMsPerDay = 86400000;

}  // namespace

// Two decimals, or up to four when the amount has them: 12.50, 0.1234;
// written from the units, so that no amount is rounded on its way to the screen.
QString AmountText(int64_t units) {
  const uint64_t magnitude = units < 0 ? 0 - static_cast<uint64_t>(units) : units;
  const uint64_t fraction = magnitude % 10000;
  const int decimals = (fraction % 100 == 0) ? 2 : (fraction % 10 == 0 ? 3 : 4);
  const uint64_t shown =
      decimals == 2 ? fraction / 100 : (decimals == 3 ? fraction / 10 : fraction);
  return (units < 0 ? QStringLiteral("-") : QString()) + QString::number(magnitude / 10000) + '.' +
         QString::number(shown).rightJustified(decimals, '0');
}

QString SignedAmountText(const Variant& value, const QString& sign) {
  const Currency amount = value.VarType() == vbCurrency ? value.AsCurrency() : value.ToCurrency();
  const QString digits = AmountText(amount.Value);
  return amount.Value < 0 ? "-" + sign + digits.mid(1) : sign + digits;
}

namespace {

// The amount with the row's sign before it: "$12.50", "-€3.10".
QString CurrencyText(const Variant& value, const ClsFields* sign_field, int32_t row) {
  const Variant& sign = sign_field != nullptr ? StoredValue(*sign_field, row) : kNoValue;
  return SignedAmountText(value, sign.IsBlank() ? QString() : ToQString(CStr(sign)));
}

// Dates are written in place: grids show one in every visible row.
QString DateText(const Variant& value, Enum_DateType type) {
  if (value.VarType() != vbDate) {
    return ToQString(DateDisplayText(value, type));
  }
  char text[kDateDisplayChars];
  return QString::fromLatin1(text,
                             static_cast<qsizetype>(WriteDateDisplay(value.AsDate(), type, text)));
}

// A whole number in the field's own form (CStr gives the same digits).
QString WholeNumberText(const Variant& value) {
  switch (value.VarType()) {
    case vbLong:
      return QString::number(value.AsLong());
    case vbInteger:
      return QString::number(value.AsInteger());
    case vbLongLong:
      return QString::number(value.AsLongLong());
    default:
      return ToQString(CStr(value));
  }
}

}  // namespace

const Variant& StoredValue(const ClsFields& field, int32_t row) {
  // The engine's own view of the value array: GetValue reads the criterion in query mode.
  const std::vector<Variant>& values = internal::FieldAccess::Values(field);
  return row >= 1 && static_cast<size_t>(row) < values.size() ? values[row] : kNoValue;
}

const ClsFields* SignField(const ClsFields& field) {
  if (field.FieldType != F_Currency || field.SymbolName.empty() || field.Parent == nullptr) {
    return nullptr;
  }
  return field.Parent->Item(Variant(field.SymbolName)).get();
}

ValueKind KindOf(const ClsFields& field) {
  switch (field.FieldType) {
    case F_Boolean:
    case F_Locked:
      return ValueKind::kBoolean;
    case F_Date:
      switch (field.DateType) {
        case D_YMD:
          return ValueKind::kDate;
        case D_HNS:
        case D_HN:
          return ValueKind::kTime;
        default:
          return ValueKind::kDateTime;
      }
    case F_Currency:
      return ValueKind::kCurrency;
    case F_AutoCoding:
      return ValueKind::kInteger;
    case F_Numeral:
      return field.NumType == N_Percent
                 ? ValueKind::kPercent
                 : (field.NumType == N_Float ? ValueKind::kFloat : ValueKind::kInteger);
    default:
      return ValueKind::kText;
  }
}

bool IsNumeric(ValueKind kind) {
  return kind == ValueKind::kInteger || kind == ValueKind::kFloat || kind == ValueKind::kPercent ||
         kind == ValueKind::kCurrency;
}

QString DisplayText(const ClsFields& field, const Variant& value, int32_t row) {
  return DisplayText(field, KindOf(field), value, SignField(field), row);
}

QString DisplayText(const ClsFields& field, ValueKind kind, const Variant& value,
                    const ClsFields* sign_field, int32_t row) {
  if (value.IsBlank()) {
    return {};
  }
  try {
    switch (kind) {
      case ValueKind::kBoolean:
        return {};  // shown by the check state
      case ValueKind::kDate:
      case ValueKind::kDateTime:
      case ValueKind::kTime:
        return DateText(value, field.DateType);
      case ValueKind::kCurrency:
        return CurrencyText(value, sign_field, row);
      case ValueKind::kInteger:
        return WholeNumberText(value);
      case ValueKind::kText:
        return value.IsString() ? ToQString(value.StringView()) : ToQString(CStr(value));
      case ValueKind::kPercent:
        return QLocale::c().toString(value.ToDouble() * 100, 'g', 12) + "%";
      default:
        return ToQString(CStr(value));
    }
  } catch (const std::exception&) {
    return ToQString(CStr(value));  // a value that does not fit its field is shown as it is
  }
}

QVariant EditValue(const ClsFields& field, const Variant& value) {
  if (value.IsBlank()) {
    return {};
  }
  try {
    switch (KindOf(field)) {
      case ValueKind::kBoolean:
        return value.ToBool();
      case ValueKind::kDate:
        return ToQDateTime(value.ToDate()).date();
      case ValueKind::kTime:
        return ToQDateTime(value.ToDate()).time();
      case ValueKind::kDateTime:
        return ToQDateTime(value.ToDate());
      case ValueKind::kInteger:
        return static_cast<qlonglong>(std::llround(value.ToDouble()));
      case ValueKind::kFloat:
      case ValueKind::kPercent:
      case ValueKind::kCurrency:
        return value.ToDouble();
      default:
        return ToQString(CStr(value));
    }
  } catch (const std::exception&) {
    return ToQString(CStr(value));
  }
}

Variant FromQt(const QVariant& value) {
  if (!value.isValid() || value.isNull()) {
    return Variant::Null();
  }
  switch (value.typeId()) {
    case QMetaType::Bool:
      return Variant(value.toBool());
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::UInt:
    case QMetaType::ULongLong:
    case QMetaType::Double:
      return Variant(value.toDouble());
    case QMetaType::QDate:
      return Variant(FromQDateTime(QDateTime(value.toDate(), QTime(0, 0), Qt::UTC)));
    case QMetaType::QTime:
      return Variant(FromQDateTime(QDateTime(kDayZero, value.toTime(), Qt::UTC)));
    case QMetaType::QDateTime:
      return Variant(FromQDateTime(value.toDateTime()));
    default:
      return Variant(FromQString(value.toString()));
  }
}

QDateTime ToQDateTime(Date date) {
  // Before day zero the whole days count back but the fraction still runs forward.
  const double days = std::trunc(date.Value);
  const qint64 ms = std::llround(std::fabs(date.Value - days) * kMsPerDay);
  return QDateTime(kDayZero.addDays(static_cast<qint64>(days)), QTime(0, 0), Qt::UTC).addMSecs(ms);
}

Date FromQDateTime(const QDateTime& when) {
  const QDateTime utc(when.date(), when.time(), Qt::UTC);
  const qint64 days = kDayZero.daysTo(utc.date());
  const double fraction = static_cast<double>(utc.time().msecsSinceStartOfDay()) / kMsPerDay;
  return Date{days < 0 ? static_cast<double>(days) - fraction
                       : static_cast<double>(days) + fraction};
}

QString ToQString(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string FromQString(const QString& text) { return text.toUtf8().toStdString(); }

QString Caption(const ClsFields& field) {
  return ToQString(field.DisplayName.empty() ? field.Name : field.DisplayName);
}

}  // namespace varnel::qt::detail

namespace varnel::qt {

QString DisplayText(const ClsFields& Field, const Variant& Value, int32_t Row) {
  if (Row == 0 && Field.Parent != nullptr) {
    Row = Field.Parent->AbsolutePosition();
  }
  return detail::DisplayText(Field, Value, Row);
}

QString AmountText(const Variant& Amount, const QString& Sign) {
  return Amount.IsBlank() ? QString() : detail::SignedAmountText(Amount, Sign);
}

}  // namespace varnel::qt
