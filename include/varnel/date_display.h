/// \file
/// How a date is shown by its field's DateType: the one rule that every screen
/// (the console, the window, a client's own) follows.
///
///     varnel::DateDisplayText(Variant(Date{45001.5}), varnel::D_YMDHN);  // "2023-03-16 12:00"
#pragma once

#include <cstddef>
#include <string>

#include "varnel/enums.h"
#include "varnel/export.h"
#include "varnel/variant.h"

VARNEL_API_BEGIN

namespace varnel {

/// The Format pattern a date of DateType is shown with: "yyyy-mm-dd hh:nn:ss",
/// "yyyy-mm-dd hh:nn", "yyyy-mm-dd", "hh:nn:ss" or "hh:nn" (an unknown DateType: the first).
const char* DateDisplayPattern(Enum_DateType DateType);

/// The most characters a date's display text has: "yyyy-mm-dd hh:nn:ss".
inline constexpr size_t kDateDisplayChars = 19;

/// Writes Value as a date of DateType is shown into Out, which has room for
/// kDateDisplayChars characters, without allocating (grids write every visible
/// cell); returns how many it wrote. Raises VbError 6 outside the years 100 to 9999.
size_t WriteDateDisplay(Date Value, Enum_DateType DateType, char* Out);

/// Value as a date of DateType is shown: the text of Format(Value,
/// DateDisplayPattern(DateType)), written without reading the pattern for a Date.
/// "" for Empty and Null, text that is no date as it is; raises VbError 6 for
/// a Date outside the years 100 to 9999.
std::string DateDisplayText(const Variant& Value, Enum_DateType DateType);

}  // namespace varnel

VARNEL_API_END
