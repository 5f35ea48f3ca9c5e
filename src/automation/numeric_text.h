// Reading and writing numbers as text by the platform's rules ("." is the
// decimal point, "," the thousands separator).
//
//   ParseNumber(" 1,000.5 ")  -> 1000.5
//   ParseNumber("12abc")      -> nullopt (use varnel::Val for the leading number)
//   NumberText(1.50)          -> "1.5"
//   NumberText(1e16)          -> "1E+16"
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "varnel/variant.h"

namespace varnel::internal {

enum class NumberStatus { Ok, NotNumeric, Overflow };

// The value of a text that IsNumeric accepts: blanks around, a leading sign,
// digits with thousands separators (after the first digit, before the point),
// a decimal point, an exponent (E or D). nullopt for anything else, including
// numbers beyond the range of a Double.
std::optional<double> ParseNumber(std::string_view Text);

// As ParseNumber, telling a text that is not a number from one out of range.
NumberStatus ParseNumber(std::string_view Text, double& Out);

// The exact Currency value of a numeric text, rounded half to even to four
// decimals; Overflow beyond the Currency range.
NumberStatus ParseCurrency(std::string_view Text, Currency& Out);

// A numeric text taken apart: value = digits * 10^shift, negated when negative.
struct NumberParts {
  bool negative = false;
  std::string digits;  // as written, leading and trailing zeros included
  int64_t shift = 0;
};

// The parts of a text that IsNumeric accepts; nullopt for any other text.
std::optional<NumberParts> SplitNumber(std::string_view Text);

// The count of significant digits of a numeric text ("0.0120" has 2, "1E+20"
// has 1); 0 for zero and for text that is not numeric.
int SignificantDigitCount(std::string_view Text);

// The standard text form of a Double (CStr): at most 15 significant digits,
// trailing zeros dropped; scientific form ("1E+16", "1.5E-05") when
// |x| < 1E-04 or |x| >= 1E+15.
std::string NumberText(double Value);

// The standard text form of a Currency: "3.75", "-0.0001", "12".
std::string CurrencyText(Currency Value);

}  // namespace varnel::internal
