// Date patterns of Format. Tokens (any case): yyyy yy y(day of year), mmmm mmm
// mm m, dddd ddd dd d, hh h, nn n, ss s, AM/PM am/pm A/P a/p. m or mm right
// after an hour token means minutes. Text in double quotes and a character
// after a backslash are written as they are; every other character is literal.
#include <array>
#include <cctype>
#include <cstdio>

#include "automation/calendar.h"
#include "automation/format_rules.h"

namespace varnel::internal {

namespace {

constexpr std::array<const char*, 12> kMonthNames = {
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};
constexpr std::array<const char*, 7> kDayNames = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                  "Thursday", "Friday", "Saturday"};

std::string Padded(int value, int width) {
  char text[16];
  std::snprintf(text, sizeof text, "%0*d", width, value);
  return text;
}

char Lower(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

bool StartsWithNoCase(std::string_view text, size_t pos, std::string_view word) {
  if (text.size() - pos < word.size()) {
    return false;
  }
  for (size_t i = 0; i < word.size(); ++i) {
    if (Lower(text[pos + i]) != word[i]) {
      return false;
    }
  }
  return true;
}

size_t RunLength(std::string_view pattern, size_t pos) {
  size_t end = pos;
  while (end < pattern.size() && Lower(pattern[end]) == Lower(pattern[pos])) {
    ++end;
  }
  return end - pos;
}

struct DateView {
  DateParts parts;
  int64_t day_serial;
  bool twelve_hour;
};

int DayOfYear(const DateView& date) {
  Date first = MakeDate({date.parts.year, 1, 1, 0, 0, 0});
  return static_cast<int>(date.day_serial - static_cast<int64_t>(first.Value)) + 1;
}

// Writes the token at pattern[pos] and returns its length; 0 when none.
size_t WriteToken(std::string_view pattern, size_t pos, const DateView& date, bool& after_hour,
                  std::string& out) {
  const DateParts& p = date.parts;
  size_t run = RunLength(pattern, pos);
  switch (Lower(pattern[pos])) {
    case 'y':
      if (run >= 4) {
        out += Padded(p.year, 4);
        return 4;
      }
      if (run >= 2) {
        out += Padded(p.year % 100, 2);
        return 2;
      }
      out += std::to_string(DayOfYear(date));
      return 1;
    case 'm':
      if (after_hour && run <= 2) {
        out += run == 2 ? Padded(p.minute, 2) : std::to_string(p.minute);
        return run;
      }
      if (run >= 3) {
        std::string name = kMonthNames[p.month - 1];
        out += run >= 4 ? name : name.substr(0, 3);
        return std::min<size_t>(run, 4);
      }
      out += run == 2 ? Padded(p.month, 2) : std::to_string(p.month);
      return run;
    case 'd':
      if (run >= 3) {
        std::string name = kDayNames[((date.day_serial % 7) + 13) % 7];
        out += run >= 4 ? name : name.substr(0, 3);
        return std::min<size_t>(run, 4);
      }
      out += run == 2 ? Padded(p.day, 2) : std::to_string(p.day);
      return run;
    case 'h': {
      int hour = date.twelve_hour ? (p.hour % 12 == 0 ? 12 : p.hour % 12) : p.hour;
      out += run >= 2 ? Padded(hour, 2) : std::to_string(hour);
      after_hour = true;
      return std::min<size_t>(run, 2);
    }
    case 'n':
      out += run >= 2 ? Padded(p.minute, 2) : std::to_string(p.minute);
      return std::min<size_t>(run, 2);
    case 's':
      out += run >= 2 ? Padded(p.second, 2) : std::to_string(p.second);
      return std::min<size_t>(run, 2);
  }
  return 0;
}

// AM/PM, am/pm, A/P, a/p: the marker in the case it is written in.
size_t WriteMarker(std::string_view pattern, size_t pos, int hour, std::string& out) {
  bool afternoon = hour >= 12;
  if (StartsWithNoCase(pattern, pos, "am/pm")) {
    bool upper = pattern[pos] == 'A';
    out += afternoon ? (upper ? "PM" : "pm") : (upper ? "AM" : "am");
    return 5;
  }
  if (StartsWithNoCase(pattern, pos, "a/p")) {
    bool upper = pattern[pos] == 'A';
    out += afternoon ? (upper ? "P" : "p") : (upper ? "A" : "a");
    return 3;
  }
  return 0;
}

bool HasMarker(std::string_view pattern) {
  for (size_t i = 0; i < pattern.size(); ++i) {
    if (StartsWithNoCase(pattern, i, "am/pm") || StartsWithNoCase(pattern, i, "a/p")) {
      return true;
    }
  }
  return false;
}

}  // namespace

std::string FormatDatePattern(Date value, std::string_view pattern) {
  if (!InDateRange(value.Value)) {
    RaiseError(6);  // a Date made from any Double: no calendar day to write
  }
  DateParts parts = SplitDate(value);
  DateView date{parts,
                static_cast<int64_t>(MakeDate({parts.year, parts.month, parts.day, 0, 0, 0}).Value),
                HasMarker(pattern)};
  std::string out;
  bool after_hour = false;
  for (size_t pos = 0; pos < pattern.size();) {
    size_t used = 0;
    if (pattern[pos] == '"' || pattern[pos] == '\\') {
      used = CopyLiteral(pattern, pos, out);
    } else if ((used = WriteMarker(pattern, pos, parts.hour, out)) == 0) {
      bool was_after_hour = after_hour;
      used = WriteToken(pattern, pos, date, after_hour, out);
      if (used > 0 && Lower(pattern[pos]) != 'h' && was_after_hour) {
        after_hour = false;
      }
    }
    if (used == 0) {
      out.push_back(pattern[pos]);
      used = 1;
    }
    pos += used;
  }
  return out;
}

}  // namespace varnel::internal
