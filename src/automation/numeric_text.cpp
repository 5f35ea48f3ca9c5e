// Numbers read from and written to text: the numeric test, the leading-number
// reading (Val) and the standard text form (CStr). Conversion never depends on
// the C locale: "." is always the decimal point.
#include "automation/numeric_text.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace varnel::internal {

namespace {

constexpr int64_t kExponentLimit = 100000;  // far beyond any Double, safe from overflow

bool IsBlankChar(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
bool IsDigitChar(char c) { return c >= '0' && c <= '9'; }
bool IsExponentMark(char c) { return c == 'E' || c == 'e' || c == 'D' || c == 'd'; }

// A number reduced to sign, mantissa digits and a power of ten:
// value = digits * 10^(exponent - fraction_digits).
struct NumberScan {
  bool negative = false;
  std::string digits;
  int64_t fraction_digits = 0;
  int64_t exponent = 0;
};

int64_t Shift(const NumberScan& scan) { return scan.exponent - scan.fraction_digits; }

// Reads "[+-]digits" of an exponent at text[pos]; saturates far out of range.
bool ReadExponent(std::string_view text, size_t& pos, int64_t& exponent) {
  bool negative = false;
  if (pos < text.size() && (text[pos] == '+' || text[pos] == '-')) {
    negative = text[pos] == '-';
    ++pos;
  }
  if (pos >= text.size() || !IsDigitChar(text[pos])) {
    return false;
  }
  int64_t value = 0;
  for (; pos < text.size() && IsDigitChar(text[pos]); ++pos) {
    value = std::min(value * 10 + (text[pos] - '0'), kExponentLimit);
  }
  exponent = negative ? -value : value;
  return true;
}

// The strict numeric test: the whole text (blanks around) must be a number.
bool ScanStrict(std::string_view text, NumberScan& scan) {
  size_t pos = 0;
  size_t end = text.size();
  while (pos < end && IsBlankChar(text[pos])) {
    ++pos;
  }
  while (end > pos && IsBlankChar(text[end - 1])) {
    --end;
  }
  text = text.substr(0, end);
  if (pos < end && (text[pos] == '+' || text[pos] == '-')) {
    scan.negative = text[pos] == '-';
    ++pos;
  }
  // Thousands separators are accepted anywhere after the first digit of the
  // integer part, as the platform's numeric test does.
  for (; pos < end && (IsDigitChar(text[pos]) || (text[pos] == ',' && !scan.digits.empty()));
       ++pos) {
    if (text[pos] != ',') {
      scan.digits.push_back(text[pos]);
    }
  }
  if (pos < end && text[pos] == '.') {
    for (++pos; pos < end && IsDigitChar(text[pos]); ++pos) {
      scan.digits.push_back(text[pos]);
      ++scan.fraction_digits;
    }
  }
  if (scan.digits.empty()) {
    return false;
  }
  if (pos < end && IsExponentMark(text[pos])) {
    ++pos;
    if (!ReadExponent(text, pos, scan.exponent)) {
      return false;
    }
  }
  return pos == end;
}

// The leading-number reading: blanks anywhere are skipped, reading stops at
// the first character that cannot continue the number.
void ScanLeading(std::string_view text, NumberScan& scan) {
  std::string compact;
  compact.reserve(text.size());
  for (char c : text) {
    if (c != ' ' && c != '\t' && c != '\n') {
      compact.push_back(c);
    }
  }
  size_t pos = 0;
  if (pos < compact.size() && (compact[pos] == '+' || compact[pos] == '-')) {
    scan.negative = compact[pos] == '-';
    ++pos;
  }
  for (; pos < compact.size() && IsDigitChar(compact[pos]); ++pos) {
    scan.digits.push_back(compact[pos]);
  }
  if (pos < compact.size() && compact[pos] == '.') {
    for (++pos; pos < compact.size() && IsDigitChar(compact[pos]); ++pos) {
      scan.digits.push_back(compact[pos]);
      ++scan.fraction_digits;
    }
  }
  if (!scan.digits.empty() && pos < compact.size() && IsExponentMark(compact[pos])) {
    size_t after_mark = pos + 1;
    ReadExponent(compact, after_mark, scan.exponent);  // an incomplete exponent is ignored
  }
}

// Count of significant digits plus the shift: the number is below 1 when <= 0.
int64_t Magnitude(const NumberScan& scan) {
  size_t first = scan.digits.find_first_not_of('0');
  if (first == std::string::npos) {
    return INT64_MIN;
  }
  return static_cast<int64_t>(scan.digits.size() - first) + Shift(scan);
}

NumberStatus ScanToDouble(const NumberScan& scan, double& out) {
  std::string text = scan.digits + "e" + std::to_string(Shift(scan));
  double value = 0;
  auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  if (result.ec == std::errc::result_out_of_range) {
    if (Magnitude(scan) > 0) {
      return NumberStatus::Overflow;
    }
    value = 0;  // too small for a Double: the platform reads it as zero
  }
  out = value == 0 ? 0.0 : (scan.negative ? -value : value);
  return NumberStatus::Ok;
}

}  // namespace

NumberStatus ParseNumber(std::string_view Text, double& Out) {
  NumberScan scan;
  if (!ScanStrict(Text, scan)) {
    return NumberStatus::NotNumeric;
  }
  return ScanToDouble(scan, Out);
}

std::optional<NumberParts> SplitNumber(std::string_view Text) {
  NumberScan scan;
  if (!ScanStrict(Text, scan)) {
    return std::nullopt;
  }
  return NumberParts{scan.negative, std::move(scan.digits), Shift(scan)};
}

int SignificantDigitCount(std::string_view Text) {
  NumberScan scan;
  if (!ScanStrict(Text, scan)) {
    return 0;
  }
  const size_t first = scan.digits.find_first_not_of('0');
  if (first == std::string::npos) {
    return 0;
  }
  return static_cast<int>(scan.digits.find_last_not_of('0') - first + 1);
}

std::optional<double> ParseNumber(std::string_view Text) {
  double value = 0;
  if (ParseNumber(Text, value) != NumberStatus::Ok) {
    return std::nullopt;
  }
  return value;
}

NumberStatus ParseCurrency(std::string_view Text, Currency& Out) {
  NumberScan scan;
  if (!ScanStrict(Text, scan)) {
    return NumberStatus::NotNumeric;
  }
  // Units of 1/10000: digits * 10^(shift + 4), rounded half to even.
  if (scan.digits.find_first_not_of('0') == std::string::npos) {
    Out = Currency{0};
    return NumberStatus::Ok;
  }
  if (Magnitude(scan) > 20) {
    return NumberStatus::Overflow;
  }
  int64_t scale = Shift(scan) + 4;
  int64_t kept = static_cast<int64_t>(scan.digits.size()) + std::min<int64_t>(scale, 0);
  __int128 units = 0;
  for (int64_t i = 0; i < kept; ++i) {
    units = units * 10 + (scan.digits[i] - '0');
    if (units > (static_cast<__int128>(1) << 64)) {
      return NumberStatus::Overflow;
    }
  }
  for (int64_t i = 0; i < scale; ++i) {
    units *= 10;
    if (units > (static_cast<__int128>(1) << 64)) {
      return NumberStatus::Overflow;
    }
  }
  if (kept >= 0 && kept < static_cast<int64_t>(scan.digits.size())) {
    int round_digit = scan.digits[kept] - '0';
    bool sticky = scan.digits.find_first_not_of('0', kept + 1) != std::string::npos;
    if (round_digit > 5 || (round_digit == 5 && (sticky || (units & 1) != 0))) {
      ++units;
    }
  }
  __int128 signed_units = scan.negative ? -units : units;
  if (signed_units > INT64_MAX || signed_units < INT64_MIN) {
    return NumberStatus::Overflow;
  }
  Out = Currency{static_cast<int64_t>(signed_units)};
  return NumberStatus::Ok;
}

}  // namespace varnel::internal

namespace varnel {

double Val(const std::string& Text) {
  internal::NumberScan scan;
  internal::ScanLeading(Text, scan);
  if (scan.digits.empty()) {
    return 0;
  }
  double value = 0;
  if (internal::ScanToDouble(scan, value) != internal::NumberStatus::Ok) {
    RaiseError(6);
  }
  return value;
}

bool IsNumeric(std::string_view Text) {
  double ignored = 0;
  return internal::ParseNumber(Text, ignored) == internal::NumberStatus::Ok;
}

bool IsNumeric(const Variant& Value) {
  switch (Value.VarType()) {
    case vbString:
      return IsNumeric(Value.StringView());
    case vbNull:
    case vbDate:
      return false;
    default:
      return true;  // Empty, numbers and Boolean
  }
}

}  // namespace varnel
