// UpdateRecord: the end of every pending edit. The client writes the row in
// its UserUpdateRecord handler and answers; the recordset then commits the
// edit in memory, keeps it pending, or takes it back so that memory again
// matches the database.
#include "editing/editing.h"
#include "editing/row_work.h"
#include "fields/field_access.h"
#include "messages/error_trap.h"
#include "recordset/edit_state.h"
#include "recordset/row_store.h"
#include "recordset/save_step.h"
#include "varnel/messages.h"

namespace varnel::internal {
namespace {

// Locked, or a current row whose edit mark is off, ends the pending edit
// without asking the client. Deletions are exempt from the row test: the
// current row is then not the row being saved.
bool MustDiscard(RecordsetState& rs, Enum_EditStatus status) {
  if (rs.locked) {
    return true;
  }
  if (IsDeletionToSave(status) || rs.Rows() == 0) {
    return false;
  }
  const int32_t row = ClampedCurrentRow(rs);
  return rs.edit_marks[row] == 0;
}

// Takes the edit back in memory (so that the rows again match the database)
// and ends it.
void TakeBack(RecordsetState& rs, Enum_EditStatus status, EditOp op) {
  RollBackInMemory(rs, status);
  EraseSavedValues(rs);
  EraseDeletedValues(rs);
  MoveStatus(rs, op);
}

std::string ShownName(const ClsFields& field) {
  return field.DisplayName.empty() ? field.Name : field.DisplayName;
}

// Every field that may not be Null must hold a value in the pending row;
// the first that does not is reported and keeps the edit pending.
bool PendingRowIsComplete(RecordsetState& rs) {
  const int32_t row = PendingRow(rs).value_or(ClampedCurrentRow(rs));
  for (const auto& field : rs.fields) {
    if (field->EnableNull) {
      continue;
    }
    const auto& values = FieldAccess::Values(*field);
    const bool blank =
        row < 0 || static_cast<size_t>(row) >= values.size() || values[row].IsBlank();
    if (blank) {
      const ErrorFieldScope error_field(field->Name);
      MdlProcess::ShowErr(LoadResString(101), 94,
                          LoadResString(104) + "'" + ShownName(*field) + "'" + LoadResString(105),
                          rs.self.SysErrState);
      return false;
    }
  }
  return true;
}

void RaiseSaveEvents(RecordsetState& rs, bool pointer_change2) {
  rs.Raise(Ev_SysUpdateRecordAfter, &ClsRecordsetEvents::SysUpdateRecordAfter);
  rs.Raise(Ev_UpdateRecordAfter, &ClsRecordsetEvents::UpdateRecordAfter);
  rs.Raise(Ev_RecordPointerChange, &ClsRecordsetEvents::RecordPointerChange);
  if (pointer_change2) {
    rs.Raise(Ev_RecordPointerChange2, &ClsRecordsetEvents::RecordPointerChange2);
  }
}

void Commit(RecordsetState& rs, Enum_EditStatus status) {
  if (status == E_Modify || status == E_ModifyDelete) {
    EraseSavedValues(rs);
  }
  if (IsDeletionToSave(status)) {
    EraseDeletedValues(rs);
  }
  if (status == E_AddNew && rs.Rows() == 1) {
    RaiseMainFieldChange(rs);
  }
  MoveStatus(rs, EditOp::kCommit);
  if (AsksClient(status)) {
    RaiseSaveEvents(rs, status != E_ModifyDelete);
  } else {
    rs.Raise(Ev_RecordPointerChange2, &ClsRecordsetEvents::RecordPointerChange2);
  }
}

}  // namespace

Enum_EditRecord SavePendingEdit(RecordsetState& rs) {
  if (IsIdle(rs.edit_status)) {
    return E_Succeed;
  }
  bool cancel = false;
  rs.Raise(Ev_UpdateRecordBefore, &ClsRecordsetEvents::UpdateRecordBefore, cancel);
  if (cancel) {
    return E_Defeat;
  }
  const Enum_EditStatus status = rs.edit_status;
  if (MustDiscard(rs, status)) {
    TakeBack(rs, status, EditOp::kDiscard);
    rs.Raise(Ev_RecordPointerChange2, &ClsRecordsetEvents::RecordPointerChange2);
    return E_Succeed;
  }
  if (IsRowPending(status) && !PendingRowIsComplete(rs)) {
    return E_Defeat;
  }
  Enum_EditRecord answer = E_Succeed;
  if (AsksClient(status)) {
    rs.Raise(Ev_UserUpdateRecord, &ClsRecordsetEvents::UserUpdateRecord, answer);
  }
  switch (answer) {
    case E_Succeed:
      Commit(rs, status);
      return E_Succeed;
    case E_OtherErr:
      TakeBack(rs, status, EditOp::kRollBack);
      RaiseSaveEvents(rs, true);
      return E_OtherErr;
    default:  // E_Defeat, or an answer the recordset does not know: keep the edit
      return E_Defeat;
  }
}

Enum_EditRecord SaveStep(RecordsetState& rs) {
  return Trapped(rs.self.SysErrState, E_Defeat, [&] { return SavePendingEdit(rs); });
}

}  // namespace varnel::internal

namespace varnel {

Enum_EditRecord ClsRecordset::UpdateRecord() {
  internal::RecordsetState& rs = internal::RecordsetAccess::State(*this);
  internal::ValidScope valid(rs);
  const internal::OperationScope operation("UpdateRecord");  // the save step's trap is shared
  // A failure while saving keeps the edit pending: nothing is lost, and the
  // user can save again or take the edit back.
  return internal::SaveStep(rs);
}

}  // namespace varnel
