// What the SQL that the library composes must respect for one database.
// Capabilities are asked here; nothing else tests a provider's name.
#pragma once

#include <string>
#include <string_view>

namespace varnel::db::internal {

struct Dialect {
  // Date literals as ISO 8601 text 'yyyy-mm-dd hh:nn:ss' (the column holds ISO
  // text); otherwise month first, in the form the field's DateType gives.
  bool iso_dates = false;
  // Dates are kept as ISO 8601 text of any shape ('2025-01-05', '2025-01-05
  // 10:30:00', '2025-01-05T10:30'): a comparison reads the column through
  // ComparableDateColumn first, so that every shape compares alike.
  bool dates_as_text = false;
};

// Column (already quoted) in the one shape of an ISO date literal, on a
// database with dates_as_text: "datetime(col)" ('yyyy-mm-dd hh:nn:ss'), or
// with Time_of_day "time(col)" ('hh:nn:ss').
std::string ComparableDateColumn(std::string_view column, bool time_of_day);

// Turns SQL written the library's way into one database's own SQL: names in
// [brackets] with a "]" inside doubled (db/sql_quote.h), LIKE matching without
// regard to case, ISO 8601 date literals in quotes. Text in quotes is never
// changed. A driver whose database reads the library's SQL as it is has no
// translator.
class SqlTranslator {
 public:
  virtual ~SqlTranslator() = default;
  virtual std::string ToDatabaseSql(std::string_view sql) = 0;
};

// The dialect of the provider named by a connection string's Provider key;
// the month-first dialect when the provider is unknown or missing.
Dialect DialectOf(const std::string& connection_string);

}  // namespace varnel::db::internal
