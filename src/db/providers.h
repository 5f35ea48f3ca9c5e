// The one place that knows the database providers by name: a connection
// string's Provider key picks the driver and the dialect here, and nowhere else.
#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "db/connection_string.h"
#include "db/dialect.h"
#include "db/driver.h"

namespace varnel::db::internal {

struct Provider {
  const char* name;  // the Provider key's value, compared without regard to case
  std::unique_ptr<Driver> (*open)(const ConnectionSettings& settings, std::string_view user,
                                  std::string_view password);
  Dialect (*dialect)();
};

// The provider called Name (any case); nullptr when there is none.
const Provider* FindProvider(std::string_view name);

// What wraps every driver opened from now on (a test's fault injection); an
// empty function opens drivers as they are. Returns the previous wrapper.
using DriverWrapper = std::function<std::unique_ptr<Driver>(std::unique_ptr<Driver>)>;
DriverWrapper SetDriverWrapper(DriverWrapper wrapper);

// Opens the driver named by the Provider key of Settings, with the connection's
// user and password. Raises 3706 for a missing or unknown provider, and the
// driver's own error when the database cannot be opened.
std::unique_ptr<Driver> OpenDriver(const ConnectionSettings& settings, std::string_view user,
                                   std::string_view password);

}  // namespace varnel::db::internal
