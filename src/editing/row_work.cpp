#include "editing/row_work.h"

#include <algorithm>
#include <utility>

#include "editing/edit_status.h"
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

// A row with its edit mark after the values, as SavedValues and DeletedValues keep it.
std::vector<Variant> RowWithMark(const RecordsetState& rs, int32_t row) {
  std::vector<Variant> kept = RowValues(rs, row);
  kept.emplace_back(rs.edit_marks[row] != 0);
  return kept;
}

bool HoldsRow(const RecordsetState& rs, const std::optional<std::vector<Variant>>& kept) {
  return kept && kept->size() == rs.fields.size() + 1 && kept->back().VarType() == vbBoolean;
}

}  // namespace

void TakeSnapshot(RecordsetState& rs, int32_t row) {
  rs.saved_values = RowWithMark(rs, row);
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
  if (HoldsRow(rs, rs.saved_values) && row >= 1 && row <= rs.Rows()) {
    const std::vector<Variant>& kept = *rs.saved_values;
    RowLeavesTotals(rs, row);
    for (size_t i = 0; i < rs.fields.size(); ++i) {
      std::vector<Variant>& values = FieldAccess::Values(*rs.fields[i]);
      if (static_cast<size_t>(row) < values.size() && !(values[row] == kept[i])) {
        values[row] = kept[i];
      }
    }
    RowJoinsTotals(rs, row);
    rs.edit_marks[row] = kept.back().AsBoolean() ? 1 : 0;
    rs.row_observers.Notify(&RowObserver::RowChanged, row);
  }
  EraseSavedValues(rs);
}

void RemoveRowKeepingIt(RecordsetState& rs, int32_t row) {
  std::vector<Variant> kept = RowWithMark(rs, row);
  const RowsRemoveNotice notice(rs.row_observers, row, 1);
  EraseRow(rs, row);
  if (rs.current_row > rs.Rows()) {
    rs.current_row = rs.Rows();
  }
  rs.deleted_values = std::move(kept);
  rs.deleted_row = row;
}

bool PutDeletedRowBack(RecordsetState& rs) {
  const int32_t row = rs.deleted_row;
  if (!HoldsRow(rs, rs.deleted_values) || row < 1 || row > rs.Rows() + 1) {
    EraseDeletedValues(rs);
    return false;
  }
  std::vector<Variant>& kept = *rs.deleted_values;
  const bool editable = kept.back().AsBoolean();
  kept.pop_back();
  const RowsInsertNotice notice(rs.row_observers, row, 1);
  InsertRow(rs, row);
  WriteRowValues(rs, row, kept);
  RowJoinsTotals(rs, row);
  rs.edit_marks[row] = editable ? 1 : 0;
  EraseDeletedValues(rs);
  return true;
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
      const int32_t row = rs.deleted_row;
      PutDeletedRowBack(rs);
      if (status == E_ModifyDelete) {
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
