// The row pointer, the row count and the simple state properties of
// ClsRecordset. The row count is not stored: it is the upper bound of the
// mark arrays.
#include "messages/error_trap.h"
#include "recordset/recordset_state.h"
#include "recordset/row_store.h"

namespace varnel {

int32_t ClsRecordset::Rows() const {
  return internal::Quiet(int32_t{0}, [&] { return d_->Rows(); });
}

void ClsRecordset::Rows(int32_t Value) {
  internal::Trapped(SysErrState, true, [&] {
    const internal::RowsResetNotice notice(d_->row_observers);
    internal::ResizeRows(*d_, Value);
    return false;
  });
}

int32_t ClsRecordset::AbsolutePosition() {
  return internal::Quiet(int32_t{0}, [&] { return internal::ClampedCurrentRow(*d_); });
}

Enum_EditStatus ClsRecordset::EditStatus() const { return d_->edit_status; }

void ClsRecordset::EditStatus(Enum_EditStatus Value) {
  internal::Trapped(SysErrState, true, [&] {
    d_->SetEditStatusValue(Value);
    return false;
  });
}

Enum_SelectState ClsRecordset::SelectState() const { return d_->select_state; }

bool ClsRecordset::Locked() const { return d_->locked; }

void ClsRecordset::Locked(bool Value) {
  internal::Trapped(SysErrState, true, [&] {
    if (Value != d_->locked) {
      d_->locked = Value;
      d_->Raise(Ev_RecordPointerChange, &ClsRecordsetEvents::RecordPointerChange);
    }
    return false;
  });
}

}  // namespace varnel
