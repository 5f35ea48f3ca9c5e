// UndoRecord: takes back one layer of the pending edit in memory (a deletion
// first, then the modification or insertion under it). The database is not
// involved: nothing of a pending edit has reached it.
#include "editing/editing.h"
#include "editing/row_work.h"
#include "fields/field_access.h"
#include "messages/error_trap.h"
#include "recordset/edit_state.h"
#include "recordset/row_store.h"

namespace varnel::internal {
namespace {

// The deleted row goes back where it was, field by field; when nothing was
// kept the undo fails with a reported error instead of claiming the row back.
void UndoDeletion(RecordsetState& rs) {
  {
    BulkScope bulk;
    const int32_t row = PutDeletedRowBack(rs);
    rs.current_row = row;
    RefreshTotals(rs, row);
  }
  RaiseMainFieldChange(rs);
}

void UndoInsertion(RecordsetState& rs) {
  {
    BulkScope bulk;
    DropLastRow(rs);
    RefreshTotals(rs, rs.Rows() + 1);
  }
  RaiseMainFieldChange(rs);
}

void UndoModification(RecordsetState& rs) {
  BulkScope bulk;
  RollBackInMemory(rs, E_Modify);
}

}  // namespace

bool UndoPendingLayer(RecordsetState& rs) {
  const Enum_EditStatus status = rs.edit_status;
  if (!PlanMove(status, EditOp::kUndoRecord).to) {
    return false;
  }
  bool cancel = false;
  rs.Raise(Ev_UndoRecordBefore, &ClsRecordsetEvents::UndoRecordBefore, cancel);
  if (cancel) {
    return false;
  }
  if (IsDeletion(status)) {
    UndoDeletion(rs);
  } else if (IsInsertion(status)) {
    UndoInsertion(rs);
  } else {
    UndoModification(rs);
  }
  MoveStatus(rs, EditOp::kUndoRecord);
  rs.Raise(Ev_SysUndoRecordAfter, &ClsRecordsetEvents::SysUndoRecordAfter);
  rs.Raise(Ev_UndoRecordAfter, &ClsRecordsetEvents::UndoRecordAfter);
  rs.Raise(Ev_RecordPointerChange, &ClsRecordsetEvents::RecordPointerChange);
  // After undoing a deletion that leaves an edit pending, the row is still being edited.
  if (!IsPending(rs.edit_status)) {
    rs.Raise(Ev_RecordPointerChange2, &ClsRecordsetEvents::RecordPointerChange2);
  }
  return false;
}

}  // namespace varnel::internal

namespace varnel {

bool ClsRecordset::UndoRecord() {
  internal::RecordsetState& rs = internal::RecordsetAccess::State(*this);
  internal::ValidScope valid(rs);
  return internal::Trapped(SysErrState, true, [&] { return internal::UndoPendingLayer(rs); });
}

}  // namespace varnel
