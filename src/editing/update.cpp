// UpdateRecord: the end of every pending edit. The client writes the row in
// its UserUpdateRecord handler and answers; the recordset then commits the
// edit in memory, keeps it pending, or takes it back so that memory again
// matches the database.
#include "editing/edit_status.h"
#include "editing/editing.h"
#include "editing/row_work.h"
#include "fields/field_access.h"
#include "messages/error_trap.h"
#include "recordset/row_store.h"
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
  if (status == E_Delete || status == E_ModifyDelete || rs.Rows() == 0) {
    return false;
  }
  const int32_t row = ClampedCurrentRow(rs);
  return rs.edit_marks[row] == 0;
}

// The discarded edit is also taken back in memory: otherwise the screen would
// go on showing a change that no longer waits to be saved.
void Discard(RecordsetState& rs, Enum_EditStatus status) {
  {
    BulkScope bulk;
    RollBackInMemory(rs, status);
  }
  rs.SetEditStatusValue(E_Default);
  EraseSavedValues(rs);
  EraseDeletedValues(rs);
  rs.Raise(Ev_RecordPointerChange2, &ClsRecordsetEvents::RecordPointerChange2);
}

bool NeedsValidation(Enum_EditStatus status) {
  return status == E_Modify || status == E_AddNew || status == E_Copy;
}

bool AsksClient(Enum_EditStatus status) {
  return NeedsValidation(status) || status == E_Delete || status == E_ModifyDelete;
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
  switch (status) {
    case E_Modify:
      EraseSavedValues(rs);
      break;
    case E_Delete:
      EraseDeletedValues(rs);
      break;
    case E_ModifyDelete:
      EraseSavedValues(rs);
      EraseDeletedValues(rs);
      break;
    case E_AddNew:
      if (rs.Rows() == 1) {
        RaiseMainFieldChange(rs);
      }
      break;
    default:
      break;
  }
  rs.SetEditStatusValue(E_Default);
  if (AsksClient(status)) {
    RaiseSaveEvents(rs, status != E_ModifyDelete);
  } else {
    rs.Raise(Ev_RecordPointerChange2, &ClsRecordsetEvents::RecordPointerChange2);
  }
}

void RollBack(RecordsetState& rs, Enum_EditStatus status) {
  {
    BulkScope bulk;
    RollBackInMemory(rs, status);
  }
  EraseSavedValues(rs);
  EraseDeletedValues(rs);
  rs.SetEditStatusValue(E_Default);
  RaiseSaveEvents(rs, true);
}

}  // namespace

Enum_EditRecord SavePendingEdit(RecordsetState& rs) {
  if (rs.edit_status == E_Nothing || rs.edit_status == E_Query) {
    return E_Succeed;
  }
  bool cancel = false;
  rs.Raise(Ev_UpdateRecordBefore, &ClsRecordsetEvents::UpdateRecordBefore, cancel);
  if (cancel) {
    return E_Defeat;
  }
  const Enum_EditStatus status = rs.edit_status;
  if (MustDiscard(rs, status)) {
    Discard(rs, status);
    return E_Succeed;
  }
  if (NeedsValidation(status) && !PendingRowIsComplete(rs)) {
    return E_Defeat;
  }
  Enum_EditRecord answer = E_Succeed;
  if (AsksClient(status)) {
    rs.Raise(Ev_UserUpdateRecord, &ClsRecordsetEvents::UserUpdateRecord, answer);
  }
  switch (answer) {
    case E_Succeed:
      Commit(rs, status);
      break;
    case E_OtherErr:
      RollBack(rs, status);
      break;
    default:  // E_Defeat, or an answer the recordset does not know: keep the edit
      return E_Defeat;
  }
  AssertValid(rs);
  return answer;
}

}  // namespace varnel::internal

namespace varnel {

Enum_EditRecord ClsRecordset::UpdateRecord() {
  internal::RecordsetState& rs = internal::RecordsetAccess::State(*this);
  // A failure while saving keeps the edit pending: nothing is lost, and the
  // user can save again or take the edit back.
  return internal::Trapped(SysErrState, E_Defeat, [&] { return internal::SavePendingEdit(rs); });
}

}  // namespace varnel
