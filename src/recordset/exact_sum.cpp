// Exact sums. Whole numbers and Currency units are counted in 128-bit
// integers; doubles in a fixed-point integer with one bit per 2^-1074, so that
// taking a value off undoes putting it on bit for bit. Only reading the total
// rounds, once, from the whole sum.
#include "recordset/exact_sum.h"

#include <bit>
#include <cmath>
#include <limits>

#include "automation/value_rules.h"

namespace varnel::internal {
namespace {

constexpr int kUnitBit = 1074;  // the bit of 2^0 in a BinarySum
constexpr uint32_t kCarryEvery = 1u << 28;

bool FitsCurrency(double value) {
  constexpr double kLimit = 9223372036854775808.0 / 1e4;  // 2^63 units
  return value > -kLimit && value < kLimit;
}

bool FitsCurrency(__int128 units) { return units >= INT64_MIN && units <= INT64_MAX; }

}  // namespace

void BinarySum::AddBits(unsigned __int128 magnitude, int bit, int sign) {
  const int first = bit / 32;
  const int shift = bit % 32;
  for (int k = 0; magnitude != 0; ++k, magnitude >>= 32) {
    const uint64_t piece = static_cast<uint64_t>(magnitude & 0xffffffffu) << shift;
    limbs_[first + k] += sign * static_cast<int64_t>(piece & 0xffffffffu);
    limbs_[first + k + 1] += sign * static_cast<int64_t>(piece >> 32);
  }
  if (++pending_ >= kCarryEvery) {
    Carry();
  }
}

void BinarySum::Add(double value, int sign) {
  if (value == 0) {
    return;
  }
  int exponent = 0;
  const double fraction = std::frexp(std::fabs(value), &exponent);  // |value| = f * 2^e
  uint64_t mantissa = static_cast<uint64_t>(std::ldexp(fraction, 53));
  int bit = exponent - 53 + kUnitBit;
  if (bit < 0) {  // a subnormal: the bits below 2^-1074 are zero
    mantissa >>= -bit;
    bit = 0;
  }
  AddBits(mantissa, bit, value < 0 ? -sign : sign);
}

void BinarySum::AddWhole(__int128 value, int sign) {
  if (value == 0) {
    return;
  }
  const unsigned __int128 magnitude =
      value < 0 ? -static_cast<unsigned __int128>(value) : static_cast<unsigned __int128>(value);
  AddBits(magnitude, kUnitBit, value < 0 ? -sign : sign);
}

void BinarySum::Carry() {
  for (int i = 0; i + 1 < kLimbs; ++i) {
    limbs_[i + 1] += limbs_[i] >> 32;  // arithmetic: a negative limb borrows
    limbs_[i] &= 0xffffffff;
  }
  pending_ = 0;
}

void BinarySum::Merge(const BinarySum& other, int sign) {
  BinarySum addend = other;
  addend.Carry();
  Carry();
  for (int i = 0; i < kLimbs; ++i) {
    limbs_[i] += sign * addend.limbs_[i];
  }
  pending_ = 2;
}

double BinarySum::Rounded() const {
  BinarySum sum = *this;
  sum.Carry();
  const bool negative = sum.limbs_[kLimbs - 1] < 0;
  if (negative) {
    for (int64_t& limb : sum.limbs_) {
      limb = -limb;
    }
    sum.Carry();
  }
  const auto& limbs = sum.limbs_;
  int top = kLimbs - 1;
  while (top >= 0 && limbs[top] == 0) {
    --top;
  }
  if (top < 0) {
    return 0.0;
  }
  const auto limb = [&](int i) -> unsigned __int128 {
    return i < kLimbs ? static_cast<uint64_t>(limbs[i]) : 0;
  };
  const int high_bit = 32 * top + 31 - std::countl_zero(static_cast<uint32_t>(limbs[top]));
  double magnitude = 0;
  if (high_bit < 64) {
    magnitude =
        std::ldexp(static_cast<double>(static_cast<uint64_t>(limb(0) | limb(1) << 32)), -kUnitBit);
  } else {
    // The 64 bits from the highest one down, the bits below folded into the
    // lowest: converting that to double rounds as the whole sum would.
    const int low = high_bit - 63;
    const int first = low / 32;
    const int shift = low % 32;
    const unsigned __int128 bits = limb(first) | limb(first + 1) << 32 | limb(first + 2) << 64;
    uint64_t window = static_cast<uint64_t>(bits >> shift);
    bool sticky = (limb(first) & ((uint64_t{1} << shift) - 1)) != 0;
    for (int i = 0; i < first && !sticky; ++i) {
      sticky = limbs[i] != 0;
    }
    magnitude = std::ldexp(static_cast<double>(window | (sticky ? 1 : 0)), low - kUnitBit);
  }
  return negative ? -magnitude : magnitude;
}

ExactSum::ExactSum(const ExactSum& other)
    : count_(other.count_),
      currency_kinds_(other.currency_kinds_),
      real_kinds_(other.real_kinds_),
      outside_currency_(other.outside_currency_),
      nan_(other.nan_),
      positive_infinity_(other.positive_infinity_),
      negative_infinity_(other.negative_infinity_),
      whole_(other.whole_),
      units_(other.units_),
      currency_units_(other.currency_units_),
      reals_(other.reals_ ? std::make_unique<BinarySum>(*other.reals_) : nullptr) {}

ExactSum& ExactSum::operator=(const ExactSum& other) {
  if (this != &other) {
    ExactSum copy(other);
    *this = std::move(copy);
  }
  return *this;
}

BinarySum& ExactSum::Reals() {
  if (!reals_) {
    reals_ = std::make_unique<BinarySum>();
  }
  return *reals_;
}

void ExactSum::AddReal(double value, TotalUnits units, int sign) {
  if (std::isnan(value)) {
    nan_ += sign;
  } else if (std::isinf(value)) {
    (value > 0 ? positive_infinity_ : negative_infinity_) += sign;
  } else if (FitsCurrency(value)) {
    const int64_t cents = CurrencyFromDouble(value).Value;
    units_ += sign * __int128{cents};
    if (units == TotalUnits::Currency) {
      currency_kinds_ += sign;  // a currency field holds it as Currency
      currency_units_ += sign * __int128{cents};
      return;
    }
    Reals().Add(value, sign);
  } else {
    outside_currency_ += sign;
    Reals().Add(value, sign);
  }
  real_kinds_ += sign;
}

void ExactSum::Add(const Variant& value, TotalUnits units, int sign) {
  switch (value.VarType()) {
    case vbInteger:
    case vbLong: {
      const int32_t whole = value.VarType() == vbLong ? value.AsLong() : value.AsInteger();
      units_ += sign * __int128{whole} * 10000;
      if (units == TotalUnits::Currency) {
        currency_kinds_ += sign;
        currency_units_ += sign * __int128{whole} * 10000;
      } else {
        whole_ += sign * __int128{whole};
      }
      break;
    }
    case vbCurrency:
      units_ += sign * __int128{value.AsCurrency().Value};
      currency_units_ += sign * __int128{value.AsCurrency().Value};
      currency_kinds_ += sign;
      break;
    case vbDouble:
      AddReal(value.AsDouble(), units, sign);
      break;
    case vbString: {
      double number = 0;
      try {
        if (!IsNumeric(value)) {
          return;
        }
        number = value.ToDouble();
      } catch (const VbError&) {
        return;  // beyond a Double: not a number the total can hold
      }
      AddReal(number, units, sign);
      break;
    }
    default:
      return;  // blanks, dates, Booleans
  }
  count_ += sign;
}

void ExactSum::Merge(const ExactSum& other, int sign) {
  count_ += sign * other.count_;
  currency_kinds_ += sign * other.currency_kinds_;
  real_kinds_ += sign * other.real_kinds_;
  outside_currency_ += sign * other.outside_currency_;
  nan_ += sign * other.nan_;
  positive_infinity_ += sign * other.positive_infinity_;
  negative_infinity_ += sign * other.negative_infinity_;
  whole_ += sign * other.whole_;
  units_ += sign * other.units_;
  currency_units_ += sign * other.currency_units_;
  if (other.reals_) {
    Reals().Merge(*other.reals_, sign);
  }
}

double ExactSum::RoundedWithoutCurrency() const {
  BinarySum sum = reals_ ? *reals_ : BinarySum();
  sum.AddWhole(whole_, 1);
  return sum.Rounded();
}

Variant ExactSum::Total(TotalUnits units) const {
  if (nan_ > 0 || (positive_infinity_ > 0 && negative_infinity_ > 0)) {
    return Variant(std::numeric_limits<double>::quiet_NaN());
  }
  if (positive_infinity_ > 0 || negative_infinity_ > 0) {
    return Variant(positive_infinity_ > 0 ? HUGE_VAL : -HUGE_VAL);
  }
  if (currency_kinds_ > 0 || units == TotalUnits::Currency) {
    if (outside_currency_ == 0 && FitsCurrency(units_)) {
      return Variant(Currency{static_cast<int64_t>(units_)});
    }
    // Beyond Currency: the nearest Double, the Currency addends in 1/10000.
    return Variant(RoundedWithoutCurrency() + static_cast<double>(currency_units_) / 1e4);
  }
  if (real_kinds_ > 0) {
    return Variant(RoundedWithoutCurrency());
  }
  if (whole_ >= INT32_MIN && whole_ <= INT32_MAX) {
    return Variant(static_cast<int32_t>(whole_));
  }
  return Variant(static_cast<double>(whole_));
}

}  // namespace varnel::internal
