// What one value adds to the column total (SumValue) of a summed field; the
// rule RecomputeSum applies row by row, for code that keeps a running total.
#pragma once

#include <optional>

#include "varnel/fields.h"

namespace varnel::internal {

// Numbers and numeric text count, as Currency in a currency field; blanks,
// other text, dates and Booleans add nothing (nullopt).
std::optional<Variant> TotalAddend(const ClsFields& field, const Variant& value);

}  // namespace varnel::internal
