// Calendar arithmetic on date serials. Every serial the library makes goes
// through ComposeSerial, so a date read from text, cut to a DateType or built
// from parts compares equal to the same date made any other way.
#include "automation/calendar.h"

#include <cassert>
#include <cmath>
#include <cstdint>

namespace varnel::internal {

namespace {

constexpr int64_t kSecondsPerDay = 86400;
constexpr int64_t kUnixEpochSerial = 25569;  // 1970-01-01
constexpr double kFirstSerial = -657434;     // 0100-01-01
constexpr double kEndSerial = 2958466;       // 10000-01-01

// Days from 1970-01-01 of a proleptic Gregorian date.
int64_t DaysFromCivil(int64_t year, int64_t month, int64_t day) {
  year -= month <= 2 ? 1 : 0;
  int64_t era = (year >= 0 ? year : year - 399) / 400;
  int64_t year_of_era = year - era * 400;
  int64_t day_of_year = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
  int64_t day_of_era = year_of_era * 365 + year_of_era / 4 - year_of_era / 100 + day_of_year;
  return era * 146097 + day_of_era - 719468;
}

void CivilFromDays(int64_t days, DateParts& parts) {
  days += 719468;
  int64_t era = (days >= 0 ? days : days - 146096) / 146097;
  int64_t day_of_era = days - era * 146097;
  int64_t year_of_era =
      (day_of_era - day_of_era / 1460 + day_of_era / 36524 - day_of_era / 146096) / 365;
  int64_t day_of_year = day_of_era - (365 * year_of_era + year_of_era / 4 - year_of_era / 100);
  int64_t month_index = (5 * day_of_year + 2) / 153;
  parts.day = static_cast<int>(day_of_year - (153 * month_index + 2) / 5 + 1);
  parts.month = static_cast<int>(month_index < 10 ? month_index + 3 : month_index - 9);
  parts.year = static_cast<int>(year_of_era + era * 400 + (parts.month <= 2 ? 1 : 0));
}

// The day and the second of the day, rounded to the second. A time that
// rounds up to midnight belongs to the next day.
void SplitSerial(double value, int64_t& day, int64_t& second) {
  if (!std::isfinite(value)) {
    value = 0;
  }
  value = std::fmin(std::fmax(value, kFirstSerial - 1), kEndSerial + 1);
  double whole = std::trunc(value);
  double fraction = std::fabs(value - whole);
  day = static_cast<int64_t>(whole);
  second = std::llround(fraction * kSecondsPerDay);
  if (second >= kSecondsPerDay) {
    ++day;
    second -= kSecondsPerDay;
  }
}

[[maybe_unused]] int DaysInMonth(int64_t year, int month) {
  return static_cast<int>(DaysFromCivil(month == 12 ? year + 1 : year, month % 12 + 1, 1) -
                          DaysFromCivil(year, month, 1));
}

}  // namespace

// The platform's encoding keeps the time as a positive fraction also for
// days before 1899-12-30.
Date ComposeSerial(int64_t day, double seconds) {
  double time = seconds / kSecondsPerDay;
  return Date{day >= 0 ? static_cast<double>(day) + time : static_cast<double>(day) - time};
}

DateParts SplitDate(Date Value) {
  int64_t day = 0;
  int64_t second = 0;
  SplitSerial(Value.Value, day, second);
  DateParts parts{};
  CivilFromDays(day - kUnixEpochSerial, parts);
  parts.hour = static_cast<int>(second / 3600);
  parts.minute = static_cast<int>(second / 60 % 60);
  parts.second = static_cast<int>(second % 60);
  return parts;
}

Date MakeDate(const DateParts& Parts) {
  assert(Parts.month >= 1 && Parts.month <= 12 && Parts.day >= 1 &&
         Parts.day <= DaysInMonth(Parts.year, Parts.month));
  assert(Parts.hour >= 0 && Parts.hour <= 23 && Parts.minute >= 0 && Parts.minute <= 59 &&
         Parts.second >= 0 && Parts.second <= 59);
  int64_t day = DaysFromCivil(Parts.year, Parts.month, Parts.day) + kUnixEpochSerial;
  return ComposeSerial(day, Parts.hour * 3600.0 + Parts.minute * 60.0 + Parts.second);
}

Date CutDate(Date Value, Enum_DateType DateType) {
  int64_t day = 0;
  int64_t second = 0;
  SplitSerial(Value.Value, day, second);
  switch (DateType) {
    case D_YMDHNS:
      break;
    case D_YMDHN:
      second -= second % 60;
      break;
    case D_YMD:
      second = 0;
      break;
    case D_HNS:
      day = 0;
      break;
    case D_HN:
      day = 0;
      second -= second % 60;
      break;
    default:
      return Value;
  }
  return ComposeSerial(day, static_cast<double>(second));
}

bool InDateRange(double Value) { return Value >= kFirstSerial && Value < kEndSerial; }

bool ValidDateParts(const DateParts& parts) {
  static constexpr int kMonthDays[] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (parts.year < 100 || parts.year > 9999 || parts.month < 1 || parts.month > 12 ||
      parts.day < 1 || parts.day > kMonthDays[parts.month - 1]) {
    return false;
  }
  bool leap = (parts.year % 4 == 0 && parts.year % 100 != 0) || parts.year % 400 == 0;
  if (parts.month == 2 && parts.day == 29 && !leap) {
    return false;
  }
  return parts.hour >= 0 && parts.hour <= 23 && parts.minute >= 0 && parts.minute <= 59 &&
         parts.second >= 0 && parts.second <= 59;
}

}  // namespace varnel::internal
