#include "db/providers.h"

#include <strings.h>

#include <string>

#include "db/db_errors.h"
#include "db/postgres/pg_driver.h"
#include "db/sqlite/sqlite_driver.h"

namespace varnel::db::internal {
namespace {

// Every provider the library can open. A new database adds one row.
constexpr Provider kProviders[] = {
    {"SQLite", &OpenSqliteDriver, &SqliteDialect},
    {"PostgreSQL", &OpenPostgresDriver, &PostgresDialect},
};

}  // namespace

const Provider* FindProvider(std::string_view name) {
  for (const Provider& provider : kProviders) {
    if (name.size() == std::char_traits<char>::length(provider.name) &&
        strncasecmp(provider.name, name.data(), name.size()) == 0) {
      return &provider;
    }
  }
  return nullptr;
}

std::unique_ptr<Driver> OpenDriver(const ConnectionSettings& settings, std::string_view user,
                                   std::string_view password) {
  const std::string name = settings.GetOr("provider");
  const Provider* provider = FindProvider(name);
  if (provider == nullptr) {
    RaiseDbError(kErrProviderNotFound, name.empty() ? "(The connection string names no Provider.)"
                                                    : "(Provider '" + name + "'.)");
  }
  return provider->open(settings, user, password);
}

}  // namespace varnel::db::internal
