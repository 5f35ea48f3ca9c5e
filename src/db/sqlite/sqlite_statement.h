// A prepared SQLite query read forward row by row (the recordset's source).
#pragma once

#include <sqlite3.h>

#include <string>
#include <vector>

#include "db/driver.h"
#include "db/sqlite/sqlite_error.h"
#include "db/sqlite/sqlite_values.h"

namespace varnel::db::internal {

class SqliteStatement final : public Statement {
 public:
  // Prepares Sql on Handle with its placeholders bound to Params; raises the
  // provider error when it does not compile, holds more than one statement, or
  // has another number of placeholders.
  SqliteStatement(SqliteHandle handle, std::string_view sql,
                  const std::vector<Variant>& params = {});
  ~SqliteStatement() override;

  const std::vector<ColumnInfo>& Columns() const override { return columns_; }
  void Rewind() override;
  bool Step() override;
  Variant Value(int32_t column) const override;
  void AppendRow(const int32_t* columns, std::vector<Variant>* const* outputs,
                 std::size_t count) const override;

 private:
  void DescribeColumns();
  void Bind(const std::vector<Variant>& params);
  bool OnRow() const;

  SqliteHandle handle_;
  sqlite3_stmt* statement_ = nullptr;
  std::string sql_;
  std::vector<ColumnInfo> columns_;
  std::vector<CellKind> kinds_;  // per column, decided once from the declared type
};

// True when Tail (the rest of a SQL text after one statement) holds no other
// statement: only blanks and ';'.
bool OnlyBlanksLeft(const char* tail);


}  // namespace varnel::db::internal
