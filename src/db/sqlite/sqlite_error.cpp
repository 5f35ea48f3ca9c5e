#include "db/sqlite/sqlite_error.h"

#include <string>

#include "db/db_errors.h"

namespace varnel::db::internal {

VbError SqliteError(sqlite3* db, int code, std::string_view doing) {
  std::string message = db != nullptr ? sqlite3_errmsg(db) : sqlite3_errstr(code);
  if ((code & 0xff) == SQLITE_BUSY || (code & 0xff) == SQLITE_LOCKED) {
    message += " (another connection holds a lock on it; gave up after waiting " +
               std::to_string(kSqliteBusyTimeoutMs / 1000) + " seconds)";
  }
  message += " while ";
  message += doing;
  return VbError(kErrProvider, std::move(message));
}

void RaiseSqliteError(sqlite3* db, int code, std::string_view doing) {
  throw SqliteError(db, code, doing);
}

}  // namespace varnel::db::internal
