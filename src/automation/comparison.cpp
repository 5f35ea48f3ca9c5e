// "New equals Old" for the value store. Numbers of every kind (Boolean as -1
// or 0) and dates compare by value; text compares by exact characters; text
// against a number is equal only when the text is numeric with that value,
// text against a date only when the text reads as that date. Empty and Null
// are equal to each other and to nothing else.
#include "automation/calendar.h"
#include "automation/decimal_math.h"
#include "automation/numeric_text.h"
#include "automation/value_rules.h"

namespace varnel {

namespace {

bool IsExactKind(VbVarType type) {
  return type == vbInteger || type == vbLong || type == vbBoolean || type == vbCurrency ||
         type == vbLongLong || type == vbDecimal;
}

// The exact kinds but Decimal as 1/10000 units, so Currency compares without rounding.
__int128 ExactUnits(const Variant& value) {
  switch (value.VarType()) {
    case vbInteger:
      return __int128{value.AsInteger()} * 10000;
    case vbLong:
      return __int128{value.AsLong()} * 10000;
    case vbLongLong:
      return __int128{value.AsLongLong()} * 10000;
    case vbBoolean:
      return value.AsBoolean() ? -10000 : 0;
    default:  // Currency, the one exact kind left (Decimal compares as a Decimal)
      return value.AsCurrency().Value;
  }
}

double RealValue(const Variant& value) {
  switch (value.VarType()) {
    case vbDouble:
      return value.AsDouble();
    case vbDate:
      return value.AsDate().Value;
    case vbCurrency:
      return internal::CurrencyToDouble(value.AsCurrency());
    case vbDecimal:
      return internal::DecimalToDouble(value.AsDecimal());
    default:
      return static_cast<double>(ExactUnits(value) / 10000);
  }
}

bool NumbersEqual(const Variant& a, const Variant& b) {
  if (IsExactKind(a.VarType()) && IsExactKind(b.VarType())) {
    if (a.VarType() == vbDecimal || b.VarType() == vbDecimal) {
      return a.ToDecimal() == b.ToDecimal();  // every exact kind converts exactly
    }
    return ExactUnits(a) == ExactUnits(b);
  }
  return RealValue(a) == RealValue(b);
}

bool TextEqualsValue(std::string_view text, const Variant& value) {
  if (value.VarType() == vbDate) {
    std::optional<Date> date = internal::ParseDateText(text);
    return date && *date == value.AsDate();
  }
  if (value.VarType() == vbLongLong || value.VarType() == vbDecimal) {
    // Read exactly: "9007199254740993" is not equal to 9007199254740992.
    std::optional<Decimal> number = internal::DecimalFromText(text);
    return number && *number == value.ToDecimal();
  }
  std::optional<double> number = internal::ParseNumber(text);
  return number && NumbersEqual(Variant(*number), value);
}

template <class T>
int Order(const T& a, const T& b) {
  return a < b ? -1 : (b < a ? 1 : 0);
}

bool IsWideExact(VbVarType type) { return type == vbLongLong || type == vbDecimal; }

}  // namespace

namespace internal {

int CompareNumbers(const Variant& a, const Variant& b) {
  const VbVarType ta = a.VarType();
  const VbVarType tb = b.VarType();
  if (IsExactKind(ta) && IsExactKind(tb) && ta != vbDecimal && tb != vbDecimal) {
    return Order(ExactUnits(a), ExactUnits(b));
  }
  if ((IsExactKind(ta) && IsExactKind(tb)) || IsWideExact(ta) || IsWideExact(tb)) {
    try {
      return DecimalCompare(a.ToDecimal(), b.ToDecimal());
    } catch (const VbError&) {
      // a Double beyond the Decimal range: the Doubles order it
    }
  }
  return Order(RealValue(a), RealValue(b));
}

}  // namespace internal

bool ValuesEqual(const Variant& A, const Variant& B) noexcept {
  if (A.IsBlank() || B.IsBlank()) {
    return A.IsBlank() && B.IsBlank();
  }
  if (A.IsString() && B.IsString()) {
    return A.StringView() == B.StringView();
  }
  try {
    if (A.IsString()) {
      return TextEqualsValue(A.StringView(), B);
    }
    if (B.IsString()) {
      return TextEqualsValue(B.StringView(), A);
    }
  } catch (const std::exception&) {
    return false;  // out of memory while reading the text: treat as a change
  }
  return NumbersEqual(A, B);
}

}  // namespace varnel
