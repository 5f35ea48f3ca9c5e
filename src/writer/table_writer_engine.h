// The engine behind varnel::TableWriter: turns a recordset's pending edit into
// statements and runs them in one transaction on the chosen connection.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "db/table_catalog.h"
#include "varnel/db.h"
#include "varnel/enums.h"
#include "varnel/recordset.h"
#include "writer/pending_change.h"
#include "writer/row_statements.h"

namespace varnel::internal {

class TableWriterEngine {
 public:
  TableWriterEngine(ClsRecordset& recordset, std::vector<std::string> key_columns);

  // Writes the pending change to `table` ("" = the recordset's TableName)
  // through `connection` (nullptr = the recordset's, else the engine's own).
  // E_Succeed, or E_OtherErr after rolling back and reporting the error.
  Enum_EditRecord Write(const std::string& table,
                        const std::shared_ptr<db::Connection>& connection);

  // The named key columns, or the table's primary key. Raises VbError when
  // the database cannot be reached.
  std::vector<std::string> KeyColumns(const std::string& table,
                                      const std::shared_ptr<db::Connection>& connection);

  const std::vector<std::string>& last_statements() const { return last_statements_; }

 private:
  struct Target {
    std::shared_ptr<db::Connection> connection;
    db::internal::TableCatalog* catalog;
    WriteLayout layout;
  };
  // A key value the database generated for an inserted row.
  struct GeneratedValue {
    int32_t row;
    size_t field;
    Variant value;
  };

  std::string TableOf(const std::string& table) const;
  std::shared_ptr<db::Connection> ConnectionOf(const std::shared_ptr<db::Connection>& given);
  // The catalog of Connection's database (its driver's); the primary keys read
  // through another connection are forgotten.
  db::internal::TableCatalog& CatalogOf(const std::shared_ptr<db::Connection>& connection);
  WriteLayout LayoutOf(const std::string& table, const std::vector<std::string>& keys) const;

  void WriteChanges(const Target& target, const std::vector<RowChange>& changes,
                    std::vector<GeneratedValue>& generated);
  void RunIdentified(const Target& target, const Statement& statement);
  void RunInsert(const Target& target, const RowChange& change,
                 std::vector<GeneratedValue>& generated);
  void ShowGenerated(const std::vector<GeneratedValue>& generated);

  ClsRecordset& recordset_;
  std::vector<std::string> named_keys_;
  std::shared_ptr<db::Connection> own_connection_;
  std::weak_ptr<db::Connection> keys_connection_;                 // where primary_keys_ were read
  std::map<std::string, std::vector<std::string>> primary_keys_;  // by table
  std::vector<std::string> last_statements_;
};

}  // namespace varnel::internal
