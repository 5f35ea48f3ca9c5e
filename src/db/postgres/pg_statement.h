// A PostgreSQL query read forward row by row (a recordset's source). Its
// columns are described by the server when it is prepared; its rows are
// fetched when the first row is asked for, all at once, and let go of after
// the last one.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "db/driver.h"
#include "db/postgres/pg_session.h"
#include "db/postgres/pg_values.h"

namespace varnel::db::internal {

class PgStatement final : public Statement {
 public:
  // Describes Sql (placeholders $1, $2, ... bound to the texts of Params) on
  // Session; raises the provider error when the server refuses it.
  PgStatement(std::shared_ptr<PgSession> session, std::string sql,
              std::vector<std::optional<std::string>> params = {});

  const std::vector<ColumnInfo>& Columns() const override { return columns_; }
  void Rewind() override;
  bool Step() override;
  Variant Value(int32_t column) const override;
  void AppendRow(const int32_t* columns, std::vector<Variant>* const* outputs,
                 std::size_t count) const override;

 private:
  Variant Cell(int column) const;

  std::shared_ptr<PgSession> session_;
  std::string sql_;
  std::vector<std::optional<std::string>> params_;
  std::vector<ColumnInfo> columns_;
  std::vector<PgCellKind> kinds_;  // per column, decided once from its type
  PgResult rows_;                  // the fetched rows; null before the first Step
  int row_ = -1;                   // the current row in rows_
};

}  // namespace varnel::db::internal
