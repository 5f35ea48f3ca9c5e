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

#include <cstdint>
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

// What a column's declared type holds, as the library reads it.
enum class ColumnKind {
  kText,      // text of any length (also types the library reads as text)
  kInteger,   // whole numbers
  kReal,      // numbers with a fraction (float, numeric with a scale)
  kMoney,     // amounts
  kDate,      // a day without a time (DATE): written as 'yyyy-mm-dd'
  kDateTime,  // a day and a time of day (DATETIME, TIMESTAMP)
  kTime,      // a time of day alone (TIME)
  kBoolean,
  kUntyped,  // no declared type (SQLite): each value is what it was stored as
};

// One column of a table as its database describes it.
struct TableColumn {
  std::string name;  // as the database holds it
  ColumnKind kind = ColumnKind::kText;
  int32_t defined_size = 0;                // n of a text type, else 0
  bool not_null = false;                   // declared NOT NULL
  std::optional<std::string> default_sql;  // the DEFAULT expression, as the database gives it
  int32_t key_position = 0;                // 1, 2, ... in the primary key; 0 outside it
  bool generated = false;                  // the database fills it when left out of an INSERT
};

class TableCatalog {
 public:
  virtual ~TableCatalog() = default;

  // The columns of Table in their order; empty when there is no such table.
  // Raises VbError when the database cannot be read.
  virtual std::vector<TableColumn> Columns(const std::string& table) = 0;

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

// The columns of Table whose kind is kDate (a day without a time), by name.
std::vector<std::string> DayOnlyColumns(TableCatalog& catalog, const std::string& table);

// The first column of every row of Sql (the library's SQL), as text.
std::vector<std::string> FirstColumnTexts(Driver& driver, std::string_view sql);

// The first Count values of the first row of Sql (the library's SQL); nullopt
// when it has no row or the database fails it.
std::optional<std::vector<Variant>> FirstRowOrNothing(Driver& driver, std::string_view sql,
                                                      size_t count);

}  // namespace varnel::db::internal
