// The SQLite provider: "Provider=SQLite;Data Source=<file path>" opens an
// existing database file; a file that does not exist is an error unless the
// connection string adds "Create=True" (then a new, empty database is made). Busy databases are
// waited for about 2 seconds. A connection is used by one thread at a time (the library runs on its
// client's thread), so SQLite's own per-call locking is left out.
//
// How values cross between SQLite and Variants. Reading, the column's declared
// type decides (the first row that matches, by the words in the type name):
//
//   declared type                      Variant    from the stored value
//   ---------------------------------  ---------  ----------------------------------
//   BOOL..., BIT                       Boolean    a number: True when not 0
//   ...DATE..., ...TIME... (TIMESTAMP) Date       ISO 8601 text (yyyy-mm-dd hh:nn:ss)
//   ...MONEY, CURRENCY                 Currency   a number, to 1/10000
//   ...INT... (INTEGER, BIGINT, ...)   Long       an integer; Double beyond Long's range
//   ...CHAR..., ...TEXT, CLOB          String     any value, as text; DefinedSize = (n)
//   REAL, FLOAT, DOUBLE, NUMERIC(p,s)  Double     a number (s > 0 for NUMERIC/DECIMAL)
//   anything else, or no declared type by value   integer: Long (Double beyond range);
//                                                 real: Double; text or blob: String
//   NULL in any column                 Null
//
// A value that does not fit its column's kind (text in a DATE column that is not
// ISO 8601, a real in an INTEGER column, text in a numeric column) is read as
// its storage class says, never as an error.
//
// Writing, Execute binds each parameter in the same forms:
//
//   Variant            bound as
//   -----------------  ------------------------------------------
//   Empty, Null        NULL
//   Integer, Long      integer
//   Boolean            integer 1 (True) or 0 (False)
//   Double             real
//   Currency           real (Value / 10000)
//   Date               text "yyyy-mm-dd hh:nn:ss"
//   String             text
#pragma once

#include <memory>
#include <string_view>

#include "db/connection_string.h"
#include "db/dialect.h"
#include "db/driver.h"

namespace varnel::db::internal {

// Opens the file named by the Data Source key; creates it when absent only
// with Create=True. Raises the provider error for a missing file otherwise.
std::unique_ptr<Driver> OpenSqliteDriver(const ConnectionSettings& settings, std::string_view user,
                                         std::string_view password);

// Dates are stored as ISO 8601 text, of whatever shape each writer chose.
Dialect SqliteDialect();

}  // namespace varnel::db::internal
