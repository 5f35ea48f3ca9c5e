// Query by form: NewQuery and RefineQuery save any pending edit and enter
// E_Query, where Modify writes each field's QueryValue; ExecuteQuery turns the
// criteria into the condition and reloads; CancelQuery gives back the criteria
// saved on entry. SavedQueryValues exists from entering query mode until it ends.
#include "messages/error_trap.h"
#include "recordset/edit_state.h"
#include "recordset/save_step.h"

namespace varnel::internal {
namespace {

enum class QueryStart { kEmptyCriteria, kKeepCriteria };

struct QueryEvents {
  EventDispId before_id;
  void (ClsRecordsetEvents::*before)(bool&);
  EventDispId sys_after_id;
  void (ClsRecordsetEvents::*sys_after)();
  EventDispId after_id;
  void (ClsRecordsetEvents::*after)();
};

constexpr QueryEvents kNewQuery{Ev_NewQueryBefore,   &ClsRecordsetEvents::NewQueryBefore,
                                Ev_SysNewQueryAfter, &ClsRecordsetEvents::SysNewQueryAfter,
                                Ev_NewQueryAfter,    &ClsRecordsetEvents::NewQueryAfter};
constexpr QueryEvents kRefineQuery{Ev_RefineQueryBefore,   &ClsRecordsetEvents::RefineQueryBefore,
                                   Ev_SysRefineQueryAfter, &ClsRecordsetEvents::SysRefineQueryAfter,
                                   Ev_RefineQueryAfter,    &ClsRecordsetEvents::RefineQueryAfter};
constexpr QueryEvents kExecuteQuery{
    Ev_ExecuteQueryBefore,   &ClsRecordsetEvents::ExecuteQueryBefore,
    Ev_SysExecuteQueryAfter, &ClsRecordsetEvents::SysExecuteQueryAfter,
    Ev_ExecuteQueryAfter,    &ClsRecordsetEvents::ExecuteQueryAfter};
constexpr QueryEvents kCancelQuery{Ev_CancelQueryBefore,   &ClsRecordsetEvents::CancelQueryBefore,
                                   Ev_SysCancelQueryAfter, &ClsRecordsetEvents::SysCancelQueryAfter,
                                   Ev_CancelQueryAfter,    &ClsRecordsetEvents::CancelQueryAfter};

// True when the client cancelled.
bool RaiseBefore(RecordsetState& rs, const QueryEvents& events) {
  bool cancel = false;
  rs.Raise(events.before_id, events.before, cancel);
  return cancel;
}

void RaiseAfter(RecordsetState& rs, const QueryEvents& events) {
  rs.Raise(events.sys_after_id, events.sys_after);
  rs.Raise(events.after_id, events.after);
  rs.Raise(Ev_RecordPointerChange, &ClsRecordsetEvents::RecordPointerChange);
}

bool EnterQueryMode(RecordsetState& rs, const QueryEvents& events, QueryStart start) {
  if (RaiseBefore(rs, events) || SaveStep(rs) != E_Succeed) {
    return false;
  }
  std::vector<Variant> saved;
  saved.reserve(rs.fields.size());
  for (const auto& field : rs.fields) {
    saved.emplace_back(field->QueryValue);
    if (start == QueryStart::kEmptyCriteria) {
      field->QueryValue.clear();
    }
  }
  rs.saved_query_values = std::move(saved);
  MoveStatus(rs, EditOp::kEnterQuery);
  rs.current_row = 1;  // directly: entering query mode is not a move
  RaiseAfter(rs, events);
  return false;
}

// A condition that cannot be built, or a load that fails on it (the database
// refuses the condition, the server is gone), keeps the saved criteria and
// query mode, so the user can correct them or cancel; otherwise the query
// ends, run or cancelled.
bool RunQuery(RecordsetState& rs) {
  if (!RaiseBefore(rs, kExecuteQuery)) {
    std::string condition;
    if (rs.self.GetCondition(condition) || rs.self.RefreshDataSource()) {
      return true;
    }
    RaiseAfter(rs, kExecuteQuery);
  }
  rs.saved_query_values.reset();
  return false;
}

bool LeaveQueryMode(RecordsetState& rs) {
  if (rs.edit_status != E_Query || RaiseBefore(rs, kCancelQuery)) {
    return false;
  }
  if (!rs.saved_query_values) {
    RaiseError(9);  // a cancelled ExecuteQuery has already dropped the saved criteria
  }
  const std::vector<Variant>& saved = *rs.saved_query_values;
  for (size_t i = 0; i < rs.fields.size() && i < saved.size(); ++i) {
    rs.fields[i]->QueryValue = saved[i].IsNull() ? std::string() : CStr(saved[i]);
  }
  rs.saved_query_values.reset();
  MoveStatus(rs, EditOp::kLeaveQuery);
  RaiseAfter(rs, kCancelQuery);
  return false;
}

}  // namespace
}  // namespace varnel::internal

namespace varnel {

bool ClsRecordset::NewQuery() {
  internal::RecordsetState& rs = internal::RecordsetAccess::State(*this);
  return internal::Trapped(SysErrState, true, [&] {
    return internal::EnterQueryMode(rs, internal::kNewQuery, internal::QueryStart::kEmptyCriteria);
  });
}

bool ClsRecordset::RefineQuery() {
  internal::RecordsetState& rs = internal::RecordsetAccess::State(*this);
  return internal::Trapped(SysErrState, true, [&] {
    return internal::EnterQueryMode(rs, internal::kRefineQuery,
                                    internal::QueryStart::kKeepCriteria);
  });
}

bool ClsRecordset::ExecuteQuery() {
  internal::RecordsetState& rs = internal::RecordsetAccess::State(*this);
  return internal::Trapped(SysErrState, true, [&] { return internal::RunQuery(rs); });
}

bool ClsRecordset::CancelQuery() {
  internal::RecordsetState& rs = internal::RecordsetAccess::State(*this);
  return internal::Trapped(SysErrState, true, [&] { return internal::LeaveQueryMode(rs); });
}

// Leaves query mode (restoring the saved criteria) and then empties every criterion.
bool ClsRecordset::ClearQuery() {
  internal::RecordsetState& rs = internal::RecordsetAccess::State(*this);
  return internal::Trapped(SysErrState, true, [&] {
    CancelQuery();
    for (const auto& field : rs.fields) {
      field->QueryValue.clear();
    }
    return false;
  });
}

}  // namespace varnel
