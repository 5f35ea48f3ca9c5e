// How field names are compared. The collection's keys ignore case, as the
// platform's collection does. Everything else that names a field (SymbolName,
// the operands of a ComputeString, and so the recompute test) is exact, so
// that a field is recomputed exactly when the evaluator would read the
// changed field.
#pragma once

#include <string_view>

namespace varnel::internal {

// True when a and b are the same name, ignoring ASCII case.
bool NamesEqual(std::string_view a, std::string_view b) noexcept;

// True when text matches the pattern "*" + name + "*", case-sensitively: a
// plain containment in which the pattern characters of the name keep their
// meaning: ? one character, * any run, # one digit, [list] / [!list] one
// character in (or not in) the list, with ranges a-z.
bool ContainsNamePattern(std::string_view text, std::string_view name);

}  // namespace varnel::internal
