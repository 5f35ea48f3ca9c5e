// SQLite's answers to what writing rows asks (db/table_catalog.h): the
// columns and the primary key from pragma table_info, dates compared through strftime (the columns
// hold ISO 8601 text), and an inserted row found again by its rowid.
#pragma once

#include "db/table_catalog.h"

namespace varnel::db::internal {

class SqliteTableCatalog final : public TableCatalog {
 public:
  // Asks its questions through Driver, which owns it.
  explicit SqliteTableCatalog(Driver& driver) : driver_(driver) {}

  std::vector<TableColumn> Columns(const std::string& table) override;
  std::vector<std::string> PrimaryKey(const std::string& table) override;
  std::string EqualsParameter(const std::string& quoted_column,
                              std::optional<DatePrecision> precision) const override;
  std::optional<std::vector<Variant>> InsertedRowKey(
      const std::string& table, const std::vector<std::string>& key_columns) override;

 private:
  Driver& driver_;
};

}  // namespace varnel::db::internal
