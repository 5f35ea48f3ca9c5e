#include "fields/value_formats.h"

#include <array>
#include <cmath>
#include <ctime>

#include "automation/calendar.h"
#include "automation/decimal_math.h"
#include "automation/numeric_text.h"
#include "db/dialect.h"
#include "varnel/fields.h"
#include "varnel/recordset.h"

namespace varnel::internal {
namespace {

constexpr int64_t kSecondsPerDay = 86400;

// Currency signs a typed amount may carry, besides the row's own symbol.
constexpr std::array<std::string_view, 5> kCurrencySigns = {
    "$", "\xE2\x82\xAC" /* € */, "\xC2\xA3" /* £ */, "\xC2\xA5" /* ¥ */, "\xEF\xBF\xA5" /* ￥ */};

std::string_view TrimAround(std::string_view text) {
  const size_t first = text.find_first_not_of(" \t\r\n");
  if (first == std::string_view::npos) {
    return text.substr(text.size());  // empty, still pointing into text
  }
  return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

// Removes one currency sign (a known one, or symbol) from either end.
std::string_view WithoutCurrencySign(std::string_view text, std::string_view symbol) {
  auto strip = [&](std::string_view sign) {
    if (sign.empty()) {
      return false;
    }
    if (text.starts_with(sign)) {
      text = TrimAround(text.substr(sign.size()));
      return true;
    }
    if (text.ends_with(sign)) {
      text = TrimAround(text.substr(0, text.size() - sign.size()));
      return true;
    }
    return false;
  };
  if (!strip(symbol)) {
    for (std::string_view sign : kCurrencySigns) {
      if (strip(sign)) {
        break;
      }
    }
  }
  return text;
}

std::optional<Currency> ReadCurrencyText(std::string_view text, std::string_view symbol) {
  text = TrimAround(text);
  std::string signed_text;
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
    signed_text.push_back(text.front());
    text = TrimAround(text.substr(1));
  }
  signed_text.append(WithoutCurrencySign(text, TrimAround(symbol)));
  Currency amount;
  if (ParseCurrency(signed_text, amount) != NumberStatus::Ok) {
    return std::nullopt;
  }
  return amount;
}

// A day number (0 = 1899-12-30) and a second of that day, as a serial within
// the platform's date range.
std::optional<Date> SerialOf(int64_t day, int64_t second) {
  if (second >= kSecondsPerDay) {
    day += second / kSecondsPerDay;
    second %= kSecondsPerDay;
  }
  if (day < -700000 || day > 3000000) {
    return std::nullopt;  // far outside the date range; keeps the sum exact
  }
  const Date serial = ComposeSerial(day, static_cast<double>(second));
  return InDateRange(serial.Value) ? std::optional<Date>(serial) : std::nullopt;
}

void SplitDayAndSecond(Date value, int64_t& day, int64_t& second) {
  const DateParts parts = SplitDate(value);
  day = static_cast<int64_t>(MakeDate({parts.year, parts.month, parts.day, 0, 0, 0}).Value);
  second = parts.hour * 3600 + parts.minute * 60 + parts.second;
}

}  // namespace

// ---- numbers ----

std::optional<double> ReadNumber(const Variant& value) {
  if (value.IsString()) {
    return ParseNumber(value.StringView());
  }
  if (!value.IsNumber() && value.VarType() != vbBoolean) {
    return std::nullopt;
  }
  const double number = value.ToDouble();
  return std::isfinite(number) ? std::optional<double>(number) : std::nullopt;
}

std::optional<double> ReadPercent(const Variant& value) {
  if (value.IsString()) {
    const std::string_view text = TrimAround(value.StringView());
    if (text.ends_with('%')) {
      const std::optional<double> hundredths = ParseNumber(text.substr(0, text.size() - 1));
      return hundredths ? std::optional<double>(*hundredths / 100) : std::nullopt;
    }
  }
  return ReadNumber(value);
}

std::string WriteNumber(double value) { return NumberText(value); }

std::optional<Variant> ReadExactNumber(const Variant& value) {
  if (value.VarType() == vbLongLong || value.VarType() == vbDecimal) {
    return value;
  }
  if (value.IsString()) {
    if (std::optional<Variant> exact = ExactNumberOfText(value.StringView())) {
      return exact;
    }
  }
  const std::optional<double> number = ReadNumber(value);
  return number ? std::optional<Variant>(Variant(*number)) : std::nullopt;
}

std::optional<Variant> ReadExactPercent(const Variant& value) {
  if (value.IsString()) {
    const std::string_view text = TrimAround(value.StringView());
    if (text.ends_with('%')) {
      if (std::optional<Variant> exact = ExactNumberOfText(text.substr(0, text.size() - 1))) {
        return Variant(DecimalDivide(exact->ToDecimal(), DecimalFromInt(100)));
      }
      const std::optional<double> fraction = ReadPercent(value);
      return fraction ? std::optional<Variant>(Variant(*fraction)) : std::nullopt;
    }
  }
  return ReadExactNumber(value);
}

std::string WriteExactNumber(const Variant& value) {
  return value.VarType() == vbDouble ? NumberText(value.AsDouble()) : CStr(value);
}

// ---- currency ----

std::optional<Currency> ReadCurrency(const Variant& value, std::string_view symbol) {
  if (value.IsString()) {
    return ReadCurrencyText(value.StringView(), symbol);
  }
  if (value.VarType() == vbCurrency) {
    return value.AsCurrency();
  }
  if (value.VarType() == vbLongLong || value.VarType() == vbDecimal) {
    try {
      return value.ToCurrency();  // exactly, not through a Double
    } catch (const VbError&) {
      return std::nullopt;  // beyond the Currency range
    }
  }
  const std::optional<double> number = ReadNumber(value);
  if (!number) {
    return std::nullopt;
  }
  Currency amount;
  if (ParseCurrency(NumberText(*number), amount) != NumberStatus::Ok) {
    return std::nullopt;
  }
  return amount;
}

std::string WriteCurrency(Currency value) { return CurrencyText(value); }

// ---- dates ----

std::string_view DatePattern(Enum_DateType type) {
  switch (type) {
    case D_YMDHN:
      return "mm/dd/yyyy hh:nn:00";
    case D_YMD:
      return "mm/dd/yyyy";
    case D_HNS:
      return "hh:nn:ss";
    case D_HN:
      return "hh:nn:00";
    default:
      return "mm/dd/yyyy hh:nn:ss";
  }
}

std::optional<Date> ReadDate(const Variant& value) {
  if (value.IsString()) {
    return ParseDateText(value.StringView());
  }
  double serial = 0;
  if (value.VarType() == vbDate) {
    serial = value.AsDate().Value;
  } else if (value.IsNumber()) {
    serial = value.ToDouble();
  } else {
    return std::nullopt;
  }
  return InDateRange(serial) ? std::optional<Date>(Date{serial}) : std::nullopt;
}

Date CutToDateType(Date value, Enum_DateType type) { return CutDate(value, type); }

Variant AsLoaded(const ClsFields& field, const Variant& value) {
  if (field.FieldType != F_Date || value.IsBlank()) {
    return value;
  }
  return Variant(CutDate(value.ToDate(), field.DateType));
}

std::string WriteDate(Date value, Enum_DateType type) {
  return Format(Variant(value), std::string(DatePattern(type)));
}

std::string DateLiteral(Date value, Enum_DateType type, DateDialect dialect) {
  if (dialect == DateDialect::kIsoText && (type == D_HNS || type == D_HN)) {
    return "'" + Format(Variant(value), "hh:nn:ss") + "'";
  }
  return "'" + (dialect == DateDialect::kMonthFirst ? WriteDate(value, type) : IsoDate(value)) +
         "'";
}

int64_t DateOrder(Date value) {
  int64_t day = 0, second = 0;
  SplitDayAndSecond(value, day, second);
  return day * kSecondsPerDay + second;
}

std::optional<Date> AddDays(Date value, int64_t days) {
  int64_t day = 0, second = 0;
  SplitDayAndSecond(value, day, second);
  return SerialOf(day + days, second);
}

std::optional<Date> AddMinute(Date value) {
  int64_t day = 0, second = 0;
  SplitDayAndSecond(value, day, second);
  return SerialOf(day, second + 60);
}

Date LocalToday() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return MakeDate({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, 0, 0, 0});
}

DateDialect DateDialectOf(const ClsFields& field) {
  const ClsRecordset* recordset = field.Parent;
  if (recordset == nullptr) {
    return DateDialect::kMonthFirst;
  }
  const bool open = recordset->SFConnection && recordset->SFConnection->State() == 1;
  const std::string& connection =
      open ? recordset->SFConnection->ConnectionString() : recordset->ConnectString;
  const db::internal::Dialect dialect = db::internal::DialectOf(connection);
  if (dialect.dates_as_text) {
    return DateDialect::kIsoText;
  }
  return dialect.iso_dates ? DateDialect::kIso : DateDialect::kMonthFirst;
}

}  // namespace varnel::internal
