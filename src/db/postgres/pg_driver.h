// The PostgreSQL provider, over libpq:
//
//   Provider=PostgreSQL;Host=db.example;Port=5432;Database=shop;User ID=clerk;Password=...
//
// Keys (any case): Host (or Server), Port, Database (or Initial Catalog),
// User ID (or UID, User), Password (or PWD), Schema (the search path: where
// unqualified tables are found and created), Connect Timeout (seconds,
// default 10), SSL Mode (libpq's sslmode). Connection::Open's UserID and
// Password, when given, take the place of the string's. Keys that are absent
// follow libpq's defaults (PGHOST, PGPORT, ..., the local socket).
//
// The SQL the library writes is translated before it is sent (pg_translator.h);
// '?' placeholders become $1, $2, ... A script given to Execute is run one
// statement after the other.
//
// How values cross between PostgreSQL and Variants. Reading, by the column's type:
//
//   column type                          Variant    notes
//   -----------------------------------  ---------  ----------------------------------
//   boolean                              Boolean
//   smallint, integer, bigint, oid       Long       Double beyond Long's range
//   numeric(p,0)                         Long       Double beyond Long's range
//   numeric(p,s), s > 0; real, double    Double
//   numeric (no scale declared)          Long or Double, by the value
//   money                                Currency   exact
//   date, timestamp, time                Date       ISO 8601 as the server sends it
//   timestamptz, timetz                  Date       the session's local time, offset dropped
//   text, varchar(n), char(n), others    String     DefinedSize = n
//   NULL in any column                   Null
//
// A date the Date type cannot hold (infinity, before year 100) is read as its text.
//
// Writing, Execute sends each parameter as text and the server reads it as
// the type of the place it is used in:
//
//   Variant            sent as
//   -----------------  ------------------------------------------
//   Empty, Null        NULL
//   Integer, Long      the number
//   Boolean            1 (True) or 0 (False): read as boolean or number
//   Double             the shortest text that reads back the same
//   Currency           the exact decimal amount
//   Date               "yyyy-mm-dd hh:nn:ss"
//   String             the text
#pragma once

#include <memory>
#include <string_view>

#include "db/connection_string.h"
#include "db/dialect.h"
#include "db/driver.h"

namespace varnel::db::internal {

// Connects to the server the settings name; raises the provider error, with
// the server's reason and never the password, when that fails.
std::unique_ptr<Driver> OpenPostgresDriver(const ConnectionSettings& settings,
                                           std::string_view user, std::string_view password);

// Dates are written as ISO 8601 text.
Dialect PostgresDialect();

}  // namespace varnel::db::internal
