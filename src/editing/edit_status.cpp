#include "editing/edit_status.h"

#include <cassert>

#include "fields/field_access.h"

namespace varnel::internal {

bool IsDeletionStatus(Enum_EditStatus status) {
  return status == E_Delete || status == E_ModifyDelete || status == E_AddNewDelete ||
         status == E_CopyDelete;
}

Enum_EditStatus StatusAfterDelete(Enum_EditStatus status) {
  switch (status) {
    case E_Modify:
      return E_ModifyDelete;
    case E_AddNew:
      return E_AddNewDelete;
    case E_Copy:
      return E_CopyDelete;
    default:
      return E_Delete;
  }
}

Enum_EditStatus StatusUnderDeletion(Enum_EditStatus status) {
  switch (status) {
    case E_ModifyDelete:
      return E_Modify;
    case E_AddNewDelete:
      return E_AddNew;
    case E_CopyDelete:
      return E_Copy;
    default:
      return E_Default;
  }
}

std::optional<int32_t> PendingRow(const RecordsetState& rs) {
  switch (rs.edit_status) {
    case E_Modify:
      if (rs.saved_row > 0 && rs.saved_values) {
        return rs.saved_row;
      }
      return std::nullopt;
    case E_AddNew:
    case E_Copy:
      if (rs.Rows() > 0) {
        return rs.Rows();
      }
      return std::nullopt;
    default:
      return std::nullopt;
  }
}

void AssertValid([[maybe_unused]] const RecordsetState& rs) {
#ifndef NDEBUG
  const int32_t rows = rs.Rows();
  assert(rs.edit_marks.size() == rs.select_marks.size());
  for (const auto& field : rs.fields) {
    const size_t length = FieldAccess::Values(*field).size();
    assert(length == static_cast<size_t>(rows) + 1 || (rows == 0 && length <= 1));
  }
  const size_t count = rs.fields.size();
  assert(!rs.saved_values || rs.saved_values->size() == count + 1);
  assert(!rs.deleted_values || rs.deleted_values->size() == count + 1);
  switch (rs.edit_status) {
    case E_Modify:
      assert(rs.saved_row >= 0 && rs.saved_row <= rows);
      break;
    case E_ModifyDelete:
      assert(rs.saved_row == 0 || rs.saved_row == rs.deleted_row);
      assert(!rs.deleted_values || (rs.deleted_row >= 1 && rs.deleted_row <= rows + 1));
      break;
    case E_Delete:
    case E_AddNewDelete:
    case E_CopyDelete:
      assert(!rs.deleted_values || (rs.deleted_row >= 1 && rs.deleted_row <= rows + 1));
      break;
    default:
      break;
  }
#endif
}

}  // namespace varnel::internal
