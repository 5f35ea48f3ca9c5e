// The PostgreSQL provider's one conversion of libpq's failures into VbError.
// Every message names what was being done, and never holds the password:
// libpq does not echo it, and any occurrence is masked all the same.
#pragma once

#include <libpq-fe.h>

#include <string>
#include <string_view>

#include "db/db_errors.h"

namespace varnel::db::internal {

// What a failure was, which decides how its message reads.
enum class PgFailure {
  kRefused,    // the server could not be reached or refused the login
  kLost,       // the connection broke during a call
  kStatement,  // the server refused a statement; the connection is fine
};

// The provider error -2147467259 for a failure of Connection (and Result,
// when the server sent one). Doing says what was being done ("executing
// 'UPDATE ...'"), or for kRefused which server ("127.0.0.1:5432, database d,
// user u"); Note, when given, is added after the message. Password is masked
// wherever it would appear. The kind comes from the SQLSTATE; a lost
// connection while "committing ..." is kCommitUnknown.
DbError PgError(PgFailure kind, const PGconn* connection, const PGresult* result,
                std::string_view doing, std::string_view password, std::string_view note = {});

}  // namespace varnel::db::internal
