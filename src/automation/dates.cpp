// Dates written as text: CStr's form, ISO 8601 and the date patterns of Format.
#include <cstdio>

#include "automation/calendar.h"
#include "automation/value_rules.h"

namespace varnel {

namespace {

std::string TwoDigits(int value) {
  char text[8];
  std::snprintf(text, sizeof text, "%02d", value);
  return text;
}

std::string FourDigits(int value) {
  char text[8];
  std::snprintf(text, sizeof text, "%04d", value);
  return text;
}

int TwelveHour(int hour) { return hour % 12 == 0 ? 12 : hour % 12; }

}  // namespace

namespace internal {

std::string DateText(Date Value) {
  if (!InDateRange(Value.Value)) {
    RaiseError(6);  // a Date made from any Double: no calendar day to write
  }
  DateParts parts = SplitDate(Value);
  bool has_time = parts.hour != 0 || parts.minute != 0 || parts.second != 0;
  bool has_day = !(parts.year == 1899 && parts.month == 12 && parts.day == 30);
  std::string text;
  if (has_day) {
    text = std::to_string(parts.month) + "/" + std::to_string(parts.day) + "/" +
           FourDigits(parts.year);
  }
  if (has_time || !has_day) {
    if (!text.empty()) {
      text += " ";
    }
    text += std::to_string(TwelveHour(parts.hour)) + ":" + TwoDigits(parts.minute) + ":" +
            TwoDigits(parts.second) + (parts.hour < 12 ? " AM" : " PM");
  }
  return text;
}

}  // namespace internal

std::string IsoDate(Date Value) {
  if (!internal::InDateRange(Value.Value)) {
    RaiseError(6);
  }
  internal::DateParts parts = internal::SplitDate(Value);
  return FourDigits(parts.year) + "-" + TwoDigits(parts.month) + "-" + TwoDigits(parts.day) + " " +
         TwoDigits(parts.hour) + ":" + TwoDigits(parts.minute) + ":" + TwoDigits(parts.second);
}

}  // namespace varnel
