// An exact running sum of column values that can take a value off again as
// exactly as it put it on. Its total depends only on which values it holds,
// never on the order they came in, so a total kept by differences always
// equals a recount of the same values.
//
//   ExactSum sum;
//   sum.Add(Variant(int32_t{4}), TotalUnits::Whole, 1);
//   sum.Add(Variant(2.5), TotalUnits::Whole, 1);
//   sum.Total(TotalUnits::Whole);  // Double 6.5
//   sum.Add(Variant(2.5), TotalUnits::Whole, -1);
//   sum.Total(TotalUnits::Whole);  // Long 4
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "varnel/fields.h"
#include "varnel/variant.h"

namespace varnel::internal {

// The units a column is totalled in: a currency field turns every addend into
// Currency; any other field keeps each addend's own kind.
enum class TotalUnits { Whole, Currency };

// The exact sum of finite doubles (and whole numbers), kept as one fixed-point
// integer wide enough for every double, with spare bits for 2^29 additions
// between carry passes. Rounded once, to the nearest double, when read.
class BinarySum {
 public:
  void Add(double value, int sign);
  void AddWhole(__int128 value, int sign);
  void Merge(const BinarySum& other, int sign);
  // The sum rounded to the nearest double (ties to even).
  double Rounded() const;

 private:
  static constexpr int kLimbs = 72;  // 32 bits each: 2^-1074 .. 2^1100
  void AddBits(unsigned __int128 magnitude, int bit, int sign);
  void Carry();
  std::array<int64_t, kLimbs> limbs_{};
  uint32_t pending_ = 0;  // additions since the last carry pass
};

// The sum of a column's addends. The total's kind follows the platform's
// ranking of kinds, decided by the set of addends and not by their order:
// any Currency addend makes a Currency total (every addend taken in 1/10000,
// as Currency arithmetic takes it); else any Double (or numeric text) a
// Double, the exact sum rounded once; else a Long. A total beyond the range
// of its kind is the Double nearest to the exact sum.
class ExactSum {
 public:
  ExactSum() = default;
  ExactSum(const ExactSum& other);
  ExactSum& operator=(const ExactSum& other);
  ExactSum(ExactSum&&) noexcept = default;
  ExactSum& operator=(ExactSum&&) noexcept = default;

  // Puts value on (sign 1) or takes it off (sign -1). Blanks, non-numeric
  // text, dates and Booleans add nothing.
  void Add(const Variant& value, TotalUnits units, int sign);
  // Adds (sign 1) or subtracts (sign -1) every value of other.
  void Merge(const ExactSum& other, int sign);
  // The total: Currency 0 (currency units) or Long 0 when nothing is held.
  Variant Total(TotalUnits units) const;
  // How many values add something.
  int64_t Count() const { return count_; }

 private:
  BinarySum& Reals();
  void AddReal(double value, TotalUnits units, int sign);
  // The doubles and whole numbers held, rounded once.
  double RoundedWithoutCurrency() const;
  int64_t count_ = 0;
  int64_t currency_kinds_ = 0;    // Currency addends
  int64_t real_kinds_ = 0;        // Double addends (numeric text included)
  int64_t outside_currency_ = 0;  // Doubles too large for Currency
  int64_t nan_ = 0, positive_infinity_ = 0, negative_infinity_ = 0;
  __int128 whole_ = 0;                // Integer and Long addends
  __int128 units_ = 0;                // every addend that fits Currency, in 1/10000
  __int128 currency_units_ = 0;       // the addends held as Currency, in 1/10000
  std::unique_ptr<BinarySum> reals_;  // finite doubles; made on first use
};

// The sums of one symbol (the value of the companion field named by
// SymbolName) in a column.
struct SymbolSums {
  std::string symbol;
  ExactSum all;
  ExactSum selected;
};

// What the totals of one summed field know about its column: the sums over
// every row and over the selected rows, and per symbol when the field has a
// companion. Valid while the field, its kind of units and its companion are
// the ones it was counted with.
struct ColumnTotalRecord {
  std::weak_ptr<const ClsFields> owner;
  std::weak_ptr<const ClsFields> companion;
  bool has_companion = false;
  TotalUnits units = TotalUnits::Whole;
  ExactSum all;
  ExactSum selected;
  std::vector<SymbolSums> by_symbol;  // empty without a companion
  uint64_t recounts = 0;
};

}  // namespace varnel::internal
