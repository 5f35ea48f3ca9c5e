// How field names are compared: the collection's keys, SymbolName and the
// recompute test all compare names without regard to ASCII case, so a name
// written "qty" in a ComputeString or a SymbolName means the field "Qty".
#pragma once

#include <string_view>

namespace varnel::internal {

// True when a and b are the same name, ignoring ASCII case.
bool NamesEqual(std::string_view a, std::string_view b) noexcept;

// True when text matches the pattern "*" + name + "*" (ignoring ASCII case):
// a plain containment in which the pattern characters of the name keep their
// meaning: ? one character, * any run, # one digit, [list] / [!list] one
// character in (or not in) the list, with ranges a-z.
bool ContainsNamePattern(std::string_view text, std::string_view name);

}  // namespace varnel::internal
