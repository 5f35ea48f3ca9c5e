// The standard text form of numbers, as CStr writes them.
#include <charconv>
#include <cmath>
#include <cstdlib>

#include "automation/numeric_text.h"

namespace varnel::internal {

namespace {

constexpr int kSignificantDigits = 15;
// Fixed notation for decimal exponents in [-4, 14]; scientific outside.
constexpr int kFixedMinExponent = -4;
constexpr int kFixedMaxExponent = 14;

std::string FixedForm(const std::string& digits, int exponent) {
  if (exponent < 0) {
    return "0." + std::string(static_cast<size_t>(-exponent - 1), '0') + digits;
  }
  size_t integer_digits = static_cast<size_t>(exponent) + 1;
  if (digits.size() <= integer_digits) {
    return digits + std::string(integer_digits - digits.size(), '0');
  }
  return digits.substr(0, integer_digits) + "." + digits.substr(integer_digits);
}

std::string ScientificForm(const std::string& digits, int exponent) {
  std::string text = digits.substr(0, 1);
  if (digits.size() > 1) {
    text += "." + digits.substr(1);
  }
  std::string power = std::to_string(std::abs(exponent));
  if (power.size() < 2) {
    power.insert(0, "0");
  }
  return text + (exponent < 0 ? "E-" : "E+") + power;
}

}  // namespace

std::string NumberText(double Value) {
  if (Value == 0 || !std::isfinite(Value)) {
    return "0";
  }
  // d.dddddddddddddde±x rounded to 15 significant digits.
  char buffer[40];
  auto result = std::to_chars(buffer, buffer + sizeof buffer, std::fabs(Value),
                              std::chars_format::scientific, kSignificantDigits - 1);
  std::string_view text(buffer, static_cast<size_t>(result.ptr - buffer));
  size_t mark = text.find('e');
  std::string digits;
  for (char c : text.substr(0, mark)) {
    if (c != '.') {
      digits.push_back(c);
    }
  }
  digits.erase(digits.find_last_not_of('0') + 1);
  int exponent = std::atoi(std::string(text.substr(mark + 1)).c_str());
  std::string body = exponent >= kFixedMinExponent && exponent <= kFixedMaxExponent
                         ? FixedForm(digits, exponent)
                         : ScientificForm(digits, exponent);
  return Value < 0 ? "-" + body : body;
}

std::string CurrencyText(Currency Value) {
  uint64_t magnitude =
      Value.Value < 0 ? 0 - static_cast<uint64_t>(Value.Value) : static_cast<uint64_t>(Value.Value);
  std::string text = std::to_string(magnitude / 10000);
  uint64_t fraction = magnitude % 10000;
  if (fraction != 0) {
    std::string decimals = std::to_string(fraction);
    decimals.insert(0, 4 - decimals.size(), '0');
    decimals.erase(decimals.find_last_not_of('0') + 1);
    text += "." + decimals;
  }
  return Value.Value < 0 ? "-" + text : text;
}

}  // namespace varnel::internal
