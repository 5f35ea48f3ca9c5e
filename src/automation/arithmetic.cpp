// The platform's operators on variants.
//
// Operands are reduced to numbers first: Empty is Integer 0, a Boolean is an
// Integer -1 or 0, text is read as a Double (13 when it is not numeric). The
// result takes the most precise kind of the two, in the order
// Integer < Long < LongLong < Double < Currency < Date < Decimal (Date only
// for + and -; * and / read a date as a Double). Integer results that
// overflow become Long, Long results Double; LongLong, Currency, Double and
// Decimal overflow raise 6. / gives a Double unless a side is a Decimal.
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "automation/arithmetic_rules.h"
#include "automation/calendar.h"
#include "automation/decimal_math.h"
#include "automation/value_rules.h"

namespace varnel {

namespace {

enum class Rank { Integer, Long, LongLong, Double, Currency, Date, Decimal };

struct Number {
  Rank rank;
  int64_t whole = 0;  // Integer, Long, LongLong
  double real = 0;    // Double, Date
  int64_t units = 0;  // Currency, in 1/10000
};

Number ToNumber(const Variant& value) {
  switch (value.VarType()) {
    case vbInteger:
      return {Rank::Integer, value.AsInteger()};
    case vbLong:
      return {Rank::Long, value.AsLong()};
    case vbLongLong:
      return {Rank::LongLong, value.AsLongLong()};
    case vbDecimal:
      return {Rank::Decimal};  // the operation reads it from the Variant itself
    case vbDouble:
      return {Rank::Double, 0, value.AsDouble()};
    case vbCurrency:
      return {Rank::Currency, 0, 0, value.AsCurrency().Value};
    case vbDate:
      return {Rank::Date, 0, value.AsDate().Value};
    case vbBoolean:
      return {Rank::Integer, value.AsBoolean() ? -1 : 0};
    case vbString:
      return {Rank::Double, 0, internal::TextToDouble(value.StringView())};
    default:
      return {Rank::Integer, 0};  // Empty
  }
}

double RealOf(const Number& number) {
  switch (number.rank) {
    case Rank::Integer:
    case Rank::Long:
    case Rank::LongLong:
      return static_cast<double>(number.whole);
    case Rank::Currency:
      return internal::CurrencyToDouble(Currency{number.units});
    default:
      return number.real;
  }
}

// A whole number becomes a Currency first, as the platform converts it (6
// when it is beyond the Currency range).
int64_t UnitsOf(const Number& number) {
  switch (number.rank) {
    case Rank::Integer:
    case Rank::Long:
    case Rank::LongLong:
      if (number.whole > INT64_MAX / 10000 || number.whole < INT64_MIN / 10000) {
        RaiseError(6);
      }
      return number.whole * 10000;
    case Rank::Currency:
      return number.units;
    default:
      return internal::CurrencyFromDouble(number.real).Value;
  }
}

// A whole result in the narrowest kind at or above `rank` that holds it; a
// LongLong result stays a LongLong, or overflows.
Variant WholeResult(Rank rank, __int128 value) {
  if (rank == Rank::LongLong) {
    if (value > INT64_MAX || value < INT64_MIN) {
      RaiseError(6);
    }
    return Variant(static_cast<int64_t>(value));
  }
  if (rank == Rank::Integer && value >= INT16_MIN && value <= INT16_MAX) {
    return Variant(static_cast<int16_t>(value));
  }
  if (value >= INT32_MIN && value <= INT32_MAX) {
    return Variant(static_cast<int32_t>(value));
  }
  return Variant(static_cast<double>(value));
}

Variant DoubleResult(double value) {
  if (!std::isfinite(value)) {
    RaiseError(6);
  }
  return Variant(value);
}

// A date result beyond the calendar becomes a Double, as the platform does.
Variant DateResult(double value) {
  if (!internal::InDateRange(value)) {
    return DoubleResult(value);
  }
  return Variant(Date{value});
}

Variant CurrencyResult(__int128 units) {
  if (units > INT64_MAX || units < INT64_MIN) {
    RaiseError(6);
  }
  return Variant(Currency{static_cast<int64_t>(units)});
}

// (p * q) / 10000 rounded half to even, exactly: both factors are below 2^63,
// so the product fits in 128 bits.
__int128 ScaledProduct(__int128 p, __int128 q) {
  __int128 product = p * q;
  __int128 quotient = product / 10000;
  __int128 remainder = product % 10000;
  if (remainder < 0) {
    remainder = -remainder;
  }
  if (remainder > 5000 || (remainder == 5000 && quotient % 2 != 0)) {
    quotient += product < 0 ? -1 : 1;
  }
  return quotient;
}

bool IsWhole(Rank rank) {
  return rank == Rank::Integer || rank == Rank::Long || rank == Rank::LongLong;
}

Variant WholeTimesCurrencyResult(const Number& whole, const Number& currency) {
  int64_t product = 0;
  if (!internal::WholeTimesCurrency(whole.whole, currency.units, product)) {
    RaiseError(6);
  }
  return Variant(Currency{product});
}

enum class Op { Add, Subtract, Multiply };

Variant DecimalArithmetic(Op op, const Variant& a, const Variant& b) {
  const Decimal x = a.ToDecimal();
  const Decimal y = b.ToDecimal();
  switch (op) {
    case Op::Add:
      return Variant(internal::DecimalAdd(x, y));
    case Op::Subtract:
      return Variant(internal::DecimalSubtract(x, y));
    case Op::Multiply:
      return Variant(internal::DecimalMultiply(x, y));
  }
  return Variant();
}

Variant Arithmetic(Op op, const Variant& a, const Variant& b) {
  Number x = ToNumber(a);
  Number y = ToNumber(b);
  Rank rank = std::max(x.rank, y.rank);
  if (rank == Rank::Decimal) {
    return DecimalArithmetic(op, a, b);
  }
  if (op == Op::Multiply && rank == Rank::Date) {
    rank = Rank::Double;
  }
  if (op == Op::Subtract && x.rank == Rank::Date && y.rank == Rank::Date) {
    return DoubleResult(x.real - y.real);  // the days between two dates
  }
  switch (rank) {
    case Rank::Integer:
    case Rank::Long:
    case Rank::LongLong: {
      const __int128 p = x.whole;
      const __int128 q = y.whole;
      return WholeResult(rank, op == Op::Add ? p + q : op == Op::Subtract ? p - q : p * q);
    }
    case Rank::Currency: {
      if (op == Op::Multiply && IsWhole(x.rank) != IsWhole(y.rank) &&
          (x.rank == Rank::Currency || y.rank == Rank::Currency)) {
        return WholeTimesCurrencyResult(IsWhole(x.rank) ? x : y, IsWhole(x.rank) ? y : x);
      }
      __int128 p = UnitsOf(x);
      __int128 q = UnitsOf(y);
      if (op != Op::Multiply) {
        return CurrencyResult(op == Op::Add ? p + q : p - q);
      }
      return CurrencyResult(ScaledProduct(p, q));
    }
    case Rank::Double:
    case Rank::Date: {
      double p = RealOf(x);
      double q = RealOf(y);
      double r = op == Op::Add ? p + q : op == Op::Subtract ? p - q : p * q;
      return rank == Rank::Date ? DateResult(r) : DoubleResult(r);
    }
    case Rank::Decimal:
      break;  // done above
  }
  return Variant();
}

}  // namespace

Variant operator+(const Variant& A, const Variant& B) {
  if (A.IsNull() || B.IsNull()) {
    return Variant::Null();
  }
  if (A.IsString() && B.IsString()) {
    std::string text(A.StringView());
    text.append(B.StringView());
    return Variant(text);
  }
  // Empty added to text leaves the text as it is.
  if (A.IsEmpty() && B.IsString()) {
    return B;
  }
  if (B.IsEmpty() && A.IsString()) {
    return A;
  }
  return Arithmetic(Op::Add, A, B);
}

Variant operator-(const Variant& A, const Variant& B) {
  if (A.IsNull() || B.IsNull()) {
    return Variant::Null();
  }
  return Arithmetic(Op::Subtract, A, B);
}

Variant operator*(const Variant& A, const Variant& B) {
  if (A.IsNull() || B.IsNull()) {
    return Variant::Null();
  }
  return Arithmetic(Op::Multiply, A, B);
}

// A Double, or a Decimal when either side is one. The platform tells 0/0
// (overflow, 6) from x/0 (11).
Variant operator/(const Variant& A, const Variant& B) {
  if (A.IsNull() || B.IsNull()) {
    return Variant::Null();
  }
  if (A.VarType() == vbDecimal || B.VarType() == vbDecimal) {
    return Variant(internal::DecimalDivide(A.ToDecimal(), B.ToDecimal()));
  }
  double dividend = RealOf(ToNumber(A));
  double divisor = RealOf(ToNumber(B));
  if (divisor == 0) {
    RaiseError(dividend == 0 ? 6 : 11);
  }
  return DoubleResult(dividend / divisor);
}

Variant Concat(const Variant& A, const Variant& B) {
  if (A.IsNull() && B.IsNull()) {
    return Variant::Null();
  }
  std::string text = A.IsNull() ? std::string() : A.ToString();
  if (!B.IsNull()) {
    text += B.ToString();
  }
  return Variant(text);
}

}  // namespace varnel
