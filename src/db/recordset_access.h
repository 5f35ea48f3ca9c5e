// The library's own access to an open db::Recordset: column descriptions and
// a column-wise bulk read that fills the fields' value arrays directly, so a
// load copies each cell once.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "varnel/db.h"

namespace varnel::db::internal {

struct ColumnInfo {
  std::string name;
  int32_t defined_size = 0;  // declared length of a text column, else 0
};

// Where a read reports the rows it has read (Connection::OnRowsRead): every
// `every` rows (never when < 1) and at its end; no callback, nowhere.
struct RowProgress {
  std::function<void(int64_t)> callback;
  int64_t every = 0;
};

struct RecordsetAccess {
  // The columns of an open recordset, in order; needs no rows to be read.
  static const std::vector<ColumnInfo>& Columns(const Recordset& rs);

  // Reads every row of the recordset's query from the start and appends the
  // value of column columns[i] (0-based) to *outputs[i], typed as the column's
  // declared type decides. The rows are not kept in the recordset (when it has
  // already read them, that snapshot is given, whatever its Filter). Returns
  // the number of rows read. Raises VbError when the database fails.
  // The rows read are reported to the recordset's connection's progress.
  static int32_t AppendColumns(Recordset& rs, const std::vector<int32_t>& columns,
                               const std::vector<std::vector<Variant>*>& outputs);

  // What reads on Connection report their rows to.
  static RowProgress ProgressOf(const Connection& connection);
};

}  // namespace varnel::db::internal
