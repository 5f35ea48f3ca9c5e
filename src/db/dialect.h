// What the SQL that the library composes must respect for one database.
// Capabilities are asked here; nothing else tests a provider's name.
#pragma once

#include <string>

namespace varnel::db::internal {

struct Dialect {
  // Date literals as ISO 8601 text 'yyyy-mm-dd hh:nn:ss' (the column holds ISO
  // text); otherwise month first, in the form the field's DateType gives.
  bool iso_dates = false;
};

// The dialect of the provider named by a connection string's Provider key;
// the month-first dialect when the provider is unknown or missing.
Dialect DialectOf(const std::string& connection_string);

}  // namespace varnel::db::internal
