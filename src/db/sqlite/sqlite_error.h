// The SQLite provider's one conversion of SQLite's errors into VbError, and
// the shared connection handle that statements keep alive.
#pragma once

#include <sqlite3.h>

#include <memory>
#include <string_view>

#include "db/db_errors.h"

namespace varnel::db::internal {

// The open database; closed when the connection and its last statement let go.
using SqliteHandle = std::shared_ptr<sqlite3>;

// How long a statement waits for another connection's lock before failing.
inline constexpr int kSqliteBusyTimeoutMs = 2000;

// The provider error for Code on Db (nullptr before a handle exists): SQLite's
// own message, then what was being done ("opening database '/x/a.db'"), with
// the kind of failure and the column SQLite named.
DbError SqliteError(sqlite3* db, int code, std::string_view doing);

[[noreturn]] void RaiseSqliteError(sqlite3* db, int code, std::string_view doing);

}  // namespace varnel::db::internal
