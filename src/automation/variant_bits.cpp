#include "automation/variant_bits.h"

#include <algorithm>
#include <iterator>

namespace varnel::internal {

NumberBits::NumberBits() noexcept {
  const Variant currency(Currency{0});
  empty_ = TagOf(Variant());
  null_ = TagOf(Variant::Null());
  integer_ = TagOf(Variant(int16_t{0}));
  long_ = TagOf(Variant(int32_t{0}));
  currency_ = TagOf(currency);
  std::memcpy(currency_image_, static_cast<const void*>(&currency), sizeof currency_image_);
  // Bytes between the number and the kind mean nothing to a Currency.
  std::memset(currency_image_ + sizeof(int64_t), 0, kTagByte - sizeof(int64_t));
  usable_ = LayoutHolds();
}

bool NumberBits::LayoutHolds() const noexcept {
  uint8_t tags[] = {empty_,
                    null_,
                    integer_,
                    long_,
                    currency_,
                    TagOf(Variant(0.5)),
                    TagOf(Variant(int64_t{0})),
                    TagOf(Variant("x"))};
  std::sort(std::begin(tags), std::end(tags));
  if (std::adjacent_find(std::begin(tags), std::end(tags)) != std::end(tags)) {
    return false;  // the last byte does not tell the kinds apart
  }
  const Variant integer(int16_t{-12345});
  const Variant whole(int32_t{-1234567890});
  const Variant units(Currency{-1234567890123456789});
  if (KindOf(integer) != Kind::Integer || Whole(integer, Kind::Integer) != integer.AsInteger() ||
      KindOf(whole) != Kind::Long || Whole(whole, Kind::Long) != whole.AsLong() ||
      KindOf(units) != Kind::Currency || Units(units) != units.AsCurrency().Value) {
    return false;
  }
  Variant written;
  StoreCurrency(written, units.AsCurrency().Value);
  return written.VarType() == vbCurrency && written == units;
}

}  // namespace varnel::internal
