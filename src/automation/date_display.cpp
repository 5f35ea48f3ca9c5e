// The display of dates by DateType. Grids call it for every visible cell, so
// a Date is written straight from its calendar parts; any other value goes
// through Format with the same pattern, which reads text and numbers as dates.
#include "varnel/date_display.h"

#include "automation/calendar.h"

namespace varnel {
namespace {

// "00" to "99": two digits at a time.
constexpr char kPairs[] =
    "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
    "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
    "8081828384858687888990919293949596979899";

// Writes value (0..99) as two digits.
char* TwoDigits(char* out, int value) {
  out[0] = kPairs[2 * value];
  out[1] = kPairs[2 * value + 1];
  return out + 2;
}

bool ShowsDay(Enum_DateType type) { return type != D_HNS && type != D_HN; }
bool ShowsTime(Enum_DateType type) { return type != D_YMD; }
bool ShowsSeconds(Enum_DateType type) { return type != D_YMDHN && type != D_HN && type != D_YMD; }

}  // namespace

const char* DateDisplayPattern(Enum_DateType DateType) {
  switch (DateType) {
    case D_YMDHN:
      return "yyyy-mm-dd hh:nn";
    case D_YMD:
      return "yyyy-mm-dd";
    case D_HNS:
      return "hh:nn:ss";
    case D_HN:
      return "hh:nn";
    default:
      return "yyyy-mm-dd hh:nn:ss";
  }
}

size_t WriteDateDisplay(Date Value, Enum_DateType DateType, char* Out) {
  if (!internal::InDateRange(Value.Value)) {
    RaiseError(6);  // no calendar day to write, as Format says
  }
  const Enum_DateType type = DateType >= D_YMDHNS && DateType <= D_HN ? DateType : D_YMDHNS;
  const internal::DateParts parts = internal::SplitDate(Value);
  char* end = Out;
  if (ShowsDay(type)) {
    end = TwoDigits(TwoDigits(end, parts.year / 100), parts.year % 100);  // years 100 to 9999
    *end++ = '-';
    end = TwoDigits(end, parts.month);
    *end++ = '-';
    end = TwoDigits(end, parts.day);
    if (ShowsTime(type)) {
      *end++ = ' ';
    }
  }
  if (ShowsTime(type)) {
    end = TwoDigits(end, parts.hour);
    *end++ = ':';
    end = TwoDigits(end, parts.minute);
    if (ShowsSeconds(type)) {
      *end++ = ':';
      end = TwoDigits(end, parts.second);
    }
  }
  return static_cast<size_t>(end - Out);
}

std::string DateDisplayText(const Variant& Value, Enum_DateType DateType) {
  if (Value.VarType() != vbDate) {
    return Format(Value, DateDisplayPattern(DateType));
  }
  char text[kDateDisplayChars];
  return std::string(text, WriteDateDisplay(Value.AsDate(), DateType, text));
}

}  // namespace varnel
