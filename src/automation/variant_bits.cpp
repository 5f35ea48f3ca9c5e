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
  // The number in the first eight bytes: a Currency written here reads back.
  const Variant units(Currency{-1234567890123456789});
  Variant written;
  StoreCurrency(written, units.AsCurrency().Value);
  return written.VarType() == vbCurrency && written == units;
}

}  // namespace varnel::internal
