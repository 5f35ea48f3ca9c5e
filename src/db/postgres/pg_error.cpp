#include "db/postgres/pg_error.h"

#include "db/db_errors.h"

namespace varnel::db::internal {
namespace {

// libpq's messages span lines with tabs ("...failed: Connection refused\n\tIs
// the server running..."); a dialog shows them as one line. A line that
// starts a new sentence is ended with a period.
std::string OneLine(std::string_view text) {
  std::string line;
  bool blank = false;
  bool line_end = false;
  for (char c : text) {
    if (c == '\n' || c == '\t' || c == '\r' || c == ' ') {
      blank = !line.empty();
      line_end = line_end || c == '\n';
      continue;
    }
    if (blank) {
      const bool ended = line.back() == '.' || line.back() == ':' || line.back() == '?';
      line += line_end && !ended && c >= 'A' && c <= 'Z' ? ". " : " ";
    }
    blank = line_end = false;
    line += c;
  }
  return line;
}

// Short passwords are not masked: one or two characters "appear" in any text.
constexpr size_t kShortestMasked = 3;

void MaskPassword(std::string& text, std::string_view password) {
  if (password.size() < kShortestMasked) {
    return;
  }
  for (size_t at = text.find(password); at != std::string::npos; at = text.find(password, at + 3)) {
    text.replace(at, password.size(), "***");
  }
}

// The server's own words for a refused statement: the message, then its
// detail and hint when it sent them.
std::string StatementMessage(const PGconn* connection, const PGresult* result) {
  const char* primary = result ? PQresultErrorField(result, PG_DIAG_MESSAGE_PRIMARY) : nullptr;
  if (primary == nullptr) {
    return OneLine(result ? PQresultErrorMessage(result) : PQerrorMessage(connection));
  }
  std::string message = primary;
  for (const int field : {PG_DIAG_MESSAGE_DETAIL, PG_DIAG_MESSAGE_HINT}) {
    if (const char* more = PQresultErrorField(result, field)) {
      message += " (" + OneLine(more) + ")";
    }
  }
  return message;
}

std::string ConnectionMessage(const PGconn* connection, const PGresult* result) {
  std::string message = connection ? OneLine(PQerrorMessage(connection)) : std::string();
  if (message.empty() && result != nullptr) {
    message = OneLine(PQresultErrorMessage(result));
  }
  return message.empty() ? "out of memory" : message;
}

// The column a refused statement concerns: the server names it for NOT NULL;
// for a unique or foreign key it is in the detail, "Key (code)=(7) already
// exists."; for a CHECK, the constraint's name is what there is.
std::string ColumnOf(const PGresult* result, DbFailure kind) {
  if (result == nullptr) {
    return {};
  }
  if (const char* column = PQresultErrorField(result, PG_DIAG_COLUMN_NAME)) {
    return column;
  }
  if (kind == DbFailure::kCheck) {
    const char* name = PQresultErrorField(result, PG_DIAG_CONSTRAINT_NAME);
    return name != nullptr ? name : "";
  }
  const char* detail = PQresultErrorField(result, PG_DIAG_MESSAGE_DETAIL);
  const std::string_view text = detail != nullptr ? detail : "";
  const size_t open = text.find("Key (");
  const size_t close = text.find(')', open);
  if (open == std::string_view::npos || close == std::string_view::npos) {
    return {};
  }
  std::string_view column = text.substr(open + 5, close - open - 5);
  column = column.substr(0, column.find(','));
  if (column.size() >= 2 && column.front() == '"' && column.back() == '"') {
    column = column.substr(1, column.size() - 2);  // a name quoted for its case
  }
  return std::string(column);
}

DbFailure KindOf(PgFailure failure, const PGresult* result, std::string_view doing) {
  if (failure != PgFailure::kStatement) {
    // A connection that breaks while committing leaves the outcome unknown:
    // the server may have committed before the connection went.
    return failure == PgFailure::kLost && doing.starts_with("committing")
               ? DbFailure::kCommitUnknown
               : DbFailure::kConnectionLost;
  }
  const char* state = result ? PQresultErrorField(result, PG_DIAG_SQLSTATE) : nullptr;
  return state != nullptr ? FailureOfSqlState(state) : DbFailure::kOther;
}

}  // namespace

DbError PgError(PgFailure kind, const PGconn* connection, const PGresult* result,
                std::string_view doing, std::string_view password, std::string_view note) {
  std::string message;
  switch (kind) {
    case PgFailure::kRefused:
      message = "Cannot connect to the PostgreSQL server at " + std::string(doing) + ": " +
                ConnectionMessage(connection, result);
      break;
    case PgFailure::kLost:
      message = "The connection to the PostgreSQL server was lost while " + std::string(doing) +
                ": " + ConnectionMessage(connection, result);
      break;
    case PgFailure::kStatement:
      message = StatementMessage(connection, result) + " while " + std::string(doing);
      break;
  }
  if (message.back() != '.' && message.back() != '?') {
    message += '.';
  }
  if (!note.empty()) {
    message += ' ';
    message += note;
  }
  MaskPassword(message, password);
  const DbFailure failure = KindOf(kind, result, doing);
  return DbError(std::move(message), failure, ColumnOf(result, failure));
}

}  // namespace varnel::db::internal
