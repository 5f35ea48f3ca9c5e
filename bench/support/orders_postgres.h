// The Orders table (orders_table.h) on a PostgreSQL server, for the load
// benchmark's PostgreSQL side.
//
//   const std::string table = varnel::bench::PgOrdersTable(pg, 1000000);
//   rs.ConnectString = pg; rs.TableName = table;
#pragma once

#include <cstdint>
#include <string>

namespace varnel::bench {

// libpq connection keywords ("host=... port=... dbname=... user=...") for a
// "Provider=PostgreSQL;Host=...;Port=...;Database=...;User ID=...;Password=..."
// connection string, with the session settings the library's driver uses
// (ISO dates, money without a locale), so that both read the same text.
std::string PgConnInfo(const std::string& connection_string);

// The name of a table on that server holding the rows of the Orders SQLite
// table with `rows` rows (Id integer key, Customer and Product varchar(40), Qty
// integer, Price money, OrderDate timestamp, Paid boolean, Note text), copied
// from the SQLite file on first use and reused while it has that many rows.
// Throws std::runtime_error with the server's message when it cannot.
std::string PgOrdersTable(const std::string& connection_string, int32_t rows);

}  // namespace varnel::bench
