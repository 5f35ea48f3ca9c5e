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

}  // namespace

VbError PgError(PgFailure kind, const PGconn* connection, const PGresult* result,
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
  return VbError(kErrProvider, std::move(message));
}

}  // namespace varnel::db::internal
