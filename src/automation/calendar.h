// Calendar arithmetic on the platform's date serials (days since 1899-12-30,
// the fraction being the time of day) and the date texts the library reads.
//
//   DateParts p = SplitDate(Date{37747.5});        // 2003-05-06 12:00:00
//   Date midnight = CutDate(Date{37747.5}, D_YMD);  // Date{37747}
//   Date d;
//   bool ok = ParseIsoDate("2003-05-06 12:00", 16, d);
//
// Serials below zero follow the platform's encoding: the integer part is the
// day and the fraction's magnitude is the time, so -1.25 is 1899-12-29 06:00.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "varnel/enums.h"
#include "varnel/variant.h"

namespace varnel::internal {

struct DateParts {
  int year, month, day, hour, minute, second;
};

// The calendar date and the time of day, rounded to the nearest second.
DateParts SplitDate(Date Value);

// The serial of a calendar date and time. REQUIRES: valid parts (month 1..12,
// day within the month, hour 0..23, minute and second 0..59).
Date MakeDate(const DateParts& Parts);

// What formatting Value with the DateType's pattern and reading it back gives:
// D_YMDHNS to the second, D_YMDHN seconds 0, D_YMD midnight, D_HNS and D_HN
// the time of day only (date part 0), D_HN with seconds 0.
Date CutDate(Date Value, Enum_DateType DateType);

// A date from text: month first "m/d/yyyy" (also "m/d/yy" with 00-29 as 20xx,
// "m/d" in the current year), "yyyy/m/d", ISO "yyyy-mm-dd" ('-' and '/' both
// serve as separators), each optionally followed by a time after a blank or
// 'T'; or a time alone. Times are "h:nn" or "h:nn:ss"
// (optional fraction of a second) with an optional AM/PM. Blanks around are
// ignored. nullopt when the text is not such a date.
std::optional<Date> ParseDateText(std::string_view Text);

// Fast strict reading of database date texts: "yyyy-mm-dd", "yyyy-mm-dd hh:nn",
// "yyyy-mm-dd hh:nn:ss" (blank or 'T' before the time), "hh:nn:ss", "hh:nn",
// each with an optional fraction of seconds. False (Out unchanged) otherwise.
bool ParseIsoDate(const char* Text, size_t Size, Date& Out);

// True when Value lies in the platform's date range (years 100 to 9999).
bool InDateRange(double Value);

// The serial of a day number (0 is 1899-12-30) and a time of day in seconds.
Date ComposeSerial(int64_t Day, double Seconds);

// True when the parts name a date of the years 100 to 9999 and a valid time.
bool ValidDateParts(const DateParts& Parts);

}  // namespace varnel::internal
