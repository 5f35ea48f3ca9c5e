// The pieces of Format: date patterns, number patterns and their literals.
#pragma once

#include <string>
#include <string_view>

#include "varnel/variant.h"

namespace varnel::internal {

// Copies the literal at pattern[pos] (a "quoted text" or a \x escape) to out;
// returns how many pattern characters it used.
size_t CopyLiteral(std::string_view pattern, size_t pos, std::string& out);

// True when the pattern (outside literals) holds a date or time token letter:
// y m d h n s, or an AM/PM marker.
bool IsDatePattern(std::string_view pattern);

std::string FormatDatePattern(Date value, std::string_view pattern);

// Number patterns: 0 and # digit places, "." decimal point, "," thousands
// grouping, % percent, E+00 / E-00 scientific, up to three sections
// "positive;negative;zero". Rounds half away from zero on every digit of a
// LongLong, Decimal or Currency (and of numeric text a Double cannot hold), on
// the 15 significant digits of other values. Raises 13 for text that is no
// number, 6 for a Double that is not finite.
std::string FormatNumberPattern(const Variant& value, std::string_view pattern);

}  // namespace varnel::internal
