#include "orders_postgres.h"

#include <libpq-fe.h>
#include <sqlite3.h>

#include <cctype>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string_view>

#include "orders_table.h"

namespace varnel::bench {
namespace {

constexpr const char* kTable = "bench_orders";

struct PgFinish {
  void operator()(PGconn* connection) const { PQfinish(connection); }
};
using Connection = std::unique_ptr<PGconn, PgFinish>;

std::string Lower(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  }
  return lower;
}

// A libpq keyword value in single quotes, backslashes and quotes escaped.
std::string Quoted(std::string_view value) {
  std::string quoted = "'";
  for (char c : value) {
    if (c == '\\' || c == '\'') {
      quoted += '\\';
    }
    quoted += c;
  }
  return quoted + "'";
}

// Runs sql; throws with the server's message unless it gives `expected`.
std::string Run(PGconn* connection, const std::string& sql,
                ExecStatusType expected = PGRES_COMMAND_OK) {
  PGresult* result = PQexec(connection, sql.c_str());
  const bool ok = PQresultStatus(result) == expected;
  const std::string value = ok && expected == PGRES_TUPLES_OK && PQntuples(result) > 0
                                ? PQgetvalue(result, 0, 0)
                                : std::string();
  const std::string message = PQresultErrorMessage(result);
  PQclear(result);
  if (!ok) {
    throw std::runtime_error(sql + ": " + message);
  }
  return value;
}

bool HasRows(PGconn* connection, int32_t rows) {
  const std::string exists = Run(
      connection, std::string("SELECT to_regclass('") + kTable + "') IS NOT NULL", PGRES_TUPLES_OK);
  return exists == "t" && Run(connection, std::string("SELECT count(*) FROM ") + kTable,
                              PGRES_TUPLES_OK) == std::to_string(rows);
}

// One COPY text line of the current SQLite row: cells by tabs, NULL as \N
// (the generated texts hold no tab, newline or backslash).
std::string CopyLine(sqlite3_stmt* select) {
  std::string line;
  for (int c = 0; c < sqlite3_column_count(select); ++c) {
    if (c > 0) {
      line += '\t';
    }
    const unsigned char* text = sqlite3_column_text(select, c);
    line += text == nullptr ? "\\N" : reinterpret_cast<const char*>(text);
  }
  return line + '\n';
}

void CopyRows(PGconn* connection, int32_t rows) {
  sqlite3* db = nullptr;
  const std::string path = OrdersDatabase(rows).string();
  sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY, nullptr);
  sqlite3_stmt* select = nullptr;
  sqlite3_prepare_v2(db, "SELECT * FROM Orders ORDER BY Id", -1, &select, nullptr);
  Run(connection, std::string("COPY ") + kTable + " FROM STDIN", PGRES_COPY_IN);
  std::string batch;
  while (sqlite3_step(select) == SQLITE_ROW) {
    batch += CopyLine(select);
    if (batch.size() > (1 << 20)) {
      PQputCopyData(connection, batch.data(), static_cast<int>(batch.size()));
      batch.clear();
    }
  }
  sqlite3_finalize(select);
  sqlite3_close(db);
  PQputCopyData(connection, batch.data(), static_cast<int>(batch.size()));
  PQputCopyEnd(connection, nullptr);
  PGresult* result = PQgetResult(connection);
  const bool ok = PQresultStatus(result) == PGRES_COMMAND_OK;
  const std::string message = PQresultErrorMessage(result);
  PQclear(result);
  while ((result = PQgetResult(connection)) != nullptr) {
    PQclear(result);
  }
  if (!ok) {
    throw std::runtime_error("copying the Orders rows: " + message);
  }
}

}  // namespace

std::string PgConnInfo(const std::string& connection_string) {
  static constexpr std::pair<std::string_view, std::string_view> kKeywords[] = {
      {"host", "host"},
      {"port", "port"},
      {"database", "dbname"},
      {"user id", "user"},
      {"password", "password"}};
  std::string info = "options=" + Quoted(
                                      "-c DateStyle=ISO,MDY -c lc_monetary=C "
                                      "-c extra_float_digits=1");
  size_t start = 0;
  while (start < connection_string.size()) {
    size_t end = connection_string.find(';', start);
    end = end == std::string::npos ? connection_string.size() : end;
    const std::string_view pair(connection_string.data() + start, end - start);
    const size_t equals = pair.find('=');
    if (equals != std::string_view::npos && equals + 1 < pair.size()) {
      const std::string key = Lower(pair.substr(0, equals));
      for (const auto& [name, keyword] : kKeywords) {
        if (key == name) {
          info += " " + std::string(keyword) + "=" + Quoted(pair.substr(equals + 1));
        }
      }
    }
    start = end + 1;
  }
  return info;
}

std::string PgOrdersTable(const std::string& connection_string, int32_t rows) {
  const Connection connection(PQconnectdb(PgConnInfo(connection_string).c_str()));
  if (PQstatus(connection.get()) != CONNECTION_OK) {
    throw std::runtime_error(std::string("cannot connect: ") + PQerrorMessage(connection.get()));
  }
  PQsetNoticeProcessor(
      connection.get(), [](void*, const char*) {}, nullptr);
  if (HasRows(connection.get(), rows)) {
    return kTable;
  }
  std::fprintf(stderr, "copying the Orders rows to PostgreSQL (%d rows, once)...\n", rows);
  Run(connection.get(), std::string("DROP TABLE IF EXISTS ") + kTable);
  Run(connection.get(), std::string("CREATE TABLE ") + kTable +
                            " (\"Id\" integer PRIMARY KEY, \"Customer\" varchar(40), "
                            "\"Product\" varchar(40), \"Qty\" integer, \"Price\" money, "
                            "\"OrderDate\" timestamp, \"Paid\" boolean, \"Note\" text)");
  CopyRows(connection.get(), rows);
  // Written once, so that no timed read pays for setting hint bits.
  Run(connection.get(), std::string("VACUUM ANALYZE ") + kTable);
  return kTable;
}

}  // namespace varnel::bench
