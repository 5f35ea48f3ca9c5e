// DeleteRecord: the current row leaves memory at once and is kept in
// DeletedValues, so that UndoRecord or a failed save can put it back.
#include "editing/editing.h"
#include "editing/row_work.h"
#include "fields/field_access.h"
#include "messages/error_trap.h"
#include "recordset/edit_state.h"
#include "recordset/row_store.h"
#include "recordset/save_step.h"

namespace varnel::internal {
namespace {

bool MayDelete(const RecordsetState& rs) {
  const Enum_EditStatus status = rs.edit_status;
  if (!PlanMove(status, EditOp::kDeleteRecord).to) {
    return false;
  }
  // A row that was never saved may always be removed again.
  return rs.self.EditDelete || IsInsertion(status);
}

// An earlier deletion is saved before the next one; so is an edit of a row
// other than the one being deleted, which would otherwise never be saved.
bool MustSaveFirst(RecordsetState& rs) {
  if (PlanMove(rs.edit_status, EditOp::kDeleteRecord).prelude == Prelude::kSaveFirst) {
    return true;
  }
  const std::optional<int32_t> pending = PendingRow(rs);
  return pending && *pending != ClampedCurrentRow(rs);
}

void RemoveCurrentRow(RecordsetState& rs) {
  BulkScope bulk;
  const int32_t row = ClampedCurrentRow(rs);
  RemoveRowKeepingIt(rs, row);
  RefreshTotals(rs, row);
}

}  // namespace

bool DeleteCurrentRow(RecordsetState& rs) {
  if (!MayDelete(rs)) {
    return true;
  }
  if (rs.Rows() == 0) {
    return false;
  }
  if (MustSaveFirst(rs)) {
    if (SaveStep(rs) != E_Succeed || rs.Rows() == 0) {
      return false;
    }
    if (!MayDelete(rs)) {
      return true;  // the row now to be deleted is a saved one
    }
  }
  bool cancel = false;
  rs.Raise(Ev_DeleteRecordBefore, &ClsRecordsetEvents::DeleteRecordBefore, cancel);
  if (cancel) {
    return false;
  }
  RemoveCurrentRow(rs);
  if (rs.Rows() > 0) {
    RaiseMainFieldChange(rs);
  }
  MoveStatus(rs, EditOp::kDeleteRecord);
  rs.Raise(Ev_SysDeleteRecordAfter, &ClsRecordsetEvents::SysDeleteRecordAfter);
  rs.Raise(Ev_DeleteRecordAfter, &ClsRecordsetEvents::DeleteRecordAfter);
  rs.Raise(Ev_RecordPointerChange, &ClsRecordsetEvents::RecordPointerChange);
  return false;
}

}  // namespace varnel::internal

namespace varnel {

bool ClsRecordset::DeleteRecord() {
  internal::RecordsetState& rs = internal::RecordsetAccess::State(*this);
  internal::ValidScope valid(rs);
  return internal::Trapped(SysErrState, true, [&] { return internal::DeleteCurrentRow(rs); });
}

}  // namespace varnel
