// The private state of a db::Recordset: the prepared query and, once a call
// needs them, all its rows held column by column, with the filter's view.
#pragma once

#include <cassert>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "db/driver.h"
#include "varnel/db.h"

namespace varnel::db::internal {

struct RecordsetData {
  std::shared_ptr<Connection> connection;
  std::unique_ptr<Statement> statement;  // null when closed

  bool loaded = false;                       // rows read into values
  std::vector<std::vector<Variant>> values;  // [column][row], every row of the query
  int32_t row_count = 0;                     // rows in values
  bool filtered = false;
  std::vector<int32_t> visible;  // rows kept by the filter, in order
  std::string filter;

  // The cursor, counted over the visible rows: -1 is Bof, Count() is Eof.
  int32_t position = 0;

  // Raises 3704 unless the recordset is open.
  void RequireOpen() const;
  // Reads every row once, on the first call that needs them.
  void EnsureLoaded();
  // The number of visible rows.
  int32_t Count() const { return filtered ? static_cast<int32_t>(visible.size()) : row_count; }
  bool HasCurrentRow() const { return position >= 0 && position < Count(); }
  // The row (in values) at a visible position. REQUIRES 0 <= Position < Count().
  int32_t RowAt(int32_t at) const {
    assert(at >= 0 && at < Count());
    return filtered ? visible[at] : at;
  }
  // The current row; raises 3021 when there is none.
  int32_t CurrentRow() const;
  // The column called Name, exactly; raises 3265 when there is none.
  int32_t ColumnIndex(const std::string& name) const;
};

// Reads every row of Statement from the start, appending the value of column
// columns[i] to *outputs[i]; returns the number of rows, which Progress is
// told as the read goes on. The one bulk read.
int32_t ReadAllRows(Statement& statement, const std::vector<int32_t>& columns,
                    const std::vector<std::vector<Variant>*>& outputs,
                    const RowProgress& progress = {});

}  // namespace varnel::db::internal
