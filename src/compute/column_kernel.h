// The fast path of a computed amount column: an expression that is one
// operator between two fields (Qty*Price), evaluated straight from the two
// columns' values for the kinds such columns hold, every other case left to
// the general evaluation.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "automation/variant_bits.h"
#include "compute/compiled_expression.h"

namespace varnel::internal {

struct FieldPair {
  int32_t left;
  int32_t right;
  char op;
};

// The two field indexes and the operator when the plan is exactly "push a
// field, push a field, apply op, result"; nullopt for any other plan.
std::optional<FieldPair> FieldPairOf(const CompiledExpression& code);

// out[row] = left[row] * right[row] for the rows from first (below end) while
// each pair is a whole number (Integer, Long) and a Currency, in either order,
// whose product fits: the operator's product (WholeTimesCurrency), written
// without building Variants. Returns the first row it did not compute; the
// general evaluation gives that row its value or its error.
// REQUIRES bits.Usable().
size_t MultiplyWholeByCurrency(const NumberBits& bits, const Variant* left, const Variant* right,
                               Variant* out, size_t first, size_t end);

}  // namespace varnel::internal
