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
};

// Turns SQL written the library's way into one database's own SQL: names in
// [brackets], LIKE matching without regard to case, ISO 8601 date literals in
// quotes. Text in quotes is never changed. A driver whose database reads the
// library's SQL as it is has no translator.
class SqlTranslator {
 public:
  virtual ~SqlTranslator() = default;
  virtual std::string ToDatabaseSql(std::string_view sql) = 0;
};

// The dialect of the provider named by a connection string's Provider key;
// the month-first dialect when the provider is unknown or missing.
Dialect DialectOf(const std::string& connection_string);

}  // namespace varnel::db::internal
