// The life of a data source: InitDataSource and RefreshDataSource load the
// rows, CloseDataSource forgets the configuration.
//
// Both loads run the same steps (check the fields, compose the SQL, let a
// U_User client see the condition, open, copy the rows) and always end with
// their Sys...After, ...After and RecordPointerChange events. They differ in
// what happens before the load (Init restores the criteria kept by query mode;
// Refresh first saves a pending edit) and in when the status becomes E_Default.
#include "recordset/data_source.h"

#include "fields/field_access.h"
#include "messages/error_trap.h"
#include "recordset/row_store.h"

namespace varnel::internal {
namespace {

enum class LoadKind { kInit, kRefresh };

// Query mode kept each field's criteria aside; a new load gives them back.
void RestoreSavedQueryValues(RecordsetState& rs) {
  if (rs.saved_query_values) {
    const std::vector<Variant>& saved = *rs.saved_query_values;
    for (size_t i = 0; i < rs.fields.size() && i < saved.size(); ++i) {
      rs.fields[i]->QueryValue = saved[i].IsBlank() ? std::string() : CStr(saved[i]);
    }
    rs.saved_query_values.reset();
  }
  rs.SetEditStatusValue(E_Default);
}

// Nothing could be loaded: no status, no rows. Screens refuse to work so.
void MarkNothingLoaded(RecordsetState& rs) {
  if (rs.self.UserOpenMode == U_Auto) {
    Quiet(false, [&] {
      ReleaseSource(rs);
      return false;
    });
  }
  rs.SetEditStatusValue(E_Nothing);
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

// Opens and copies the rows under the bulk flag. A database error is reported
// here (the open failed: status E_Nothing, no rows) and gives true.
bool OpenAndLoad(RecordsetState& rs, LoadKind kind) {
  BulkScope bulk;
  bool opened = false;
  try {
    opened = OpenSource(rs);
  } catch (...) {
    ReportCurrentException(rs.self.SysErrState);
    MarkNothingLoaded(rs);
    return true;
  }
  if (!opened) {
    MarkNothingLoaded(rs);
    return false;
  }
  if (kind == LoadKind::kRefresh) {
    rs.SetEditStatusValue(E_Default);
  }
  try {
    LoadRows(rs);
  } catch (...) {
    ReportCurrentException(rs.self.SysErrState);
    MarkNothingLoaded(rs);
    return true;
  }
  ForgetPendingEdit(rs);
  if (rs.self.UserOpenMode == U_Auto) {
    ReleaseSource(rs);
  }
  if (kind == LoadKind::kInit) {
    rs.SetEditStatusValue(E_Default);
  }
  return false;
}

// The steps before the rows are read; false when the load stops there.
bool PrepareLoad(RecordsetState& rs, LoadKind kind) {
  if (!CheckFields(rs)) {
    return false;
  }
  if (kind == LoadKind::kRefresh) {
    const Enum_EditStatus status = rs.edit_status;
    if (status != E_Default && status != E_Nothing && rs.self.UpdateRecord() != E_Succeed) {
      return false;
    }
  } else if (rs.edit_status == E_Query) {
    RestoreSavedQueryValues(rs);
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

bool RunLoad(RecordsetState& rs, LoadKind kind) {
  const bool failed = PrepareLoad(rs, kind) && OpenAndLoad(rs, kind);
  rs.select_state = S_None;
  if (kind == LoadKind::kInit) {
    rs.Raise(Ev_SysDataSourceInit, &ClsRecordsetEvents::SysDataSourceInit);
    rs.Raise(Ev_DataSourceInit, &ClsRecordsetEvents::DataSourceInit);
  } else {
    rs.Raise(Ev_SysDataSourceRefresh, &ClsRecordsetEvents::SysDataSourceRefresh);
    rs.Raise(Ev_DataSourceRefresh, &ClsRecordsetEvents::DataSourceRefresh);
  }
  rs.Raise(Ev_RecordPointerChange, &ClsRecordsetEvents::RecordPointerChange);
  return failed;
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
  rs.edit_status = E_Default;  // directly: closing raises no EditStatusChange
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
