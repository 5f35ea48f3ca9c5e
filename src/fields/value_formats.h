// The value formats of the field kinds, in one place: how a number, a
// currency amount and a date are read from what a user typed or a client
// passed, and how they are written back, for display and for SQL. FormatValue
// and the query translators both use these, so a value is accepted and
// written the same way wherever it is typed.
//
//   std::optional<double> rate = ReadPercent(Variant("12.5%"));   // 0.125
//   std::string sql = WriteNumber(*rate);                          // "0.125"
//   std::optional<Date> day = ReadDate(Variant("5/6/2003 10:30"));
//   DateLiteral(CutToDateType(*day, D_YMD), D_YMD, DateDialect::kMonthFirst)  // "'05/06/2003'"
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "varnel/enums.h"
#include "varnel/variant.h"

namespace varnel {
class ClsFields;
}

namespace varnel::internal {

// ---- numbers ----

// A value that passes the platform's IsNumeric, as a Double; nullopt when it
// does not, or when it is not finite.
std::optional<double> ReadNumber(const Variant& value);
// A fraction: text ending in "%" is divided by 100 ("50%" is 0.5); anything
// else is read as a number.
std::optional<double> ReadPercent(const Variant& value);
// The standard text form of a number ("1.5", "-2E-05"): only digits, a sign,
// a point and an exponent.
std::string WriteNumber(double value);
// A number in the kind that holds it exactly: a LongLong or Decimal value as it
// is; text with more significant digits than a Double keeps as a LongLong
// (whole) or a Decimal; anything else as ReadNumber reads it, in a Double.
std::optional<Variant> ReadExactNumber(const Variant& value);
// A fraction with every digit: as ReadPercent, but a percent or number with
// more significant digits than a Double keeps reads as a Decimal or LongLong
// ("12.34567890123456789%" is 0.1234567890123456789).
std::optional<Variant> ReadExactPercent(const Variant& value);
// The standard text form of what ReadExactNumber gives: every digit of a
// LongLong or Decimal ("1234567890123456"), WriteNumber for a Double.
std::string WriteExactNumber(const Variant& value);

// ---- currency ----

// An amount with an optional sign, an optional currency sign ($ € £ ¥ ￥, or
// symbol when given) before or after it, and thousands separators:
// "$1,234.50", "-¥12", "12.5 USD" with symbol "USD". nullopt when it is not
// numeric or outside the Currency range.
std::optional<Currency> ReadCurrency(const Variant& value, std::string_view symbol = {});
// The plain number of an amount: "1234.5", "-0.0001".
std::string WriteCurrency(Currency value);

// ---- dates ----

enum class DateDialect {
  kMonthFirst,  // 'mm/dd/yyyy ...' in the form of the field's DateType
  kIso,         // 'yyyy-mm-dd hh:nn:ss': the database reads ISO text
  kIsoText,     // as kIso, times of day 'hh:nn:ss': the column holds ISO text of any
                // shape, compared through db::internal::ComparableDateColumn
};

// The month-first pattern of a DateType: "mm/dd/yyyy hh:nn:ss", "mm/dd/yyyy
// hh:nn:00", "mm/dd/yyyy", "hh:nn:ss", "hh:nn:00".
std::string_view DatePattern(Enum_DateType type);
// A Date, a date text (month first or ISO, with or without a time) or a date
// serial; nullopt when it is none of these or outside years 100..9999.
std::optional<Date> ReadDate(const Variant& value);
// The date cut to what its DateType keeps (the day for D_YMD, the time of day
// for D_HNS, ...), as a load cuts it.
Date CutToDateType(Date value, Enum_DateType type);
// A value read from the field's column as the load keeps it: a date field's
// date cut to its DateType, anything else as it is.
Variant AsLoaded(const ClsFields& field, const Variant& value);
// The date as a user reads it: Format with DatePattern(type).
std::string WriteDate(Date value, Enum_DateType type);
// The date as a SQL literal in single quotes, in the dialect's form.
std::string DateLiteral(Date value, Enum_DateType type, DateDialect dialect);
// A key that orders dates in time (serials before 1899-12-30 do not order
// by value: their fraction counts forwards from the day's start).
int64_t DateOrder(Date value);
// The date `days` days later (earlier when negative); nullopt outside years
// 100..9999.
std::optional<Date> AddDays(Date value, int64_t days);
// The date one minute later; nullopt past the last representable minute.
std::optional<Date> AddMinute(Date value);

// Today's date (no time) by the local clock: TODAY() of a field without a recordset.
Date LocalToday();

// The dialect of the database behind field's recordset: its open connection,
// else its connection string; month first when the field has no recordset.
DateDialect DateDialectOf(const ClsFields& field);

}  // namespace varnel::internal
