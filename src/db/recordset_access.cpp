// The load path of the library: every row read from a database, whether into
// a recordset's own columns or straight into a ClsRecordset's fields, goes
// through ReadAllRows.
#include "db/recordset_access.h"

#include <limits>

#include "db/db_errors.h"
#include "db/recordset_data.h"

namespace varnel::db::internal {

namespace {

void CheckColumns(size_t column_count, const std::vector<int32_t>& columns,
                  const std::vector<std::vector<Variant>*>& outputs) {
  if (columns.size() != outputs.size()) {
    RaiseDbError(kErrBadArguments, "(One output is needed for each column read.)");
  }
  for (const int32_t column : columns) {
    if (column < 0 || static_cast<size_t>(column) >= column_count) {
      RaiseDbError(kErrItemNotFound, "(Column " + std::to_string(column) + ".)");
    }
  }
}

}  // namespace

int32_t ReadAllRows(Statement& statement, const std::vector<int32_t>& columns,
                    const std::vector<std::vector<Variant>*>& outputs,
                    const RowProgress& progress) {
  CheckColumns(statement.Columns().size(), columns, outputs);
  statement.Rewind();
  int64_t rows = 0;
  int64_t reported = -1;
  // One comparison per row is all progress costs while no report is due.
  const bool periodic = progress.callback && progress.every > 0;
  int64_t next_report = periodic ? progress.every : std::numeric_limits<int64_t>::max();
  try {
    while (statement.Step()) {
      statement.AppendRow(columns.data(), outputs.data(), columns.size());
      if (++rows == next_report) {
        progress.callback(rows);
        reported = rows;
        next_report += progress.every;
      }
    }
    if (progress.callback && reported != rows) {
      progress.callback(rows);
    }
  } catch (...) {
    statement.Rewind();  // a read left half-way would keep the database locked
    throw;
  }
  return static_cast<int32_t>(rows);
}

void RecordsetData::RequireOpen() const {
  if (statement == nullptr) {
    RaiseDbError(kErrObjectClosed, "(The recordset is closed.)");
  }
}

void RecordsetData::EnsureLoaded() {
  RequireOpen();
  if (loaded) {
    return;
  }
  const size_t column_count = statement->Columns().size();
  std::vector<std::vector<Variant>> read(column_count);
  std::vector<int32_t> columns(column_count);
  std::vector<std::vector<Variant>*> outputs(column_count);
  for (size_t i = 0; i < column_count; ++i) {
    columns[i] = static_cast<int32_t>(i);
    outputs[i] = &read[i];
  }
  row_count = ReadAllRows(*statement, columns, outputs, RecordsetAccess::ProgressOf(*connection));
  values = std::move(read);
  loaded = true;
}

int32_t RecordsetData::CurrentRow() const {
  if (!HasCurrentRow()) {
    RaiseDbError(kErrNoCurrentRecord);
  }
  return RowAt(position);
}

int32_t RecordsetData::ColumnIndex(const std::string& name) const {
  RequireOpen();
  const std::vector<ColumnInfo>& columns = statement->Columns();
  for (size_t i = 0; i < columns.size(); ++i) {
    if (columns[i].name == name) {
      return static_cast<int32_t>(i);
    }
  }
  RaiseDbError(kErrItemNotFound, "(Field '" + name + "'.)");
}

const std::vector<ColumnInfo>& RecordsetAccess::Columns(const Recordset& rs) {
  rs.d_->RequireOpen();
  return rs.d_->statement->Columns();
}

int32_t RecordsetAccess::AppendColumns(Recordset& rs, const std::vector<int32_t>& columns,
                                       const std::vector<std::vector<Variant>*>& outputs) {
  RecordsetData& data = *rs.d_;
  data.RequireOpen();
  const RowProgress progress = ProgressOf(*data.connection);
  if (!data.loaded) {
    return ReadAllRows(*data.statement, columns, outputs, progress);
  }
  // A static cursor that has read its rows gives that snapshot again, which
  // is also cheaper than reading the database a second time.
  CheckColumns(data.values.size(), columns, outputs);
  for (size_t i = 0; i < columns.size(); ++i) {
    const std::vector<Variant>& source = data.values[columns[i]];
    outputs[i]->insert(outputs[i]->end(), source.begin(), source.end());
  }
  if (progress.callback) {
    progress.callback(data.row_count);  // all of them at once
  }
  return data.row_count;
}

RowProgress RecordsetAccess::ProgressOf(const Connection& connection) {
  return RowProgress{connection.on_rows_read_, connection.rows_read_every_};
}

}  // namespace varnel::db::internal
