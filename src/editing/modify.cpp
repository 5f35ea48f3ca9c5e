// Modify: the one way a screen changes a value. It checks the permission of
// the row the change goes to, takes the undo snapshot when a row starts being
// edited, has the value checked and normalised by FormatValue, stores it and
// moves the edit status to E_Modify.
#include "recordset/edit_state.h"
#include "editing/editing.h"
#include "editing/row_work.h"
#include "messages/error_trap.h"
#include "recordset/row_store.h"
#include "recordset/save_step.h"
#include "varnel/messages.h"

namespace varnel::internal {
namespace {

// The status the change is made under, which also decides its permission:
// the pending edit's own when the change goes to its row, or when a deletion
// waits (its save comes first; EditModify does not apply to it); otherwise an
// existing row starts being edited, as from E_Default, and the edit of the
// other row is saved first.
Enum_EditStatus EffectiveStatus(const RecordsetState& rs, int32_t target) {
  const Enum_EditStatus status = rs.edit_status;
  if (IsRowPending(status)) {
    const std::optional<int32_t> pending = PendingRow(rs);
    return pending && *pending != target ? E_Default : status;
  }
  return status;
}

bool Refused(RecordsetState& rs, Enum_EditStatus effective, const ClsFields& field, int32_t row) {
  const ClsRecordset& self = rs.self;
  if (!self.EditAddNew && IsInsertion(effective)) {
    return true;
  }
  if (!self.EditModify && (effective == E_Default || effective == E_Modify)) {
    return true;
  }
  return effective != E_Query && (!field.Edit || !rs.self.GetEdit(row));
}

bool RaiseModifyBefore(RecordsetState& rs, const ClsFields& field, const Variant& value) {
  bool cancel = false;
  rs.Raise(Ev_ModifyBefore, &ClsRecordsetEvents::ModifyBefore, field.Name, value, cancel);
  return cancel;
}

void RaiseModifyAfter(RecordsetState& rs) {
  rs.Raise(Ev_SysModifyAfter, &ClsRecordsetEvents::SysModifyAfter);
  rs.Raise(Ev_ModifyAfter, &ClsRecordsetEvents::ModifyAfter);
}

// Formats and stores one value; true (after the user was told) when it failed.
bool ApplyFieldValue(RecordsetState& rs, const Variant& key, ClsFields& field, const Variant& value,
                     int32_t row) {
  return Trapped(rs.self.SysErrState, true, [&] {
    Variant formatted = value;
    if (rs.self.FormatValue(key, formatted, row)) {
      return true;  // FormatValue has told the user why
    }
    if (IsMainBoolean(field)) {
      field.SetValue(Variant(int16_t{1}), row);
      rs.Raise(Ev_MainFieldChange, &ClsRecordsetEvents::MainFieldChange, field.Name);
    } else {
      field.SetValue(formatted, row);
    }
    return false;
  });
}

// In query mode the typed text becomes the field's criterion; rows and
// permissions do not matter and the client cannot cancel.
bool ModifyCriterion(RecordsetState& rs, ClsFields& field, const Variant& value) {
  RaiseModifyBefore(rs, field, value);
  field.SetValue(value, 0);
  RaiseModifyAfter(rs);
  return false;
}

bool ModifyPendingRow(RecordsetState& rs, const Variant& key, ClsFields& field,
                      const Variant& value, int32_t row) {
  if (RaiseModifyBefore(rs, field, value) || ApplyFieldValue(rs, key, field, value, row)) {
    return true;
  }
  RaiseModifyAfter(rs);
  return false;
}

// A row starts being edited: snapshot first (a cancelled change keeps it).
bool ModifyStartingEdit(RecordsetState& rs, const Variant& key, ClsFields& field,
                        const Variant& value, int32_t row) {
  TakeSnapshot(rs, ResolveRow(rs, row));
  if (RaiseModifyBefore(rs, field, value) || ApplyFieldValue(rs, key, field, value, row)) {
    return true;
  }
  if (!IsMainBoolean(field)) {
    MoveStatus(rs, EditOp::kModify);
  }
  RaiseModifyAfter(rs);
  return false;
}

// Ends what is pending before another row starts being edited. False when the
// change must not go on.
bool ClearTheWay(RecordsetState& rs) {
  if (PlanMove(rs.edit_status, EditOp::kModify).prelude == Prelude::kDropRemoved) {
    DropRemovedRow(rs);  // the removed row never reached the database
    return true;
  }
  return SaveStep(rs) == E_Succeed;
}

bool RefuseReadOnly(RecordsetState& rs) {
  MdlProcess::ShowInfor(LoadResString(150), rs.self.SysErrState);
  return true;
}

// Another row starts being edited while something is pending: save that first.
bool ModifyAfterSaving(RecordsetState& rs, Enum_EditStatus effective, const Variant& key,
                       ClsFields& field, const Variant& value, int32_t row) {
  const Enum_EditStatus status = rs.edit_status;
  const int32_t rows_before = rs.Rows();
  const int32_t put_back_at = rs.deleted_row;
  if (!ClearTheWay(rs)) {
    // A pending deletion that cannot be saved ends the change silently, as
    // UpdateRecord has reported; an unsaved edit of another row refuses it.
    return !IsDeletion(status);
  }
  if (row != 0 && rs.Rows() > rows_before && put_back_at <= row) {
    ++row;  // a discarded deletion put its row back before the target
  }
  if (Refused(rs, effective, field, row)) {
    return RefuseReadOnly(rs);
  }
  return ModifyStartingEdit(rs, key, field, value, row);
}

}  // namespace

bool ModifyField(RecordsetState& rs, const Variant& key, const Variant& value, int32_t row) {
  const Enum_EditStatus status = rs.edit_status;
  if (!PlanMove(status, EditOp::kModify).to) {
    return false;
  }
  // Held for the whole change: a handler may remove the field meanwhile.
  const std::shared_ptr<ClsFields> held = rs.fields[FieldIndex(rs, key)];
  ClsFields& field = *held;
  const ErrorFieldScope error_field(field.Name);
  if (status == E_Query) {
    return ModifyCriterion(rs, field, value);
  }
  if (row != 0) {
    RequireRow(rs, row);
  }
  const Enum_EditStatus effective = EffectiveStatus(rs, ResolveRow(rs, row));
  if (Refused(rs, effective, field, row)) {
    return RefuseReadOnly(rs);
  }
  if (IsRowPending(effective)) {  // the change goes to the row already being edited
    return ModifyPendingRow(rs, key, field, value, row);
  }
  if (status == E_Default) {
    return ModifyStartingEdit(rs, key, field, value, row);
  }
  return ModifyAfterSaving(rs, effective, key, field, value, row);
}

}  // namespace varnel::internal

namespace varnel {

bool ClsRecordset::Modify(const Variant& Field, const Variant& Value, int32_t Row) {
  internal::RecordsetState& rs = internal::RecordsetAccess::State(*this);
  internal::ValidScope valid(rs);
  return internal::Trapped(SysErrState, true,
                           [&] { return internal::ModifyField(rs, Field, Value, Row); });
}

}  // namespace varnel
