// Rounding and text forms shared by the conversions, the operators and Format.
#pragma once

#include <cstdint>
#include <string>

#include "varnel/variant.h"

namespace varnel::internal {

// Rounds to the nearest whole number, halves to even (the platform's rounding).
double RoundHalfEven(double Value);

// Currency of a Double, rounded half to even to 1/10000; raises 6 beyond range.
Currency CurrencyFromDouble(double Value);

inline double CurrencyToDouble(Currency Value) { return static_cast<double>(Value.Value) / 1e4; }

// The number of a text for arithmetic and conversions; raises 13 when the text
// is not numeric, 6 when it is beyond a Double.
double TextToDouble(std::string_view Text);

// -1, 0 or 1 as number a is below, equal to or above number b (Integer, Long,
// LongLong, Double, Currency, Decimal; Boolean as -1 or 0). Exact kinds compare
// exactly with each other; a Double beside a LongLong or Decimal compares as a
// Decimal when it converts to one, else every side compares as a Double.
int CompareNumbers(const Variant& a, const Variant& b);

// CStr of a date: "m/d/yyyy h:nn:ss AM", the date alone when the time is
// midnight, the time alone when the day is 1899-12-30.
std::string DateText(Date Value);

}  // namespace varnel::internal
