#include "editing/row_work.h"

#include <algorithm>
#include <utility>

#include "recordset/edit_state.h"
#include "fields/field_access.h"
#include "recordset/column_total.h"
#include "recordset/row_store.h"

namespace varnel::internal {

void RequireRow(const RecordsetState& rs, int32_t row) {
  if (row < 1 || row > rs.Rows()) {
    RaiseError(9);
  }
}

namespace {

// The values of row with the fields they belong to and its edit mark.
RowSnapshot KeepRow(const RecordsetState& rs, int32_t row) {
  RowSnapshot kept;
  kept.values = RowValues(rs, row);
  kept.fields.assign(rs.fields.begin(), rs.fields.end());
  kept.editable = rs.edit_marks[row] != 0;
  return kept;
}

// Writes the kept values back into row, field by field: a field added since
// keeps what it holds, a removed field's value is dropped. The totals of the
// summed fields follow by the difference.
void WriteKeptRow(RecordsetState& rs, int32_t row, const RowSnapshot& kept) {
  RowLeavesTotals(rs, row);
  for (size_t i = 0; i < rs.fields.size(); ++i) {
    const std::optional<Variant> value = kept.ValueOf(*rs.fields[i], i);
    std::vector<Variant>& values = FieldAccess::Values(*rs.fields[i]);
    if (value && static_cast<size_t>(row) < values.size() && !(values[row] == *value)) {
      values[row] = *value;
    }
  }
  RowJoinsTotals(rs, row);
  rs.edit_marks[row] = kept.editable ? 1 : 0;
}

}  // namespace

void TakeSnapshot(RecordsetState& rs, int32_t row) {
  rs.saved_values = KeepRow(rs, row);
  rs.saved_row = row;
}

void EraseSavedValues(RecordsetState& rs) {
  rs.saved_values.reset();
  rs.saved_row = 0;
}

void EraseDeletedValues(RecordsetState& rs) {
  rs.deleted_values.reset();
  rs.deleted_row = 0;
}

void RestoreSnapshot(RecordsetState& rs) {
  const int32_t row = rs.saved_row;
  if (rs.saved_values && row >= 1 && row <= rs.Rows()) {
    WriteKeptRow(rs, row, *rs.saved_values);
    rs.row_observers.Notify(&RowObserver::RowChanged, row);
  }
  EraseSavedValues(rs);
}

void RemoveRowKeepingIt(RecordsetState& rs, int32_t row) {
  RowSnapshot kept = KeepRow(rs, row);
  const RowsRemoveNotice notice(rs.row_observers, row, 1);
  EraseRow(rs, row);
  if (rs.current_row > rs.Rows()) {
    rs.current_row = rs.Rows();
  }
  rs.deleted_values = std::move(kept);
  rs.deleted_row = row;
}

// A store shrunk since the deletion (the Rows setter) puts the row back at
// its end: the row is never lost.
int32_t PutDeletedRowBack(RecordsetState& rs) {
  if (!rs.deleted_values) {
    RaiseError(9);  // nothing kept: the caller must not report the row as restored
  }
  const int32_t row = std::clamp(rs.deleted_row, 1, rs.Rows() + 1);
  const RowsInsertNotice notice(rs.row_observers, row, 1);
  InsertRow(rs, row);
  WriteKeptRow(rs, row, *rs.deleted_values);
  EraseDeletedValues(rs);
  return row;
}

int32_t AppendRow(RecordsetState& rs) {
  const int32_t row = rs.Rows() + 1;
  const RowsInsertNotice notice(rs.row_observers, row, 1);
  InsertRow(rs, row);
  rs.edit_marks[row] = 1;
  return row;
}

void DropLastRow(RecordsetState& rs) {
  if (rs.Rows() < 1) {
    return;
  }
  const RowsRemoveNotice notice(rs.row_observers, rs.Rows(), 1);
  EraseRow(rs, rs.Rows());
  if (rs.current_row > rs.Rows()) {
    rs.current_row = rs.Rows();
  }
}

void NumberAutoCodingFrom(RecordsetState& rs, int32_t first_row) {
  const int32_t rows = rs.Rows();
  for (const auto& field : rs.fields) {
    if (field->FieldType != F_AutoCoding) {
      continue;
    }
    std::vector<Variant>& values = FieldAccess::Values(*field);
    for (int32_t row = std::max(first_row, 1); row <= rows; ++row) {
      values[row] = Variant(row);
    }
  }
}

// Rows inserted and erased already moved the totals (EraseRow,
// RowJoinsTotals); only renumbered auto-coded values are counted again.
void RefreshTotals(RecordsetState& rs, int32_t first_changed_row) {
  NumberAutoCodingFrom(rs, first_changed_row);
  RecountRenumberedTotals(rs);
}

void TotalsAfterAppend(RecordsetState& rs, int32_t row) {
  NumberAutoCodingFrom(rs, row);
  RowJoinsTotals(rs, row);
  for (size_t i = 0; i < rs.fields.size(); ++i) {
    const ClsFields& field = *rs.fields[i];
    if (!field.IsSum && !field.SumValue.IsNull()) {
      RecountTotal(rs, i);  // summing was switched off: no stale total stays
    }
  }
}

void RollBackInMemory(RecordsetState& rs, Enum_EditStatus status) {
  switch (status) {
    case E_Modify:
      RestoreSnapshot(rs);
      break;
    case E_AddNew:
    case E_Copy:
      DropLastRow(rs);
      RefreshTotals(rs, rs.Rows() + 1);
      break;
    case E_Delete:
    case E_ModifyDelete: {
      const int32_t row = PutDeletedRowBack(rs);
      if (status == E_ModifyDelete) {
        rs.saved_row = row;
        RestoreSnapshot(rs);
      }
      RefreshTotals(rs, row);
      break;
    }
    default:
      break;
  }
}

void RaiseMainFieldChange(RecordsetState& rs) {
  const std::string name = MainFieldName(rs);
  if (!name.empty()) {
    rs.Raise(Ev_MainFieldChange, &ClsRecordsetEvents::MainFieldChange, name);
  }
}

bool IsMainBoolean(const ClsFields& field) { return field.IsMain && field.FieldType == F_Boolean; }

}  // namespace varnel::internal
