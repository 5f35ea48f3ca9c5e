// What writing rows asks of a database beyond plain statements: a table's
// primary key, how to compare a date column, and the key of the row an INSERT
// just added. Each driver answers for its own database, in its own folder
// (src/db/sqlite/sqlite_table_catalog.cpp, src/db/postgres/pg_table_catalog.cpp),
// and is asked through Driver::Catalog(), never by its name.
//
//   TableCatalog& catalog = connection.Driver().Catalog();
//   std::vector<std::string> key = catalog.PrimaryKey("Orders");
//   std::string where = catalog.EqualsParameter("[Made]", DatePrecision::kDay);
//
// Table names are given as the client writes them (bare, [bracketed] or in
// double quotes); column names are given and returned the library's way, in
// [brackets], so the SQL made of them goes through the driver's translation.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "varnel/variant.h"

namespace varnel::db::internal {

class Driver;

// How much of a date value a comparison keeps.
enum class DatePrecision {
  kSecond,      // date and time to the second
  kMinute,      // date and time to the minute
  kDay,         // the date alone
  kTimeSecond,  // the time of day to the second
  kTimeMinute,  // the time of day to the minute
};

class TableCatalog {
 public:
  virtual ~TableCatalog() = default;

  // The primary key columns of Table in key order; empty when the table has
  // none. Raises VbError when the database cannot be read.
  virtual std::vector<std::string> PrimaryKey(const std::string& table) = 0;

  // The predicate "column equals the next '?' parameter" for a column already
  // quoted. A date column (Precision given) is compared at that precision on
  // both sides, so "2024-01-05 10:30" equals the day 2024-01-05 (kDay), and
  // the texts "2024-01-05" and "2024-01-05 00:00:00" equal each other.
  virtual std::string EqualsParameter(const std::string& quoted_column,
                                      std::optional<DatePrecision> precision) const = 0;

  // The values of Key_columns (already quoted) in the row that the last INSERT
  // on this connection added to Table; nullopt when the database cannot tell.
  // Safe inside a transaction: a failure here never fails the transaction.
  virtual std::optional<std::vector<Variant>> InsertedRowKey(
      const std::string& table, const std::vector<std::string>& key_columns) = 0;
};

// ---- helpers shared by the drivers' catalogs ----

// A name without its [..], "..", or `..` quotes.
std::string BareName(std::string_view name);

// The first column of every row of Sql (the library's SQL), as text.
std::vector<std::string> FirstColumnTexts(Driver& driver, std::string_view sql);

// The first Count values of the first row of Sql (the library's SQL); nullopt
// when it has no row or the database fails it.
std::optional<std::vector<Variant>> FirstRowOrNothing(Driver& driver, std::string_view sql,
                                                      size_t count);

}  // namespace varnel::db::internal
