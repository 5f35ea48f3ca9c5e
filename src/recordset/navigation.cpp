// Moving the current row. A move offers the client a veto, then saves any
// pending edit (the save step); whether the pointer really moves depends
// on that save, but the after-events are raised either way so that a screen
// always repaints.
#include "messages/error_trap.h"
#include "recordset/edit_state.h"
#include "recordset/row_store.h"
#include "recordset/save_step.h"
#include "varnel/messages.h"

namespace varnel::internal {
namespace {

[[noreturn]] void RefuseMove() { throw VbError(2103, LoadResString(102)); }

void MoveTo(RecordsetState& rs, int32_t target) {
  if (target == rs.current_row || rs.edit_status == E_Query) {
    return;
  }
  bool cancel = false;
  rs.Raise(Ev_MoveRecordBefore, &ClsRecordsetEvents::MoveRecordBefore, cancel);
  if (cancel) {
    return;
  }
  const Enum_EditRecord saved = SaveStep(rs);
  // A roll-back that removed a row before the target shifts the target up.
  if (saved == E_OtherErr && rs.current_row <= target) {
    --target;
  }
  if (saved == E_Succeed || saved == E_OtherErr) {
    rs.current_row = target;
  }
  rs.Raise(Ev_SysMoveRecordAfter, &ClsRecordsetEvents::SysMoveRecordAfter);
  rs.Raise(Ev_MoveRecordAfter, &ClsRecordsetEvents::MoveRecordAfter);
  rs.Raise(Ev_RecordPointerChange, &ClsRecordsetEvents::RecordPointerChange);
}

// Runs one of the four moves: idle states do nothing, a refusal is reported.
template <class Target>
bool Move(ClsRecordset& self, RecordsetState& rs, Target target) {
  ValidScope valid(rs);
  return Trapped(self.SysErrState, true, [&] {
    // In query mode the rows are hidden behind the criteria; with nothing
    // opened there is nothing to move over.
    if (!IsIdle(rs.edit_status)) {
      self.AbsolutePosition(target());
    }
    return false;
  });
}

}  // namespace
}  // namespace varnel::internal

namespace varnel {

void ClsRecordset::AbsolutePosition(int32_t Value) {
  internal::ValidScope valid(*d_);
  internal::Trapped(SysErrState, true, [&] {
    internal::MoveTo(*d_, Value);
    return false;
  });
}

bool ClsRecordset::MoveFirst() {
  return internal::Move(*this, *d_, [&] {
    if (Rows() == 0) {
      internal::RefuseMove();
    }
    return 1;
  });
}

bool ClsRecordset::MovePrevious() {
  return internal::Move(*this, *d_, [&] {
    const int32_t current = AbsolutePosition();
    if (current == 1) {
      internal::RefuseMove();
    }
    return current - 1;
  });
}

bool ClsRecordset::MoveNext() {
  return internal::Move(*this, *d_, [&] {
    const int32_t current = AbsolutePosition();
    if (current == Rows()) {
      internal::RefuseMove();
    }
    return current + 1;
  });
}

bool ClsRecordset::MoveLast() {
  return internal::Move(*this, *d_, [&] {
    const int32_t rows = Rows();
    if (rows == 0) {
      internal::RefuseMove();
    }
    return rows;
  });
}

}  // namespace varnel
