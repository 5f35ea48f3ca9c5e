// Exact decimal arithmetic on the platform's DECIMAL: a 96-bit magnitude, a
// scale of 0-28 and a sign. Every operation computes the exact result in 256
// bits and rounds it once, half to even, to what a Decimal holds; a result
// whose whole part needs more than 96 bits raises 6.
//
//   Decimal a = DecimalFromText("1234567890.1234567891");  // exact
//   Decimal b = DecimalAdd(a, DecimalFromInt(1));           // 1234567891.1234567891
//   std::string text = DecimalText(b);                      // "1234567891.1234567891"
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "varnel/variant.h"

namespace varnel::internal {

Decimal DecimalFromInt(int64_t value);
// A Currency's exact value (scale 4).
Decimal DecimalFromCurrency(Currency value);
// A Double by its 15 significant digits, as the platform converts; raises 6
// for values beyond the Decimal range and for NaN and infinities.
Decimal DecimalFromDouble(double value);

// The value of a numeric text (as IsNumeric accepts it), rounded half to even
// to 28-29 significant digits; nullopt when the text is not numeric. Raises 6
// beyond the Decimal range.
std::optional<Decimal> DecimalFromText(std::string_view text);

// The number of a numeric text that a Double cannot hold (more than 15
// significant digits) in the narrowest exact kind: a LongLong when it is whole
// and within the 8-byte range, else a Decimal. nullopt when a Double holds it,
// when the text is not numeric and when it is beyond the Decimal range.
std::optional<Variant> ExactNumberOfText(std::string_view text);

// The nearest Double.
double DecimalToDouble(const Decimal& value);
// Rounded half to even to a whole number; raises 6 beyond the 8-byte range.
int64_t DecimalToInt(const Decimal& value);
// Rounded half to even to 1/10000; raises 6 beyond the Currency range.
Currency DecimalToCurrency(const Decimal& value);

// Every digit, no exponent, trailing zeros of the fraction dropped:
// "1.5", "-0.0001", "79228162514264337593543950335".
std::string DecimalText(const Decimal& value);

bool DecimalIsZero(const Decimal& value);
// -1, 0 or 1 as a is below, equal to or above b.
int DecimalCompare(const Decimal& a, const Decimal& b);

Decimal DecimalAdd(const Decimal& a, const Decimal& b);
Decimal DecimalSubtract(const Decimal& a, const Decimal& b);
Decimal DecimalMultiply(const Decimal& a, const Decimal& b);
// Raises 11 for x / 0 and 6 for 0 / 0, as the floating division does.
Decimal DecimalDivide(const Decimal& a, const Decimal& b);

}  // namespace varnel::internal
