// UndoRecord: takes back one layer of the pending edit in memory (a deletion
// first, then the modification or insertion under it). The database is not
// involved: nothing of a pending edit has reached it.
#include "editing/edit_status.h"
#include "editing/editing.h"
#include "editing/row_work.h"
#include "fields/field_access.h"
#include "messages/error_trap.h"
#include "recordset/row_store.h"

namespace varnel::internal {
namespace {

void UndoDeletion(RecordsetState& rs, Enum_EditStatus status) {
  {
    BulkScope bulk;
    const int32_t row = rs.deleted_row;
    if (PutDeletedRowBack(rs)) {
      rs.current_row = row;
      RefreshTotals(rs, row);
    }
  }
  EraseDeletedValues(rs);
  RaiseMainFieldChange(rs);
  rs.SetEditStatusValue(StatusUnderDeletion(status));
}

void UndoInsertion(RecordsetState& rs) {
  {
    BulkScope bulk;
    DropLastRow(rs);
    RefreshTotals(rs, rs.Rows() + 1);
  }
  RaiseMainFieldChange(rs);
  rs.SetEditStatusValue(E_Default);
}

void UndoModification(RecordsetState& rs) {
  {
    BulkScope bulk;
    RollBackInMemory(rs, E_Modify);
  }
  rs.SetEditStatusValue(E_Default);
}

}  // namespace

bool UndoPendingLayer(RecordsetState& rs) {
  const Enum_EditStatus status = rs.edit_status;
  if (status == E_Default || status == E_Query || status == E_Nothing) {
    return false;
  }
  bool cancel = false;
  rs.Raise(Ev_UndoRecordBefore, &ClsRecordsetEvents::UndoRecordBefore, cancel);
  if (cancel) {
    return false;
  }
  if (IsDeletionStatus(status)) {
    UndoDeletion(rs, status);
  } else if (status == E_AddNew || status == E_Copy) {
    UndoInsertion(rs);
  } else if (status == E_Modify) {
    UndoModification(rs);
  }
  rs.Raise(Ev_SysUndoRecordAfter, &ClsRecordsetEvents::SysUndoRecordAfter);
  rs.Raise(Ev_UndoRecordAfter, &ClsRecordsetEvents::UndoRecordAfter);
  rs.Raise(Ev_RecordPointerChange, &ClsRecordsetEvents::RecordPointerChange);
  // After undoing a deletion that leaves an edit pending, the row is still being edited.
  if (status != E_ModifyDelete && status != E_AddNewDelete && status != E_CopyDelete) {
    rs.Raise(Ev_RecordPointerChange2, &ClsRecordsetEvents::RecordPointerChange2);
  }
  AssertValid(rs);
  return false;
}

}  // namespace varnel::internal

namespace varnel {

bool ClsRecordset::UndoRecord() {
  internal::RecordsetState& rs = internal::RecordsetAccess::State(*this);
  return internal::Trapped(SysErrState, true, [&] { return internal::UndoPendingLayer(rs); });
}

}  // namespace varnel
