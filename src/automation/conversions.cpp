// Conversions of a Variant (CStr, CDbl, CLng, CBool, CCur, CDate) by the
// platform's rules: Empty reads as 0, "" or False; Null cannot be converted
// (94); text must be a number (or a date for CDate), else 13; results out of
// range give 6.
#include <cmath>
#include <cstdlib>

#include "automation/calendar.h"
#include "automation/decimal_math.h"
#include "automation/numeric_text.h"
#include "automation/value_rules.h"

namespace varnel {

namespace internal {

double RoundHalfEven(double Value) {
  double rounded = std::round(Value);
  if (std::fabs(Value - std::trunc(Value)) == 0.5) {
    rounded = 2.0 * std::round(Value / 2.0);
  }
  return rounded;
}

Currency CurrencyFromDouble(double Value) {
  constexpr double kLimit = 9223372036854775808.0;  // 2^63
  double units = RoundHalfEven(Value * 1e4);
  if (!(units < kLimit && units >= -kLimit)) {
    RaiseError(6);
  }
  return Currency{static_cast<int64_t>(units)};
}

double TextToDouble(std::string_view Text) {
  double value = 0;
  switch (ParseNumber(Text, value)) {
    case NumberStatus::Ok:
      return value;
    case NumberStatus::Overflow:
      RaiseError(6);
    case NumberStatus::NotNumeric:
      break;
  }
  RaiseError(13);
}

}  // namespace internal

namespace {

int32_t LongFromDouble(double value) {
  double rounded = internal::RoundHalfEven(value);
  if (!(rounded >= -2147483648.0 && rounded <= 2147483647.0)) {
    RaiseError(6);
  }
  return static_cast<int32_t>(rounded);
}

// Currency to a whole number, half to even, without passing through a Double.
int64_t WholeFromCurrency(Currency value) {
  int64_t quotient = value.Value / 10000;
  int64_t remainder = std::llabs(value.Value % 10000);
  if (remainder > 5000 || (remainder == 5000 && quotient % 2 != 0)) {
    quotient += value.Value < 0 ? -1 : 1;
  }
  return quotient;
}

int64_t LongLongFromDouble(double value) {
  constexpr double kLimit = 9223372036854775808.0;  // 2^63
  const double rounded = internal::RoundHalfEven(value);
  if (!(rounded >= -kLimit && rounded < kLimit)) {
    RaiseError(6);
  }
  return static_cast<int64_t>(rounded);
}

// A numeric text read exactly: the text "9007199254740993" is that number.
Decimal DecimalOfText(std::string_view text) {
  std::optional<Decimal> value = internal::DecimalFromText(text);
  if (!value) {
    RaiseError(13);
  }
  return *value;
}

bool BoolFromText(std::string_view text) {
  size_t first = text.find_first_not_of(" \t");
  size_t last = text.find_last_not_of(" \t");
  std::string word;
  if (first != std::string_view::npos) {
    for (char c : text.substr(first, last - first + 1)) {
      word.push_back(static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c));
    }
  }
  if (word == "true") {
    return true;
  }
  if (word == "false") {
    return false;
  }
  return internal::TextToDouble(text) != 0;
}

}  // namespace

std::string Variant::ToString() const {
  switch (VarType()) {
    case vbEmpty:
      return std::string();
    case vbNull:
      RaiseError(94);
    case vbInteger:
      return std::to_string(AsInteger());
    case vbLong:
      return std::to_string(AsLong());
    case vbLongLong:
      return std::to_string(AsLongLong());
    case vbDecimal:
      return internal::DecimalText(AsDecimal());
    case vbDouble:
      return internal::NumberText(AsDouble());
    case vbCurrency:
      return internal::CurrencyText(AsCurrency());
    case vbDate:
      return internal::DateText(AsDate());
    case vbBoolean:
      return AsBoolean() ? "True" : "False";
    case vbString:
      return std::string(StringView());
  }
  return std::string();
}

double Variant::ToDouble() const {
  switch (VarType()) {
    case vbEmpty:
      return 0;
    case vbNull:
      RaiseError(94);
    case vbInteger:
      return AsInteger();
    case vbLong:
      return AsLong();
    case vbLongLong:
      return static_cast<double>(AsLongLong());
    case vbDecimal:
      return internal::DecimalToDouble(AsDecimal());
    case vbDouble:
      return AsDouble();
    case vbDate:
      return AsDate().Value;
    case vbCurrency:
      return internal::CurrencyToDouble(AsCurrency());
    case vbBoolean:
      return AsBoolean() ? -1 : 0;
    case vbString:
      return internal::TextToDouble(StringView());
  }
  return 0;
}

int32_t Variant::ToLong() const {
  switch (VarType()) {
    case vbInteger:
      return AsInteger();
    case vbLong:
      return AsLong();
    case vbCurrency: {
      int64_t whole = WholeFromCurrency(AsCurrency());
      if (whole < INT32_MIN || whole > INT32_MAX) {
        RaiseError(6);
      }
      return static_cast<int32_t>(whole);
    }
    case vbLongLong:
    case vbDecimal: {
      const int64_t whole = ToLongLong();
      if (whole < INT32_MIN || whole > INT32_MAX) {
        RaiseError(6);
      }
      return static_cast<int32_t>(whole);
    }
    default:
      return LongFromDouble(ToDouble());
  }
}

int64_t Variant::ToLongLong() const {
  switch (VarType()) {
    case vbInteger:
      return AsInteger();
    case vbLong:
      return AsLong();
    case vbLongLong:
      return AsLongLong();
    case vbBoolean:
      return AsBoolean() ? -1 : 0;
    case vbCurrency:
      return WholeFromCurrency(AsCurrency());
    case vbDecimal:
      return internal::DecimalToInt(AsDecimal());
    case vbString:
      return internal::DecimalToInt(DecimalOfText(StringView()));
    default:
      return LongLongFromDouble(ToDouble());
  }
}

Decimal Variant::ToDecimal() const {
  switch (VarType()) {
    case vbNull:
      RaiseError(94);
    case vbCurrency:
      return internal::DecimalFromCurrency(AsCurrency());
    case vbDecimal:
      return AsDecimal();
    case vbDouble:
      return internal::DecimalFromDouble(AsDouble());
    case vbDate:
      return internal::DecimalFromDouble(AsDate().Value);
    case vbString:
      return DecimalOfText(StringView());
    default:  // Empty, Boolean and the whole kinds
      return internal::DecimalFromInt(ToLongLong());
  }
}

bool Variant::ToBool() const {
  switch (VarType()) {
    case vbCurrency:
      return AsCurrency().Value != 0;
    case vbBoolean:
      return AsBoolean();
    case vbLongLong:
      return AsLongLong() != 0;
    case vbDecimal:
      return !internal::DecimalIsZero(AsDecimal());
    case vbString:
      return BoolFromText(StringView());
    default:
      return ToDouble() != 0;
  }
}

Currency Variant::ToCurrency() const {
  switch (VarType()) {
    case vbInteger:
    case vbLong:
      return Currency{static_cast<int64_t>(ToLong()) * 10000};
    case vbCurrency:
      return AsCurrency();
    case vbLongLong: {
      const __int128 units = static_cast<__int128>(AsLongLong()) * 10000;
      if (units > INT64_MAX || units < INT64_MIN) {
        RaiseError(6);
      }
      return Currency{static_cast<int64_t>(units)};
    }
    case vbDecimal:
      return internal::DecimalToCurrency(AsDecimal());
    case vbString: {
      Currency value;
      internal::NumberStatus status = internal::ParseCurrency(StringView(), value);
      if (status != internal::NumberStatus::Ok) {
        RaiseError(status == internal::NumberStatus::Overflow ? 6 : 13);
      }
      return value;
    }
    default:
      return internal::CurrencyFromDouble(ToDouble());
  }
}

Date Variant::ToDate() const {
  switch (VarType()) {
    case vbDate:
      return AsDate();
    case vbString: {
      std::optional<Date> date = internal::ParseDateText(StringView());
      if (!date) {
        RaiseError(13);
      }
      return *date;
    }
    default: {
      double serial = ToDouble();
      if (!internal::InDateRange(serial)) {
        RaiseError(6);
      }
      return Date{serial};
    }
  }
}

std::string CStr(const Variant& Value) { return Value.ToString(); }

Date CDate(const Variant& Value) { return Value.ToDate(); }

int64_t CLngLng(const Variant& Value) { return Value.ToLongLong(); }

Decimal CDec(const Variant& Value) { return Value.ToDecimal(); }

}  // namespace varnel
