// The run-time errors raised by the database access layer, numbered as ADO
// numbers them. Every db error is raised through these functions:
//   3001  arguments of the wrong type or out of range (a filter that does not parse)
//   3021  no current record (Bof or Eof)
//   3265  item not found in the collection (a field index or name)
//   3704  operation not allowed when the object is closed
//   3705  operation not allowed when the object is open
//   3706  provider cannot be found
//   -2147467259  the database's own failure, with its message and what was being done
//
// A database failure is raised as DbError, a VbError (number -2147467259, the
// database's description) that also says what kind of failure it was, so that
// a caller can tell a refused value from a lost server without reading text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "varnel/variant.h"

namespace varnel::db::internal {

inline constexpr int32_t kErrBadArguments = 3001;
inline constexpr int32_t kErrNoCurrentRecord = 3021;
inline constexpr int32_t kErrItemNotFound = 3265;
inline constexpr int32_t kErrObjectClosed = 3704;
inline constexpr int32_t kErrObjectOpen = 3705;
inline constexpr int32_t kErrProviderNotFound = 3706;
inline constexpr int32_t kErrProvider = -2147467259;

// What kind of failure the database reported; each driver decides once, in
// its one error conversion.
enum class DbFailure {
  kOther,           // anything else (a syntax error, a missing table, ...)
  kNotNull,         // a NOT NULL column got no value
  kUnique,          // a unique or primary key value is taken
  kCheck,           // a CHECK constraint refused the row
  kForeignKey,      // a foreign key has no row to refer to, or is referred to
  kBusy,            // another connection holds a lock (busy, locked, deadlock)
  kReadOnly,        // the database cannot be written (file or transaction)
  kDiskFull,        // no room left to write
  kConnectionLost,  // the server cannot be reached or the connection broke
  kCommitUnknown,   // the connection broke during COMMIT: written or not is unknown
};

// A database failure: the provider error with its kind and, when the database
// named one, the column (or the constraint's name for kCheck).
class DbError : public VbError {
 public:
  DbError(std::string description, DbFailure kind, std::string column = {})
      : VbError(kErrProvider, std::move(description)), kind_(kind), column_(std::move(column)) {}
  DbFailure kind() const { return kind_; }
  const std::string& column() const { return column_; }

 private:
  DbFailure kind_;
  std::string column_;
};

// The kind for a PostgreSQL SQLSTATE ("23502", "08006", ...).
DbFailure FailureOfSqlState(std::string_view sql_state);

// Raises Number with ADO's standard description, followed by Detail when given.
[[noreturn]] void RaiseDbError(int32_t number, std::string_view detail = {});

// Raises the provider error -2147467259 with Message as its description.
[[noreturn]] void RaiseProviderError(std::string message);

// What was being done, for a provider error: "preparing 'SELECT ...'" (long
// statements cut to their first 200 characters).
std::string DescribeSql(std::string_view verb, std::string_view sql);

}  // namespace varnel::db::internal
