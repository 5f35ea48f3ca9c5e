// Decimal arithmetic: the exact result is formed in a 256-bit magnitude (wide
// enough for a product of two 96-bit magnitudes, or a dividend scaled up to 75
// digits) and rounded once to a Decimal.
#include "automation/decimal_math.h"

#include <algorithm>
#include <cassert>
#include <charconv>
#include <cmath>

#include "automation/numeric_text.h"

namespace varnel::internal {
namespace {

constexpr int kMaxScale = 28;
constexpr int kLimbs = 8;
// Digits of a text kept before rounding: 76 always fit in 256 bits.
constexpr size_t kKeptDigits = 76;
// A text whose whole part has more digits than this is beyond any Decimal.
constexpr int64_t kMaxWholeDigits = 29;

// An unsigned 256-bit magnitude, least significant limb first.
struct Wide {
  uint32_t limb[kLimbs] = {};
};

Wide WideOf(const Decimal& value) {
  Wide w;
  w.limb[0] = static_cast<uint32_t>(value.Lo);
  w.limb[1] = static_cast<uint32_t>(value.Lo >> 32);
  w.limb[2] = value.Hi;
  return w;
}

Wide WideOf(uint64_t value) { return WideOf(Decimal{value, 0, 0, false}); }

bool IsZero(const Wide& w) {
  return std::all_of(std::begin(w.limb), std::end(w.limb), [](uint32_t l) { return l == 0; });
}

// Below 2^96: a Decimal's magnitude holds it.
bool FitsDecimal(const Wide& w) {
  return std::all_of(w.limb + 3, w.limb + kLimbs, [](uint32_t l) { return l == 0; });
}

// w *= factor; returns what overflowed past 256 bits.
uint32_t MultiplySmall(Wide& w, uint32_t factor) {
  uint64_t carry = 0;
  for (uint32_t& limb : w.limb) {
    const uint64_t product = uint64_t{limb} * factor + carry;
    limb = static_cast<uint32_t>(product);
    carry = product >> 32;
  }
  return static_cast<uint32_t>(carry);
}

// w /= divisor; returns the remainder.
uint32_t DivideSmall(Wide& w, uint32_t divisor) {
  uint64_t remainder = 0;
  for (int i = kLimbs - 1; i >= 0; --i) {
    const uint64_t part = (remainder << 32) | w.limb[i];
    w.limb[i] = static_cast<uint32_t>(part / divisor);
    remainder = part % divisor;
  }
  return static_cast<uint32_t>(remainder);
}

void AddSmall(Wide& w, uint32_t addend) {
  uint64_t carry = addend;
  for (int i = 0; i < kLimbs && carry != 0; ++i) {
    const uint64_t sum = uint64_t{w.limb[i]} + carry;
    w.limb[i] = static_cast<uint32_t>(sum);
    carry = sum >> 32;
  }
}

void Add(Wide& a, const Wide& b) {
  uint64_t carry = 0;
  for (int i = 0; i < kLimbs; ++i) {
    const uint64_t sum = uint64_t{a.limb[i]} + b.limb[i] + carry;
    a.limb[i] = static_cast<uint32_t>(sum);
    carry = sum >> 32;
  }
}

int Compare(const Wide& a, const Wide& b);

// a -= b; REQUIRES a >= b.
void Subtract(Wide& a, const Wide& b) {
  assert(Compare(a, b) >= 0);
  int64_t borrow = 0;
  for (int i = 0; i < kLimbs; ++i) {
    const int64_t difference = int64_t{a.limb[i]} - b.limb[i] - borrow;
    borrow = difference < 0 ? 1 : 0;
    a.limb[i] = static_cast<uint32_t>(difference + (borrow << 32));
  }
}

int Compare(const Wide& a, const Wide& b) {
  for (int i = kLimbs - 1; i >= 0; --i) {
    if (a.limb[i] != b.limb[i]) {
      return a.limb[i] < b.limb[i] ? -1 : 1;
    }
  }
  return 0;
}

// The low 256 bits of a * b (the factors here are below 2^96).
Wide Multiply(const Wide& a, const Wide& b) {
  Wide product;
  for (int i = 0; i < kLimbs; ++i) {
    uint64_t carry = 0;
    for (int j = 0; i + j < kLimbs; ++j) {
      const uint64_t part = uint64_t{a.limb[i]} * b.limb[j] + product.limb[i + j] + carry;
      product.limb[i + j] = static_cast<uint32_t>(part);
      carry = part >> 32;
    }
  }
  return product;
}

// n / d by shifting and subtracting; the remainder is left in `remainder`.
Wide Divide(const Wide& n, const Wide& d, Wide& remainder) {
  Wide quotient;
  remainder = Wide{};
  for (int bit = kLimbs * 32 - 1; bit >= 0; --bit) {
    MultiplySmall(remainder, 2);
    remainder.limb[0] |= (n.limb[bit / 32] >> (bit % 32)) & 1;
    if (Compare(remainder, d) >= 0) {
      Subtract(remainder, d);
      quotient.limb[bit / 32] |= 1u << (bit % 32);
    }
  }
  return quotient;
}

Wide ScaledUp(Wide w, int places) {
  for (; places > 0; --places) {
    MultiplySmall(w, 10);
  }
  return w;
}

Decimal Pack(bool negative, const Wide& m, int scale) {
  Decimal value;
  value.Lo = uint64_t{m.limb[0]} | (uint64_t{m.limb[1]} << 32);
  value.Hi = m.limb[2];
  value.Scale = static_cast<uint8_t>(scale);
  value.Negative = negative && !IsZero(m);
  return value;
}

// The Decimal nearest to m / 10^scale (rounded half to even; `inexact` tells
// that m was itself cut short, above its exact value). Raises 6 when the
// whole part does not fit.
Decimal Rounded(bool negative, Wide m, int scale, bool inexact) {
  for (; scale < 0; ++scale) {
    if (MultiplySmall(m, 10) != 0 || !FitsDecimal(m)) {
      RaiseError(6);
    }
  }
  uint32_t round = 0;
  bool sticky = inexact;
  for (;;) {
    while (scale > kMaxScale || !FitsDecimal(m)) {
      if (scale == 0) {
        RaiseError(6);
      }
      sticky = sticky || round != 0;
      round = DivideSmall(m, 10);
      --scale;
    }
    if (round > 5 || (round == 5 && (sticky || (m.limb[0] & 1) != 0))) {
      AddSmall(m, 1);
    }
    if (FitsDecimal(m)) {
      return Pack(negative, m, scale);
    }
    round = 0;  // rounding up reached 2^96 exactly: one digit more must go
    sticky = false;
  }
}

// The magnitude rounded half to even to `target` decimal places.
Wide RoundedTo(const Decimal& value, int target) {
  Wide m = WideOf(value);
  if (value.Scale <= target) {
    return ScaledUp(m, target - value.Scale);
  }
  uint32_t round = 0;
  bool sticky = false;
  for (int scale = value.Scale; scale > target; --scale) {
    sticky = sticky || round != 0;
    round = DivideSmall(m, 10);
  }
  if (round > 5 || (round == 5 && (sticky || (m.limb[0] & 1) != 0))) {
    AddSmall(m, 1);
  }
  return m;
}

// The magnitude's digits, most significant first ("0" for zero).
std::string Digits(Wide m) {
  std::string digits;
  do {
    digits.push_back(static_cast<char>('0' + DivideSmall(m, 10)));
  } while (!IsZero(m));
  std::reverse(digits.begin(), digits.end());
  return digits;
}

Decimal WithoutTrailingZeros(Decimal value) {
  Wide m = WideOf(value);
  int scale = value.Scale;
  for (; scale > 0; --scale) {
    Wide reduced = m;
    if (DivideSmall(reduced, 10) != 0) {
      break;
    }
    m = reduced;
  }
  return Pack(value.Negative, m, scale);
}

Decimal Negated(Decimal value) {
  value.Negative = !value.Negative && !DecimalIsZero(value);
  return value;
}

// A signed whole Wide within the 8-byte range; raises 6 beyond it.
int64_t SignedWhole(bool negative, const Wide& m) {
  const Wide limit = WideOf(uint64_t{1} << 63);  // |INT64_MIN|
  const int order = Compare(m, limit);
  if (order > 0 || (order == 0 && !negative)) {
    RaiseError(6);
  }
  const uint64_t magnitude = uint64_t{m.limb[0]} | (uint64_t{m.limb[1]} << 32);
  return negative ? static_cast<int64_t>(0 - magnitude) : static_cast<int64_t>(magnitude);
}

}  // namespace

Decimal DecimalFromInt(int64_t value) {
  const uint64_t magnitude = value < 0 ? 0 - static_cast<uint64_t>(value) : value;
  return Decimal{magnitude, 0, 0, value < 0};
}

Decimal DecimalFromCurrency(Currency value) {
  Decimal decimal = DecimalFromInt(value.Value);
  decimal.Scale = 4;
  return decimal;
}

Decimal DecimalFromDouble(double value) {
  if (!std::isfinite(value)) {
    RaiseError(6);
  }
  char buffer[40];
  const auto result =
      std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific, 14);
  return WithoutTrailingZeros(
      *DecimalFromText(std::string_view(buffer, static_cast<size_t>(result.ptr - buffer))));
}

std::optional<Decimal> DecimalFromText(std::string_view text) {
  std::optional<NumberParts> parts = SplitNumber(text);
  if (!parts) {
    return std::nullopt;
  }
  std::string& digits = parts->digits;
  digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
  const size_t last = digits.find_last_not_of('0');
  parts->shift += static_cast<int64_t>(digits.size() - (last + 1));
  digits.erase(last + 1);
  const int64_t magnitude = static_cast<int64_t>(digits.size()) + parts->shift;
  if (digits.empty() || magnitude <= -kMaxWholeDigits) {
    return Decimal{};  // below half the smallest step: zero
  }
  if (magnitude > kMaxWholeDigits) {
    RaiseError(6);
  }
  bool inexact = false;
  if (digits.size() > kKeptDigits) {
    parts->shift += static_cast<int64_t>(digits.size() - kKeptDigits);
    digits.resize(kKeptDigits);
    inexact = true;  // the dropped digits were not all zeros (trailing zeros went first)
  }
  Wide m;
  for (char c : digits) {
    MultiplySmall(m, 10);
    AddSmall(m, static_cast<uint32_t>(c - '0'));
  }
  return Rounded(parts->negative, m, static_cast<int>(-parts->shift), inexact);
}

std::optional<Variant> ExactNumberOfText(std::string_view text) {
  constexpr int kDoubleDigits = 15;
  if (SignificantDigitCount(text) <= kDoubleDigits) {
    return std::nullopt;
  }
  std::optional<Decimal> value;
  try {
    value = DecimalFromText(text);
  } catch (const VbError&) {
    return std::nullopt;  // beyond the Decimal range: only a Double comes near
  }
  const Decimal whole = WithoutTrailingZeros(*value);
  const bool fits = whole.Scale == 0 && whole.Hi == 0 &&
                    whole.Lo <= (whole.Negative ? uint64_t{1} << 63 : INT64_MAX);
  if (fits) {
    return Variant(whole.Negative ? static_cast<int64_t>(0 - whole.Lo)
                                  : static_cast<int64_t>(whole.Lo));
  }
  return Variant(*value);
}

double DecimalToDouble(const Decimal& value) {
  const std::string text = Digits(WideOf(value)) + "e-" + std::to_string(value.Scale);
  double number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return value.Negative ? -number : number;
}

int64_t DecimalToInt(const Decimal& value) {
  return SignedWhole(value.Negative, RoundedTo(value, 0));
}

Currency DecimalToCurrency(const Decimal& value) {
  return Currency{SignedWhole(value.Negative, RoundedTo(value, 4))};
}

std::string DecimalText(const Decimal& value) {
  std::string digits = Digits(WideOf(value));
  if (value.Scale > 0) {
    if (digits.size() <= value.Scale) {
      digits.insert(0, value.Scale + 1 - digits.size(), '0');
    }
    digits.insert(digits.size() - value.Scale, ".");
    digits.erase(digits.find_last_not_of('0') + 1);
    if (digits.back() == '.') {
      digits.pop_back();
    }
  }
  return value.Negative && digits != "0" ? "-" + digits : digits;
}

bool DecimalIsZero(const Decimal& value) { return value.Lo == 0 && value.Hi == 0; }

int DecimalCompare(const Decimal& a, const Decimal& b) {
  const bool a_negative = a.Negative && !DecimalIsZero(a);
  const bool b_negative = b.Negative && !DecimalIsZero(b);
  if (a_negative != b_negative) {
    return a_negative ? -1 : 1;
  }
  const int scale = std::max(a.Scale, b.Scale);
  const int order =
      Compare(ScaledUp(WideOf(a), scale - a.Scale), ScaledUp(WideOf(b), scale - b.Scale));
  return a_negative ? -order : order;
}

Decimal DecimalAdd(const Decimal& a, const Decimal& b) {
  const int scale = std::max(a.Scale, b.Scale);
  Wide x = ScaledUp(WideOf(a), scale - a.Scale);
  Wide y = ScaledUp(WideOf(b), scale - b.Scale);
  if (a.Negative == b.Negative) {
    Add(x, y);
    return Rounded(a.Negative, x, scale, false);
  }
  if (Compare(x, y) >= 0) {
    Subtract(x, y);
    return Rounded(a.Negative, x, scale, false);
  }
  Subtract(y, x);
  return Rounded(b.Negative, y, scale, false);
}

Decimal DecimalSubtract(const Decimal& a, const Decimal& b) { return DecimalAdd(a, Negated(b)); }

Decimal DecimalMultiply(const Decimal& a, const Decimal& b) {
  return Rounded(a.Negative != b.Negative, Multiply(WideOf(a), WideOf(b)), a.Scale + b.Scale,
                 false);
}

Decimal DecimalDivide(const Decimal& a, const Decimal& b) {
  if (DecimalIsZero(b)) {
    RaiseError(DecimalIsZero(a) ? 6 : 11);
  }
  if (DecimalIsZero(a)) {
    return Decimal{};
  }
  // Scale the dividend up as far as 256 bits allow, so the quotient carries
  // more digits than a Decimal keeps and is rounded only once.
  Wide n = WideOf(a);
  int scale = a.Scale - b.Scale;
  while (n.limb[kLimbs - 1] < (1u << 28)) {
    MultiplySmall(n, 10);
    ++scale;
  }
  Wide remainder;
  const Wide quotient = Divide(n, WideOf(b), remainder);
  return WithoutTrailingZeros(
      Rounded(a.Negative != b.Negative, quotient, scale, !IsZero(remainder)));
}

}  // namespace varnel::internal

namespace varnel {

bool operator==(const Decimal& A, const Decimal& B) noexcept {
  return internal::DecimalCompare(A, B) == 0;
}

}  // namespace varnel
