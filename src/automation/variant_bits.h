// Whole numbers and Currency read from, and Currency written into, Variants
// without a call: for loops over every row of a column, where a call per
// accessor costs more than the arithmetic itself.
//
// A Variant keeps a number in its first eight bytes and its kind in its last
// byte (variant.h). Which byte value stands for which kind is learned from
// Variants that the constructors build, and the whole layout is checked
// against the accessors and operator==, once per NumberBits. When anything
// differs, Usable() is false and callers use the Variant's own members.
#pragma once

#include <cstdint>
#include <cstring>

#include "varnel/variant.h"

namespace varnel::internal {

class NumberBits {
 public:
  enum class Kind : uint8_t { Other, Integer, Long, Currency };

  NumberBits() noexcept;

  // True when the layout is the one the readers below assume.
  bool Usable() const noexcept { return usable_; }

  // Integer, Long or Currency; Other for every other kind (REQUIRES Usable()).
  Kind KindOf(const Variant& value) const noexcept {
    const uint8_t tag = TagOf(value);
    return tag == long_       ? Kind::Long
           : tag == currency_ ? Kind::Currency
           : tag == integer_  ? Kind::Integer
                              : Kind::Other;
  }

  // The value of an Integer or a Long (REQUIRES KindOf(value) is that kind).
  static int64_t Whole(const Variant& value, Kind kind) noexcept {
    if (kind == Kind::Integer) {
      return Read<int16_t>(value);
    }
    return Read<int32_t>(value);
  }

  // The 1/10000 units of a Currency (REQUIRES KindOf(value) == Kind::Currency).
  static int64_t Units(const Variant& value) noexcept { return Read<int64_t>(value); }

  // target = Variant(Currency{units}), written in place when target holds
  // Empty, Null or a number that owns nothing outside its 16 bytes.
  void StoreCurrency(Variant& target, int64_t units) const noexcept {
    const uint8_t tag = TagOf(target);
    if (tag != empty_ && tag != null_ && tag != long_ && tag != integer_ && tag != currency_) {
      target = Variant(Currency{units});
      return;
    }
    unsigned char bytes[sizeof(Variant)];
    std::memcpy(bytes, currency_image_, sizeof bytes);
    std::memcpy(bytes, &units, sizeof units);
    std::memcpy(static_cast<void*>(&target), bytes, sizeof bytes);
  }

 private:
  static constexpr size_t kTagByte = sizeof(Variant) - 1;

  static uint8_t TagOf(const Variant& value) noexcept {
    return reinterpret_cast<const unsigned char*>(&value)[kTagByte];
  }
  template <typename T>
  static T Read(const Variant& value) noexcept {
    T number;
    std::memcpy(&number, &value, sizeof number);
    return number;
  }
  bool LayoutHolds() const noexcept;

  uint8_t empty_ = 0, null_ = 0, integer_ = 0, long_ = 0, currency_ = 0;
  unsigned char currency_image_[sizeof(Variant)] = {};  // Variant(Currency{0})
  bool usable_ = false;
};

}  // namespace varnel::internal
