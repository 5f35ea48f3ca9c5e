// Reading dates from text: the general reader behind CDate and the fast strict
// reader the loader uses for database date columns.
#include <ctime>

#include "automation/calendar.h"

namespace varnel::internal {

namespace {

bool IsDigitChar(char c) { return c >= '0' && c <= '9'; }

// A read position in a text; every Read leaves the position after what it read.
struct TextCursor {
  std::string_view text;
  size_t pos = 0;

  bool AtEnd() const { return pos >= text.size(); }
  char Peek() const { return AtEnd() ? '\0' : text[pos]; }
  bool Accept(char c) {
    if (Peek() != c) {
      return false;
    }
    ++pos;
    return true;
  }
  bool SkipBlanks() {
    size_t start = pos;
    while (Peek() == ' ' || Peek() == '\t') {
      ++pos;
    }
    return pos > start;
  }
  // Reads up to max_digits digits; returns how many were read.
  int ReadNumber(int max_digits, int& value) {
    int count = 0;
    value = 0;
    while (count < max_digits && IsDigitChar(Peek())) {
      value = value * 10 + (text[pos++] - '0');
      ++count;
    }
    return count;
  }
  // Reads ".digits" as a fraction of one; 0 when there is no point.
  bool ReadFraction(double& fraction) {
    fraction = 0;
    if (!Accept('.')) {
      return true;
    }
    double scale = 0.1;
    size_t start = pos;
    for (; IsDigitChar(Peek()); ++pos, scale /= 10) {
      fraction += (text[pos] - '0') * scale;
    }
    return pos > start;
  }
};

int TwoDigitYear(int year) { return year < 30 ? 2000 + year : 1900 + year; }

int CurrentYear() {
  std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return local.tm_year + 1900;
}

// "m/d/yyyy", "m/d/yy", "m/d", "yyyy/m/d" and the same with '-'.
bool ReadDatePart(TextCursor& cursor, DateParts& parts) {
  int first = 0, second = 0, third = 0;
  int first_digits = cursor.ReadNumber(4, first);
  char separator = cursor.Peek();
  if (first_digits == 0 || (separator != '/' && separator != '-')) {
    return false;
  }
  ++cursor.pos;
  if (cursor.ReadNumber(2, second) == 0) {
    return false;
  }
  int third_digits = cursor.Accept(separator) ? cursor.ReadNumber(4, third) : -1;
  if (third_digits == 0) {
    return false;
  }
  if (first_digits >= 3) {
    if (third_digits < 0) {
      return false;
    }
    parts.year = first, parts.month = second, parts.day = third;
  } else {
    parts.month = first, parts.day = second;
    parts.year = third_digits < 0 ? CurrentYear() : third_digits <= 2 ? TwoDigitYear(third) : third;
  }
  return ValidDateParts(parts);
}

// "h:nn", "h:nn:ss", "h:nn:ss.fff", each with an optional AM/PM.
bool ReadTimePart(TextCursor& cursor, double& seconds) {
  int hour = 0, minute = 0, second = 0;
  double fraction = 0;
  if (cursor.ReadNumber(2, hour) == 0 || !cursor.Accept(':') || cursor.ReadNumber(2, minute) == 0) {
    return false;
  }
  if (cursor.Accept(':') && (cursor.ReadNumber(2, second) == 0 || !cursor.ReadFraction(fraction))) {
    return false;
  }
  size_t before_marker = cursor.pos;
  cursor.SkipBlanks();
  std::string_view rest = cursor.text.substr(cursor.pos);
  if (rest.size() >= 2 && (rest[1] == 'M' || rest[1] == 'm') &&
      (rest[0] == 'A' || rest[0] == 'a' || rest[0] == 'P' || rest[0] == 'p')) {
    if (hour > 12) {
      return false;
    }
    bool afternoon = rest[0] == 'P' || rest[0] == 'p';
    hour = hour % 12 + (afternoon ? 12 : 0);
    cursor.pos += 2;
  } else {
    cursor.pos = before_marker;
  }
  if (hour > 23 || minute > 59 || second > 59) {
    return false;
  }
  seconds = hour * 3600.0 + minute * 60.0 + second + fraction;
  return true;
}

std::string_view TrimBlanks(std::string_view text) {
  size_t first = text.find_first_not_of(" \t\r\n");
  if (first == std::string_view::npos) {
    return {};
  }
  return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

int64_t DaySerial(const DateParts& parts) {
  return static_cast<int64_t>(MakeDate({parts.year, parts.month, parts.day, 0, 0, 0}).Value);
}

// Exactly `count` digits.
bool ReadFixed(const char*& p, const char* end, int count, int& value) {
  if (end - p < count) {
    return false;
  }
  value = 0;
  for (int i = 0; i < count; ++i) {
    if (!IsDigitChar(p[i])) {
      return false;
    }
    value = value * 10 + (p[i] - '0');
  }
  p += count;
  return true;
}

bool Expect(const char*& p, const char* end, char c) {
  if (p == end || *p != c) {
    return false;
  }
  ++p;
  return true;
}

}  // namespace

std::optional<Date> ParseDateText(std::string_view Text) {
  TextCursor cursor{TrimBlanks(Text)};
  DateParts parts{1899, 12, 30, 0, 0, 0};
  int64_t day = 0;
  double seconds = 0;
  if (ReadDatePart(cursor, parts)) {
    day = DaySerial(parts);
    if (!cursor.AtEnd()) {
      if (!cursor.Accept('T') && !cursor.SkipBlanks()) {
        return std::nullopt;
      }
      if (!ReadTimePart(cursor, seconds)) {
        return std::nullopt;
      }
    }
  } else {
    cursor.pos = 0;
    if (!ReadTimePart(cursor, seconds)) {
      return std::nullopt;
    }
  }
  if (!cursor.AtEnd()) {
    return std::nullopt;
  }
  return ComposeSerial(day, seconds);
}

bool ParseIsoDate(const char* Text, size_t Size, Date& Out) {
  const char* p = Text;
  const char* end = Text + Size;
  int64_t day = 0;
  if (Size >= 10 && Text[4] == '-') {
    DateParts parts{0, 0, 0, 0, 0, 0};
    if (!ReadFixed(p, end, 4, parts.year) || !Expect(p, end, '-') ||
        !ReadFixed(p, end, 2, parts.month) || !Expect(p, end, '-') ||
        !ReadFixed(p, end, 2, parts.day) || !ValidDateParts(parts)) {
      return false;
    }
    day = DaySerial(parts);
    if (p == end) {
      Out = ComposeSerial(day, 0);
      return true;
    }
    if (*p != ' ' && *p != 'T') {
      return false;
    }
    ++p;
  }
  int hour = 0, minute = 0, second = 0;
  if (!ReadFixed(p, end, 2, hour) || !Expect(p, end, ':') || !ReadFixed(p, end, 2, minute)) {
    return false;
  }
  if (p != end && (!Expect(p, end, ':') || !ReadFixed(p, end, 2, second))) {
    return false;
  }
  TextCursor rest{std::string_view(p, static_cast<size_t>(end - p))};
  double fraction = 0;
  if (!rest.ReadFraction(fraction) || !rest.AtEnd() || hour > 23 || minute > 59 || second > 59) {
    return false;
  }
  Out = ComposeSerial(day, hour * 3600.0 + minute * 60.0 + second + fraction);
  return true;
}

}  // namespace varnel::internal
