#include "db/dialect.h"

#include "db/connection_string.h"
#include "db/providers.h"
#include "varnel/variant.h"

namespace varnel::db::internal {

std::string ComparableDateColumn(std::string_view column, bool time_of_day) {
  return std::string(time_of_day ? "time(" : "datetime(") + std::string(column) + ")";
}

Dialect DialectOf(const std::string& connection_string) {
  try {
    const ConnectionSettings settings = ConnectionSettings::Parse(connection_string);
    const Provider* provider = FindProvider(settings.GetOr("provider"));
    return provider != nullptr ? provider->dialect() : Dialect{};
  } catch (const VbError&) {
    return Dialect{};  // a malformed string names no provider we know
  }
}

}  // namespace varnel::db::internal
