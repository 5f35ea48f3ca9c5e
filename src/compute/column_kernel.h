// The fast path of a computed amount column: an expression that is one
// operator between two fields (Qty*Price), evaluated straight from the two
// columns' values for the kinds such columns hold, every other case left to
// the general evaluation.
#pragma once

#include <cstdint>
#include <new>
#include <optional>

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

// a op b for a whole number (Integer or Long) times Currency, in either order:
// the platform's Currency product, w * (u/10000) = w*u units exactly. False,
// with result untouched, for any other kinds, operator or an overflow; the
// general operators then give the value or the error.
// Inline: it runs once per row of a load.
inline bool QuickProduct(const Variant& a, char op, const Variant& b, Variant& result) {
  if (op != '*') {
    return false;
  }
  const VbVarType left = a.VarType();
  const VbVarType right = b.VarType();
  int64_t whole = 0;
  int64_t units = 0;
  if ((left == vbLong || left == vbInteger) && right == vbCurrency) {
    whole = left == vbLong ? a.AsLong() : a.AsInteger();
    units = b.AsCurrency().Value;
  } else if (left == vbCurrency && (right == vbLong || right == vbInteger)) {
    whole = right == vbLong ? b.AsLong() : b.AsInteger();
    units = a.AsCurrency().Value;
  } else {
    return false;
  }
  int64_t product = 0;
  if (__builtin_mul_overflow(whole, units, &product)) {
    return false;
  }
  // Rebuilt in place: no temporary to move from and destroy on every row; a
  // blank (what a load leaves there) owns nothing and needs no destructor.
  if (!result.IsBlank()) {
    result.~Variant();
  }
  new (&result) Variant(Currency{product});
  return true;
}

}  // namespace varnel::internal
