#include "db/providers.h"

#include <strings.h>

#include <string>
#include <utility>

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

DriverWrapper& Wrapper() {
  static DriverWrapper wrapper;
  return wrapper;
}

}  // namespace

DriverWrapper SetDriverWrapper(DriverWrapper wrapper) {
  return std::exchange(Wrapper(), std::move(wrapper));
}

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
  std::unique_ptr<Driver> driver = provider->open(settings, user, password);
  return Wrapper() ? Wrapper()(std::move(driver)) : std::move(driver);
}

}  // namespace varnel::db::internal
