// PostgreSQL's answers to what writing rows asks (db/table_catalog.h): the
// columns from pg_attribute, the primary key from pg_index, dates compared through to_char
// (timestamps, dates and times alike), and a generated key read back from the key's sequence when
// it is one column filled from a sequence (serial or identity).
#pragma once

#include "db/table_catalog.h"

namespace varnel::db::internal {

class PgTableCatalog final : public TableCatalog {
 public:
  // Asks its questions through Driver, which owns it.
  explicit PgTableCatalog(Driver& driver) : driver_(driver) {}

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
