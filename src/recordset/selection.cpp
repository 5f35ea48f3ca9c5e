// The two marks beside every row: the selection a grid drives with the
// keyboard modifiers, and the edit mark that says whether a row may change.
//
// SelectState: S_None means one row, the current one, counts as selected (the
// marks are not consulted for Row 0); S_Multi means the marks count. Shift,
// Ctrl, SelectAllRows and InvertSelectRows lead to S_Multi and first save any
// pending edit; ClearSelectRows, a None selection, a load and CloseDataSource
// lead back to S_None.
#include <algorithm>

#include "messages/error_trap.h"
#include "recordset/column_total.h"
#include "recordset/edit_state.h"
#include "recordset/recordset_state.h"
#include "recordset/row_store.h"
#include "recordset/save_step.h"
#include "varnel/messages.h"

namespace varnel::internal {
namespace {

// The mark of row (0..Rows); error 9 outside the array.
uint8_t& MarkAt(std::vector<uint8_t>& marks, int32_t row) {
  if (row < 0 || static_cast<size_t>(row) >= marks.size()) {
    RaiseError(9);
  }
  return marks[static_cast<size_t>(row)];
}

// One pass over the marks; the selection totals follow in one step.
void SetAllMarks(RecordsetState& rs, bool value) {
  if (rs.select_marks.size() > 1) {
    std::fill(rs.select_marks.begin() + 1, rs.select_marks.end(), value ? 1 : 0);
  }
  FollowWholeSelection(rs, value ? WholeSelection::All : WholeSelection::None);
}

// Sets one mark; the selection totals follow when it flips.
void SetMark(RecordsetState& rs, uint8_t& mark, int32_t row, bool value) {
  if ((mark != 0) != value) {
    mark = value ? 1 : 0;
    FollowSelectMark(rs, row, value);
  }
}

void ChangedSelection(RecordsetState& rs, Enum_SelectState state) {
  rs.select_state = state;
  rs.Raise(Ev_ChangeSelectRows, &ClsRecordsetEvents::ChangeSelectRows);
}

void SelectOnly(RecordsetState& rs, bool value, int32_t row) {
  rs.select_anchor = 0;
  row = ResolveRow(rs, row);
  uint8_t& mark = MarkAt(rs.select_marks, row);
  SetAllMarks(rs, false);
  SetMark(rs, mark, row, value);
  const Enum_SelectState before = rs.select_state;
  rs.select_state = S_None;
  if (before == S_Multi) {
    rs.Raise(Ev_ChangeSelectRows, &ClsRecordsetEvents::ChangeSelectRows);
  }
}

// Marks the range from the anchor to row; the anchor stays for the next Shift.
void SelectRange(RecordsetState& rs, int32_t row) {
  if (rs.select_anchor == 0) {
    rs.select_anchor = ClampedCurrentRow(rs);
  }
  row = ResolveRow(rs, row);
  const int32_t first = std::min(rs.select_anchor, row);
  const int32_t last = std::max(rs.select_anchor, row);
  MarkAt(rs.select_marks, first);
  MarkAt(rs.select_marks, last);
  // Only the marks that flip move the selection totals: extending a range by
  // one row costs one row's contribution.
  for (size_t r = 1; r < rs.select_marks.size(); ++r) {
    const bool in_range = static_cast<int32_t>(r) >= first && static_cast<int32_t>(r) <= last;
    SetMark(rs, rs.select_marks[r], static_cast<int32_t>(r), in_range);
  }
  ChangedSelection(rs, S_Multi);
}

void SelectOneMore(RecordsetState& rs, bool value, int32_t row) {
  const int32_t resolved = ResolveRow(rs, row);
  uint8_t& mark = MarkAt(rs.select_marks, resolved);
  rs.select_anchor = 0;
  SetMark(rs, mark, resolved, value);
  ChangedSelection(rs, S_Multi);
}

// The selection changes only when the pending edit could be saved.
bool PendingEditSaved(RecordsetState& rs) { return SaveStep(rs) == E_Succeed; }

}  // namespace
}  // namespace varnel::internal

namespace varnel {

bool ClsRecordset::SetEdit(bool Value, int32_t Row) {
  return internal::Trapped(SysErrState, true, [&] {
    const internal::ValidScope valid(*d_);
    if (d_->edit_status == E_Query) {
      return false;
    }
    // With a lock field, the edit marks follow its values and nothing else.
    for (const std::shared_ptr<ClsFields>& field : d_->fields) {
      if (field->FieldType == F_Locked) {
        MsgBox(field->Name + "是Edit(),不能用SetEdit直接更改Edit()", 0, "");
        return false;
      }
    }
    internal::MarkAt(d_->edit_marks, internal::ResolveRow(*d_, Row)) = Value;
    return false;
  });
}

bool ClsRecordset::GetEdit(int32_t Row) {
  return internal::Trapped(SysErrState, true, [&] {
    if (d_->edit_status == E_Query) {
      return true;
    }
    if (Row != 0) {
      return internal::MarkAt(d_->edit_marks, Row) != 0;
    }
    const int32_t current = internal::ClampedCurrentRow(*d_);
    if (current > 0 && current <= d_->Rows()) {
      return internal::MarkAt(d_->edit_marks, current) != 0 && !d_->locked;
    }
    return false;
  });
}

bool ClsRecordset::GetSelectRow(int32_t Row) {
  return internal::Trapped(SysErrState, true, [&] {
    if (d_->select_state == S_None && Row == 0) {
      return true;  // the current row is the selection
    }
    return internal::MarkAt(d_->select_marks, internal::ResolveRow(*d_, Row)) != 0;
  });
}

bool ClsRecordset::SysSetMutliSelectRows(bool Value, int32_t Row, Enum_SelectRow SelectOption) {
  return internal::Trapped(SysErrState, true, [&] {
    const internal::ValidScope valid(*d_);
    if (d_->edit_status == E_Query) {
      return false;
    }
    switch (SelectOption) {
      case None:
        internal::SelectOnly(*d_, Value, Row);
        break;
      case Shift:
        if (internal::PendingEditSaved(*d_)) {
          internal::SelectRange(*d_, Row);
        }
        break;
      case Ctrl:
        if (internal::PendingEditSaved(*d_)) {
          internal::SelectOneMore(*d_, Value, Row);
        }
        break;
    }
    return false;
  });
}

bool ClsRecordset::SelectAllRows() {
  return internal::Trapped(SysErrState, true, [&] {
    const internal::ValidScope valid(*d_);
    if (d_->edit_status != E_Query && internal::PendingEditSaved(*d_)) {
      internal::SetAllMarks(*d_, true);
      d_->select_anchor = 0;
      internal::ChangedSelection(*d_, S_Multi);
    }
    return false;
  });
}

bool ClsRecordset::InvertSelectRows() {
  return internal::Trapped(SysErrState, true, [&] {
    const internal::ValidScope valid(*d_);
    if (d_->edit_status != E_Query && internal::PendingEditSaved(*d_)) {
      for (size_t row = 1; row < d_->select_marks.size(); ++row) {
        d_->select_marks[row] = !d_->select_marks[row];
      }
      internal::FollowWholeSelection(*d_, internal::WholeSelection::Inverted);
      internal::ChangedSelection(*d_, S_Multi);
    }
    return false;
  });
}

bool ClsRecordset::ClearSelectRows() {
  return internal::Trapped(SysErrState, true, [&] {
    const internal::ValidScope valid(*d_);
    if (d_->edit_status != E_Query) {
      internal::SetAllMarks(*d_, false);
      internal::ChangedSelection(*d_, S_None);
    }
    return false;
  });
}

}  // namespace varnel
