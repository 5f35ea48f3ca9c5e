// Number patterns of Format ("0.00", "#,##0", "0%", "0.00E+00", "$#,##0.00;($#,##0.00)").
// Literal text stands before or after the digits; literal text between digit
// places is written after the number.
#include <charconv>
#include <cmath>
#include <optional>
#include <vector>

#include "automation/decimal_math.h"
#include "automation/format_rules.h"

namespace varnel::internal {

namespace {

struct NumberPattern {
  std::string prefix;
  std::string suffix;
  int integer_zeros = 0;  // '0' places before the point
  bool grouping = false;  // a ',' between the places before the point
  bool point = false;
  int fraction_zeros = 0;  // '0' places after the point
  int fraction_places = 0;
  bool percent = false;
  bool scientific = false;
  std::string exponent_mark;  // "E+", "E-", "e+" or "e-"
  int exponent_places = 0;
};

bool IsPlace(char c) { return c == '0' || c == '#'; }

NumberPattern ParseSection(std::string_view section) {
  NumberPattern np;
  bool seen_place = false;
  for (size_t pos = 0; pos < section.size();) {
    char c = section[pos];
    std::string& literal = seen_place || np.point ? np.suffix : np.prefix;
    if (c == '"' || c == '\\') {
      pos += CopyLiteral(section, pos, literal);
      continue;
    }
    if (IsPlace(c) && !np.scientific) {
      seen_place = true;
      if (np.point) {
        np.fraction_places++;
        np.fraction_zeros += c == '0' ? 1 : 0;
      } else {
        np.integer_zeros += c == '0' ? 1 : 0;
      }
    } else if (c == ',' && seen_place && !np.point) {
      np.grouping = true;
    } else if (c == '.' && !np.point && !np.scientific) {
      np.point = true;
    } else if ((c == 'E' || c == 'e') && seen_place && pos + 1 < section.size() &&
               (section[pos + 1] == '+' || section[pos + 1] == '-')) {
      np.scientific = true;
      np.exponent_mark = std::string(section.substr(pos, 2));
      for (pos += 2; pos < section.size() && IsPlace(section[pos]); ++pos) {
        np.exponent_places++;
      }
      continue;
    } else {
      np.percent = np.percent || c == '%';
      literal.push_back(c);
    }
    ++pos;
  }
  return np;
}

// A number as its significant digits: |value| = d.ddd x 10^exponent; no
// digits for zero.
struct Digits {
  std::string digits;
  int exponent = 0;
  bool negative = false;
};

// The 15 significant digits of a Double, as the platform writes it.
Digits DoubleDigits(double value) {
  Digits d;
  d.negative = value < 0;
  if (value == 0) {
    return d;
  }
  char buffer[40];
  auto result = std::to_chars(buffer, buffer + sizeof buffer, std::fabs(value),
                              std::chars_format::scientific, 14);
  std::string_view text(buffer, static_cast<size_t>(result.ptr - buffer));
  size_t mark = text.find('e');
  for (char c : text.substr(0, mark)) {
    if (c != '.') {
      d.digits.push_back(c);
    }
  }
  d.digits.erase(d.digits.find_last_not_of('0') + 1);
  std::from_chars(text.data() + mark + (text[mark + 1] == '+' ? 2 : 1), text.data() + text.size(),
                  d.exponent);
  return d;
}

// Every digit of an exact value, read from its exact text ("-123.45").
Digits ExactDigits(const Decimal& value) {
  Digits d;
  std::string text = DecimalText(value);
  d.negative = text.front() == '-';
  if (d.negative) {
    text.erase(0, 1);
  }
  const size_t point = text.find('.');
  const size_t integer_size = point == std::string::npos ? text.size() : point;
  if (point != std::string::npos) {
    text.erase(point, 1);
  }
  const size_t first = text.find_first_not_of('0');
  if (first == std::string::npos) {
    d.negative = false;
    return d;
  }
  d.exponent = static_cast<int>(integer_size) - 1 - static_cast<int>(first);
  d.digits = text.substr(first);
  d.digits.erase(d.digits.find_last_not_of('0') + 1);
  return d;
}

// The digits of a value: every digit of the exact kinds (and of numeric text
// that a Double cannot hold), the 15 significant digits of the others.
Digits DigitsOf(const Variant& value) {
  const VbVarType type = value.VarType();
  if (type == vbLongLong || type == vbDecimal || type == vbCurrency) {
    return ExactDigits(value.ToDecimal());
  }
  if (value.IsString()) {
    if (std::optional<Variant> exact = ExactNumberOfText(value.StringView())) {
      return ExactDigits(exact->ToDecimal());
    }
  }
  const double number = value.ToDouble();
  if (!std::isfinite(number)) {
    RaiseError(6);  // no digits to write
  }
  return DoubleDigits(number);
}

// Keeps the first `keep` digits, rounding half away from zero.
void RoundDigits(std::string& digits, int& exponent, int keep) {
  if (keep >= static_cast<int>(digits.size())) {
    return;
  }
  bool up = keep >= 0 && digits[keep] >= '5';
  digits.resize(keep < 0 ? 0 : keep);
  if (!up) {
    digits.erase(digits.find_last_not_of('0') + 1);
    return;
  }
  int i = static_cast<int>(digits.size()) - 1;
  for (; i >= 0 && digits[i] == '9'; --i) {
    digits[i] = '0';
  }
  if (i < 0) {
    digits.insert(digits.begin(), '1');
    ++exponent;
  } else {
    ++digits[i];
  }
  digits.erase(digits.find_last_not_of('0') + 1);
}

char DigitAt(const std::string& digits, int exponent, int power) {
  int k = exponent - power;
  return k >= 0 && k < static_cast<int>(digits.size()) ? digits[k] : '0';
}

std::string Grouped(const std::string& integer) {
  std::string out;
  for (size_t i = 0; i < integer.size(); ++i) {
    if (i > 0 && (integer.size() - i) % 3 == 0) {
      out.push_back(',');
    }
    out.push_back(integer[i]);
  }
  return out;
}

// The digits, point and exponent of a non-negative value; `zero` tells whether
// every written digit is 0.
std::string FormatDigits(Digits number, const NumberPattern& np, bool& zero) {
  std::string& digits = number.digits;
  int& exponent = number.exponent;
  if (np.percent && !digits.empty()) {
    exponent += 2;  // times 100 on the digits: exact, whatever the kind
  }
  int integer_places = std::max(np.integer_zeros, 1);
  int shown_exponent = 0;
  if (np.scientific && !digits.empty()) {
    RoundDigits(digits, exponent, integer_places + np.fraction_places);
    shown_exponent = exponent - (integer_places - 1);
    exponent = integer_places - 1;
  } else {
    RoundDigits(digits, exponent, exponent + 1 + np.fraction_places);
  }
  zero = digits.empty();
  std::string integer;
  for (int power = std::max(exponent, 0); power >= 0; --power) {
    char digit = DigitAt(digits, exponent, power);
    if (!integer.empty() || digit != '0') {
      integer.push_back(digit);
    }
  }
  if (static_cast<int>(integer.size()) < np.integer_zeros) {
    integer.insert(0, np.integer_zeros - integer.size(), '0');
  }
  std::string out = np.grouping ? Grouped(integer) : integer;
  std::string fraction;
  for (int i = 1; i <= np.fraction_places; ++i) {
    fraction.push_back(DigitAt(digits, exponent, -i));
  }
  while (static_cast<int>(fraction.size()) > np.fraction_zeros && fraction.back() == '0') {
    fraction.pop_back();
  }
  if (np.point) {
    out += "." + fraction;
  }
  if (np.scientific) {
    std::string power = std::to_string(std::abs(shown_exponent));
    power.insert(0, std::max<int>(np.exponent_places - static_cast<int>(power.size()), 0), '0');
    out += np.exponent_mark.substr(0, 1);
    out += shown_exponent < 0 ? "-" : (np.exponent_mark[1] == '+' ? "+" : "");
    out += power;
  }
  return out;
}

std::vector<std::string_view> SplitSections(std::string_view pattern) {
  std::vector<std::string_view> sections;
  size_t start = 0;
  bool quoted = false;
  for (size_t pos = 0; pos <= pattern.size(); ++pos) {
    if (pos == pattern.size() || (pattern[pos] == ';' && !quoted)) {
      sections.push_back(pattern.substr(start, pos - start));
      start = pos + 1;
    } else if (pattern[pos] == '"') {
      quoted = !quoted;
    } else if (pattern[pos] == '\\' && !quoted && pos + 1 < pattern.size()) {
      ++pos;  // the escaped character is no separator; a trailing \ escapes nothing
    }
  }
  return sections;
}

}  // namespace

std::string FormatNumberPattern(const Variant& value, std::string_view pattern) {
  const Digits number = DigitsOf(value);
  const bool is_zero = number.digits.empty();
  std::vector<std::string_view> sections = SplitSections(pattern);
  std::string_view section = sections[0];
  bool sign = false;
  if (is_zero && sections.size() >= 3 && !sections[2].empty()) {
    section = sections[2];
  } else if (number.negative && sections.size() >= 2 && !sections[1].empty()) {
    section = sections[1];
  } else {
    sign = number.negative;
  }
  NumberPattern np = ParseSection(section);
  bool zero = false;
  std::string body = np.prefix + FormatDigits(number, np, zero) + np.suffix;
  return sign && !zero ? "-" + body : body;
}

}  // namespace varnel::internal
