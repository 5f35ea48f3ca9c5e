// Arithmetic rules of the variant operators that other code applies to plain
// numbers, so that a loop over a whole column gives exactly what the operator
// gives without building Variants.
#pragma once

#include <cstdint>

namespace varnel::internal {

// The Currency product of a whole number (Integer, Long, LongLong, Boolean,
// Empty) and a Currency of `units` 1/10000 units. The operator converts the
// whole number to Currency (overflow beyond the Currency range) and scales the
// product back by 10000, which for a whole factor leaves no remainder: the
// product is whole * units exactly. False, product untouched, on overflow
// (the operator raises 6).
inline bool WholeTimesCurrency(int64_t whole, int64_t units, int64_t& product) {
  constexpr int64_t kUnitsPerWhole = 10000;
  if (whole > INT64_MAX / kUnitsPerWhole || whole < INT64_MIN / kUnitsPerWhole) {
    return false;
  }
  int64_t result = 0;
  if (__builtin_mul_overflow(whole, units, &result)) {
    return false;
  }
  product = result;
  return true;
}

}  // namespace varnel::internal
