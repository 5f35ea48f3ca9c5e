// The life of a data source: InitDataSource and RefreshDataSource load the
// rows, CloseDataSource forgets the configuration.
//
// Both loads run the same steps (check the fields, compose the SQL, let a
// U_User client see the condition, open, copy the rows) and always end with
// their Sys...After, ...After and RecordPointerChange events. They differ in
// what happens before the load (Init restores the criteria kept by query mode;
// Refresh first saves a pending edit) and in when the status becomes E_Default.
#include "recordset/data_source.h"

#include <optional>
#include <utility>
#include <vector>

#include "fields/field_access.h"
#include "messages/error_trap.h"
#include "recordset/edit_state.h"
#include "recordset/row_store.h"
#include "recordset/save_step.h"
#include "varnel/messages.h"

namespace varnel::internal {
namespace {

enum class LoadKind { kInit, kRefresh };

// Init in query mode gives every field back the criterion kept when query
// mode was entered, so that the load runs on it. The typed criteria stay
// aside until the load is through: a load that fails puts them back.
class CriteriaRestore {
 public:
  void Begin(RecordsetState& rs) {
    active_ = true;
    kept_ = rs.saved_query_values;
    for (size_t i = 0; i < rs.fields.size(); ++i) {
      std::string& criterion = rs.fields[i]->QueryValue;
      typed_.push_back(criterion);
      if (kept_ && i < kept_->size()) {
        criterion = (*kept_)[i].IsBlank() ? std::string() : CStr((*kept_)[i]);
      }
    }
  }
  // The load went on: query mode ends.
  void Finish(RecordsetState& rs) {
    if (std::exchange(active_, false)) {
      rs.saved_query_values.reset();
      MoveStatus(rs, EditOp::kLeaveQuery);
    }
  }
  // The load failed: the criteria are as the user left them.
  void Undo(RecordsetState& rs) {
    for (size_t i = 0; active_ && i < rs.fields.size() && i < typed_.size(); ++i) {
      rs.fields[i]->QueryValue = typed_[i];
    }
    active_ = false;
  }

 private:
  bool active_ = false;
  std::optional<std::vector<Variant>> kept_;
  std::vector<std::string> typed_;
};

// Nothing could be opened: no status, no rows. Screens refuse to work so.
// The client's own connection and recordset stay as they are.
void MarkNothingLoaded(RecordsetState& rs) {
  MoveStatus(rs, EditOp::kOpenNothing);
  const RowsResetNotice notice(rs.row_observers);
  ResizeRows(rs, 0);
}

// The snapshots of a pending edit belong to rows that a load replaces.
void ForgetPendingEdit(RecordsetState& rs) {
  rs.saved_values.reset();
  rs.saved_row = 0;
  rs.deleted_values.reset();
  rs.deleted_row = 0;
}

// The database objects as they were before a load, so that a load that fails
// leaves them so: objects the load made are dropped, and a client's object
// that the load opened is closed again.
class SourceGuard {
 public:
  explicit SourceGuard(ClsRecordset& self)
      : self_(self),
        connection_(self.SFConnection),
        recordset_(self.SFRecordset),
        connection_was_open_(connection_ && connection_->State() > 0),
        recordset_was_open_(recordset_ && recordset_->State() > 0) {}

  void Restore() {
    Quiet(false, [&] {
      if (recordset_ && !recordset_was_open_ && recordset_->State() > 0) {
        recordset_->Close();
      }
      if (connection_ && !connection_was_open_ && connection_->State() > 0) {
        connection_->Close();
      }
      return false;
    });
    self_.SFConnection = connection_;
    self_.SFRecordset = recordset_;
  }

 private:
  ClsRecordset& self_;
  std::shared_ptr<db::Connection> connection_;
  std::shared_ptr<db::Recordset> recordset_;
  bool connection_was_open_;
  bool recordset_was_open_;
};

// A refresh reports in a message box, a first load in the error form.
void ReportLoadError(RecordsetState& rs, LoadKind kind) {
  if (kind == LoadKind::kInit) {
    ReportCurrentException(rs.self.SysErrState);
    return;
  }
  const CaughtError error = DescribeCurrentException();
  int16_t buttons = 0;
  MdlProcess::ShowErrBox(LoadResString(101), error.number, error.description, buttons,
                         rs.self.SysErrState);
}

enum class LoadResult { kLoaded, kNothingToOpen, kFailed };

// Opens and copies the rows into fresh storage; the rows they replace are put
// back when anything fails, so a failed load changes nothing. The failure is
// reported here. `missing` gets the messages about fields without a column.
LoadResult OpenAndLoad(RecordsetState& rs, LoadKind kind, std::vector<std::string>& missing) {
  SourceGuard source(rs.self);
  RowStorage replaced;
  bool swapped = false;
  std::optional<RowsResetNotice> reset;  // views see one reset, whatever the outcome
  try {
    if (!OpenSource(rs)) {
      return LoadResult::kNothingToOpen;
    }
    reset.emplace(rs.row_observers);
    SwapRows(rs, replaced);
    swapped = true;
    missing = LoadRows(rs);
  } catch (...) {
    if (swapped) {
      SwapRows(rs, replaced);
    }
    ReportLoadError(rs, kind);
    source.Restore();
    return LoadResult::kFailed;
  }
  ForgetPendingEdit(rs);
  if (rs.self.UserOpenMode == U_Auto) {
    ReleaseSource(rs);
  }
  return LoadResult::kLoaded;
}

// The steps before the rows are read; false when the load stops there.
bool PrepareLoad(RecordsetState& rs, LoadKind kind, CriteriaRestore& criteria) {
  if (!CheckFields(rs)) {
    return false;
  }
  if (kind == LoadKind::kRefresh) {
    if (IsPending(rs.edit_status) && SaveStep(rs) != E_Succeed) {
      return false;
    }
  } else if (rs.edit_status == E_Query) {
    criteria.Begin(rs);
  }
  if (ComposeSql(rs)) {
    return false;
  }
  if (rs.self.UserOpenMode == U_User) {
    const std::string condition = rs.recordset_condition;
    const std::string order_by = rs.recordset_order_by;
    if (kind == LoadKind::kInit) {
      rs.Raise(Ev_DataSourceInitUser, &ClsRecordsetEvents::DataSourceInitUser, condition, order_by);
    } else {
      rs.Raise(Ev_DataSourceRefreshUser, &ClsRecordsetEvents::DataSourceRefreshUser, condition,
               order_by);
    }
  }
  return true;
}

// Runs a load: true when it failed with an error, which was reported and
// changed nothing (no rows, status, current row or selection, no events).
bool RunLoad(RecordsetState& rs, LoadKind kind) {
  ValidScope valid(rs);
  CriteriaRestore criteria;
  std::vector<std::string> missing;
  if (PrepareLoad(rs, kind, criteria)) {
    switch (OpenAndLoad(rs, kind, missing)) {
      case LoadResult::kFailed:
        criteria.Undo(rs);
        return true;
      case LoadResult::kNothingToOpen:
        criteria.Finish(rs);
        MarkNothingLoaded(rs);
        break;
      case LoadResult::kLoaded:
        criteria.Finish(rs);
        MoveStatus(rs, EditOp::kLoad);
        break;
    }
  }
  criteria.Finish(rs);
  for (const std::string& text : missing) {
    MsgBox(text, 0, "");
  }
  rs.select_state = S_None;
  if (kind == LoadKind::kInit) {
    rs.Raise(Ev_SysDataSourceInit, &ClsRecordsetEvents::SysDataSourceInit);
    rs.Raise(Ev_DataSourceInit, &ClsRecordsetEvents::DataSourceInit);
  } else {
    rs.Raise(Ev_SysDataSourceRefresh, &ClsRecordsetEvents::SysDataSourceRefresh);
    rs.Raise(Ev_DataSourceRefresh, &ClsRecordsetEvents::DataSourceRefresh);
  }
  rs.Raise(Ev_RecordPointerChange, &ClsRecordsetEvents::RecordPointerChange);
  return false;
}

void CloseSource(RecordsetState& rs) {
  ClsRecordset& self = rs.self;
  // The database objects may be shared with the client: they are dropped, not closed.
  self.SFConnection.reset();
  self.SFRecordset.reset();
  for (std::string* text :
       {&self.ConnectString, &self.TableName, &self.FieldsName, &self.DefaultOrderBy,
        &self.DefaultCondition, &self.SysCondition, &self.OrderByField1, &self.OrderByField2,
        &self.OrderByField3, &rs.sql_text, &rs.recordset_condition, &rs.recordset_order_by,
        &self.Tag}) {
    text->clear();
  }
  self.OrderByAscending1 = self.OrderByAscending2 = self.OrderByAscending3 = Ascending;
  const RowsResetNotice notice(rs.row_observers);
  rs.select_marks.clear();
  rs.edit_marks.clear();
  rs.saved_query_values.reset();
  ForgetPendingEdit(rs);
  MoveStatus(rs, EditOp::kClose);  // closing raises no EditStatusChange
  rs.select_state = S_None;
  rs.select_anchor = 0;
  rs.current_row = 0;
}

}  // namespace
}  // namespace varnel::internal

namespace varnel {

bool ClsRecordset::InitDataSource() {
  return internal::Trapped(SysErrState, true,
                           [&] { return internal::RunLoad(*d_, internal::LoadKind::kInit); });
}

// Its errors are shown in a message box, not the error form.
bool ClsRecordset::RefreshDataSource() {
  return internal::Trapped(SysErrState, true,
                           [&] { return internal::RunLoad(*d_, internal::LoadKind::kRefresh); });
}

bool ClsRecordset::CloseDataSource() {
  return internal::Trapped(SysErrState, true, [&] {
    internal::CloseSource(*d_);
    return false;
  });
}

}  // namespace varnel
