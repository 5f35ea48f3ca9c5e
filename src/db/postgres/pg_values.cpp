#include "db/postgres/pg_values.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "automation/calendar.h"
#include "automation/decimal_math.h"

namespace varnel::db::internal {
namespace {

// The type numbers of PostgreSQL's built-in types (pg_type.oid), fixed by the server.
enum PgType : Oid {
  kBool = 16,
  kChar = 18,
  kName = 19,
  kInt8 = 20,
  kInt2 = 21,
  kInt4 = 23,
  kOid = 26,
  kFloat4 = 700,
  kFloat8 = 701,
  kMoney = 790,
  kBpchar = 1042,
  kVarchar = 1043,
  kDateType = 1082,
  kTime = 1083,
  kTimestamp = 1114,
  kTimestampTz = 1184,
  kTimeTz = 1266,
  kNumeric = 1700,
};

// A type modifier holds the declared length + 4 (varchar, char) or
// (precision << 16 | scale) + 4 (numeric); -1 when none was declared.
constexpr int kModifierBase = 4;

PgColumnType NumericType(int modifier) {
  if (modifier < kModifierBase) {
    return {PgCellKind::kNumeric, 0};
  }
  const int scale = (modifier - kModifierBase) & 0xffff;
  return {scale > 0 ? PgCellKind::kDecimal : PgCellKind::kLong, 0};
}

Variant LongOrLongLong(int64_t value) {
  if (value >= std::numeric_limits<int32_t>::min() &&
      value <= std::numeric_limits<int32_t>::max()) {
    return Variant(static_cast<int32_t>(value));
  }
  return Variant(value);
}

Variant ReadDouble(std::string_view text) {
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc() && end == text.data() + text.size()) {
    return Variant(value);
  }
  return Variant(text);
}

// A Double, or a Decimal with every digit when a Double cannot hold them all.
Variant ReadExact(std::string_view text) {
  if (std::optional<Variant> exact = varnel::internal::ExactNumberOfText(text)) {
    return *exact;
  }
  return ReadDouble(text);
}

Variant ReadWhole(std::string_view text) {
  int64_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc() && end == text.data() + text.size()) {
    return LongOrLongLong(value);
  }
  return ReadExact(text);
}

// money in the session's lc_monetary, which the driver sets to C: "$1,234.50",
// "-$3.00". Read exactly, digit by digit, to 1/10000.
Variant ReadMoney(std::string_view text) {
  constexpr int64_t kLimit = std::numeric_limits<int64_t>::max() / 10;
  bool negative = false;
  bool fraction = false;
  int fraction_digits = 0;
  int64_t units = 0;
  for (char c : text) {
    if (c == '-' || c == '(') {
      negative = true;
    } else if (c == '.') {
      fraction = true;
    } else if (c >= '0' && c <= '9') {
      if (fraction && fraction_digits == 4) {
        continue;
      }
      if (units > kLimit) {
        return Variant(text);
      }
      units = units * 10 + (c - '0');
      fraction_digits += fraction ? 1 : 0;
    }
  }
  for (; fraction_digits < 4; ++fraction_digits) {
    if (units > kLimit) {
      return Variant(text);
    }
    units *= 10;
  }
  return Variant(Currency{negative ? -units : units});
}

Variant ReadDate(std::string_view text, bool zoned) {
  if (zoned) {
    // "2003-05-06 14:30:15+02", "14:30:15-05:30": the offset follows the time.
    const size_t colon = text.find(':');
    const size_t offset = colon == std::string_view::npos ? colon : text.find_first_of("+-", colon);
    text = text.substr(0, offset);
  }
  Date date;
  if (varnel::internal::ParseIsoDate(text.data(), text.size(), date)) {
    return Variant(date);
  }
  return Variant(text);
}

// The shortest text that reads back as the same double, in the server's words
// for the values that are not numbers.
std::string DoubleText(double value) {
  if (std::isnan(value)) {
    return "NaN";
  }
  if (std::isinf(value)) {
    return value > 0 ? "Infinity" : "-Infinity";
  }
  // Whole numbers without an exponent, so that integer columns read them.
  constexpr double kWholeLimit = 1e18;
  const bool whole = value == std::trunc(value) && std::fabs(value) < kWholeLimit;
  char buffer[64];
  const auto result =
      whole ? std::to_chars(buffer, buffer + sizeof(buffer), value, std::chars_format::fixed)
            : std::to_chars(buffer, buffer + sizeof(buffer), value);
  return std::string(buffer, result.ptr);
}

std::string CurrencyText(Currency value) {
  const bool negative = value.Value < 0;
  const uint64_t magnitude = negative ? 0 - static_cast<uint64_t>(value.Value) : value.Value;
  std::string text = (negative ? "-" : "") + std::to_string(magnitude / 10000);
  std::string fraction = std::to_string(10000 + magnitude % 10000).substr(1);
  while (!fraction.empty() && fraction.back() == '0') {
    fraction.pop_back();
  }
  return fraction.empty() ? text : text + "." + fraction;
}

}  // namespace

PgColumnType ClassifyPgType(Oid type, int modifier) {
  switch (type) {
    case kBool:
      return {PgCellKind::kBoolean, 0};
    case kInt2:
    case kInt4:
    case kInt8:
    case kOid:
      return {PgCellKind::kLong, 0};
    case kFloat4:
    case kFloat8:
      return {PgCellKind::kDouble, 0};
    case kNumeric:
      return NumericType(modifier);
    case kMoney:
      return {PgCellKind::kMoney, 0};
    case kDateType:
    case kTime:
    case kTimestamp:
      return {PgCellKind::kDate, 0};
    case kTimestampTz:
    case kTimeTz:
      return {PgCellKind::kDateZoned, 0};
    case kBpchar:
    case kVarchar:
      return {PgCellKind::kText, modifier >= kModifierBase ? modifier - kModifierBase : 0};
    case kChar:
    case kName:
    default:
      return {PgCellKind::kText, 0};
  }
}

Variant ReadPgCell(std::string_view text, PgCellKind kind) {
  switch (kind) {
    case PgCellKind::kText:
      return Variant(text);
    case PgCellKind::kBoolean:
      return Variant(text == "t");
    case PgCellKind::kLong:
      return ReadWhole(text);
    case PgCellKind::kNumeric:
      return text.find_first_of(".eEaN") == std::string_view::npos ? ReadWhole(text)
                                                                   : ReadExact(text);
    case PgCellKind::kDecimal:
      return ReadExact(text);
    case PgCellKind::kDouble:
      return ReadDouble(text);
    case PgCellKind::kMoney:
      return ReadMoney(text);
    case PgCellKind::kDate:
      return ReadDate(text, false);
    case PgCellKind::kDateZoned:
      return ReadDate(text, true);
  }
  return Variant(text);
}

std::optional<std::string> PgParamText(const Variant& value) {
  switch (value.VarType()) {
    case vbEmpty:
    case vbNull:
      return std::nullopt;
    case vbInteger:
      return std::to_string(value.AsInteger());
    case vbLong:
      return std::to_string(value.AsLong());
    case vbLongLong:
      return std::to_string(value.AsLongLong());
    case vbDecimal:
      return varnel::internal::DecimalText(value.AsDecimal());
    case vbBoolean:
      // "1" and "0" read as a boolean and as a number alike.
      return value.AsBoolean() ? "1" : "0";
    case vbDouble:
      return DoubleText(value.AsDouble());
    case vbCurrency:
      return CurrencyText(value.AsCurrency());
    case vbDate:
      return IsoDate(value.AsDate());
    case vbString:
    default:
      return std::string(value.StringView());
  }
}

}  // namespace varnel::db::internal
