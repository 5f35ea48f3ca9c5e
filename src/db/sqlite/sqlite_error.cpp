#include "db/sqlite/sqlite_error.h"

#include <string>

#include "db/db_errors.h"

namespace varnel::db::internal {
namespace {

DbFailure ConstraintKind(int extended) {
  switch (extended) {
    case SQLITE_CONSTRAINT_NOTNULL:
      return DbFailure::kNotNull;
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_PRIMARYKEY:
      return DbFailure::kUnique;
    case SQLITE_CONSTRAINT_CHECK:
      return DbFailure::kCheck;
    case SQLITE_CONSTRAINT_FOREIGNKEY:
      return DbFailure::kForeignKey;
    default:
      return DbFailure::kOther;
  }
}

DbFailure KindOf(int code) {
  switch (code & 0xff) {
    case SQLITE_CONSTRAINT:
      return ConstraintKind(code);
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return DbFailure::kBusy;
    case SQLITE_READONLY:
      return DbFailure::kReadOnly;
    case SQLITE_FULL:
      return DbFailure::kDiskFull;
    case SQLITE_CANTOPEN:
      return DbFailure::kConnectionLost;
    default:
      return DbFailure::kOther;
  }
}

// SQLite names the column after "failed: " as table.column ("NOT NULL
// constraint failed: Items.Name"; several for a UNIQUE index: the first), and
// a CHECK constraint by its name or expression.
std::string ColumnOf(std::string_view message, DbFailure kind) {
  const size_t at = message.find("failed: ");
  if (at == std::string_view::npos) {
    return {};
  }
  std::string_view rest = message.substr(at + 8);
  if (kind == DbFailure::kCheck) {
    return std::string(rest);
  }
  rest = rest.substr(0, rest.find(','));
  const size_t dot = rest.rfind('.');
  return std::string(dot == std::string_view::npos ? rest : rest.substr(dot + 1));
}

}  // namespace

DbError SqliteError(sqlite3* db, int code, std::string_view doing) {
  // The extended code tells the kind of constraint; a handle has it when the
  // failure was its last call.
  const int extended = db != nullptr && (sqlite3_extended_errcode(db) & 0xff) == (code & 0xff)
                           ? sqlite3_extended_errcode(db)
                           : code;
  std::string message = db != nullptr ? sqlite3_errmsg(db) : sqlite3_errstr(code);
  const DbFailure kind = KindOf(extended);
  std::string column = ColumnOf(message, kind);
  if (kind == DbFailure::kBusy) {
    message += " (another connection holds a lock on it; gave up after waiting " +
               std::to_string(kSqliteBusyTimeoutMs / 1000) + " seconds)";
  }
  message += " while ";
  message += doing;
  return DbError(std::move(message), kind, std::move(column));
}

void RaiseSqliteError(sqlite3* db, int code, std::string_view doing) {
  throw SqliteError(db, code, doing);
}

}  // namespace varnel::db::internal
