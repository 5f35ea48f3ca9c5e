#include "editing/row_work.h"

#include <utility>

#include "editing/edit_status.h"
#include "fields/field_access.h"
#include "recordset/row_store.h"

namespace varnel::internal {

void RequireRow(const RecordsetState& rs, int32_t row) {
  if (row < 1 || row > rs.Rows()) {
    RaiseError(9);
  }
}

void TakeSnapshot(RecordsetState& rs, int32_t row) {
  rs.saved_values = RowValues(rs, row);
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
  if (rs.saved_values && row >= 1 && row <= rs.Rows() &&
      rs.saved_values->size() == rs.fields.size()) {
    WriteRowValues(rs, row, *rs.saved_values);
  }
  EraseSavedValues(rs);
}

void RemoveRowKeepingIt(RecordsetState& rs, int32_t row) {
  std::vector<Variant> kept = RowValues(rs, row);
  kept.emplace_back(rs.edit_marks[row] != 0);
  EraseRow(rs, row);
  if (rs.current_row > rs.Rows()) {
    rs.current_row = rs.Rows();
  }
  rs.deleted_values = std::move(kept);
  rs.deleted_row = row;
}

bool PutDeletedRowBack(RecordsetState& rs) {
  const int32_t row = rs.deleted_row;
  const size_t count = rs.fields.size();
  if (!rs.deleted_values || rs.deleted_values->size() != count + 1 || row < 1 ||
      row > rs.Rows() + 1) {
    EraseDeletedValues(rs);
    return false;
  }
  std::vector<Variant>& kept = *rs.deleted_values;
  const bool editable = kept.back().AsBoolean();
  kept.pop_back();
  InsertRow(rs, row);
  WriteRowValues(rs, row, kept);
  rs.edit_marks[row] = editable ? 1 : 0;
  EraseDeletedValues(rs);
  return true;
}

int32_t AppendRow(RecordsetState& rs) {
  const int32_t row = rs.Rows() + 1;
  InsertRow(rs, row);
  rs.edit_marks[row] = 1;
  return row;
}

void DropLastRow(RecordsetState& rs) {
  if (rs.Rows() < 1) {
    return;
  }
  EraseRow(rs, rs.Rows());
  if (rs.current_row > rs.Rows()) {
    rs.current_row = rs.Rows();
  }
}

void RefreshTotals(RecordsetState& rs, int32_t /*first_changed_row*/) {
  RecomputeAllSums(rs);
  NumberAutoCodingRows(rs);
}

void RollBackInMemory(RecordsetState& rs, Enum_EditStatus status) {
  switch (status) {
    case E_Modify:
      RestoreSnapshot(rs);
      RefreshTotals(rs, rs.Rows());
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
