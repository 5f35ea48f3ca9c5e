// The evaluator's operators: the precedence relation between the operator on
// top of the operator stack and the incoming one, and the five binary operators
// with their rules for missing (Empty or Null) operands.
#pragma once

#include <cstdint>
#include <string_view>

#include "varnel/variant.h"

namespace varnel::internal {

// The seven operator characters: five binary operators, the two parentheses
// and the end mark "#".
inline constexpr std::string_view kOperatorChars = "&+-*/()#";

inline bool IsOperatorChar(char c) { return kOperatorChars.find(c) != std::string_view::npos; }

enum class Relation : uint8_t {
  Lower,   // "<": push the incoming operator
  Same,    // "=": a "(" meets its ")"
  Higher,  // ">": apply the operator on top first
  None,    // "Err": the two may not meet; the expression is malformed
};

// The relation of top to incoming; None for any character outside the table.
Relation Precede(char top, char incoming);

// A theta B with the variant operators; a missing side makes "+" and "-" give
// the other side (both missing: Null), "*" and "/" give Null; "&" always joins.
// Any other theta gives Empty. Raises VbError as the variant operators do.
Variant ApplyOperator(const Variant& a, char theta, const Variant& b);

}  // namespace varnel::internal
