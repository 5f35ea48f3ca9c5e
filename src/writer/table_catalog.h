// What the writer asks of a database beyond plain statements: the table's
// primary key, how to compare a date column, and the key of the row an INSERT
// just added. The one place that holds provider-specific SQL for writing
// (SQLite's and PostgreSQL's catalogs; on PostgreSQL a generated key is read
// back when it is one column filled from a sequence: serial or identity).
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "varnel/db.h"
#include "varnel/enums.h"
#include "varnel/variant.h"

namespace varnel::internal {

class TableCatalog {
 public:
  // Asks the database (outside any transaction) which catalog queries it
  // understands. A database that understands none gets the plain catalog:
  // no primary key discovery, no generated keys, dates compared by '='.
  static TableCatalog For(const std::shared_ptr<db::Connection>& connection);

  // The primary key columns of Table in key order; empty when the table has
  // none or the database cannot tell.
  std::vector<std::string> PrimaryKey(const std::shared_ptr<db::Connection>& connection,
                                      const std::string& table) const;

  // The predicate "column equals the next parameter" for a column already
  // quoted. A date column is compared at the precision of the field's
  // DateType (the day of a D_YMD field, the time of day of a D_HNS field, ...),
  // as the load cut its values, so "2024-01-05 10:30" matches the D_YMD value
  // 2024-01-05 and the text forms "2024-01-05" and "2024-01-05 00:00:00" match.
  std::string EqualsParameter(const std::string& quoted_column,
                              std::optional<Enum_DateType> date_type) const;

  // The values of key_columns (already quoted) in the row that the last INSERT
  // on this connection added to Table; nullopt when the database cannot tell.
  // Runs inside the writer's transaction, so it never fails the transaction.
  std::optional<std::vector<Variant>> InsertedRowKey(
      const std::shared_ptr<db::Connection>& connection, const std::string& table,
      const std::vector<std::string>& key_columns) const;

 private:
  enum class Kind { kPlain, kSqlite, kPostgres };
  Kind kind_ = Kind::kPlain;
};

// "[" name "]": how the library writes a column name in SQL.
std::string QuoteColumn(const std::string& name);

}  // namespace varnel::internal
