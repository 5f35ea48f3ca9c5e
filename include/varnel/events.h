/// \file
/// The recordset's fifty events. A client derives from ClsRecordsetEvents,
/// overrides what it needs and connects with ClsRecordset::Advise:
///
///     struct Screen : varnel::ClsRecordsetEvents {
///       void ModifyBefore(const std::string& FieldName, const varnel::Variant& Value,
///                         bool& Cancel) override { Cancel = FieldName == "Code"; }
///     };
///     Screen screen;
///     int32_t cookie = rs.Advise(&screen);   // ... rs.Unadvise(cookie);
///
/// Before every named member, OnEvent(DispId) is called with the event's number.
/// Sinks are called in the order they were connected; a by-reference argument
/// passes from one sink to the next. The sink is not owned by the recordset.
///
/// Most operations raise three events: a cancellable `...Before` (set `Cancel`
/// to stop the operation before it changes anything; it then returns its
/// failure result), then after its work `Sys...After` and then `...After`.
/// `Sys...After` is meant for the library's own companion controls (a grid or
/// form bound to the recordset, which must redraw first); `...After` is the
/// client's own. A client's screen code normally handles only `...After`.
/// Operations that may move the current row end with RecordPointerChange.
#pragma once

#include <cstdint>
#include <string>

#include "varnel/enums.h"
#include "varnel/export.h"
#include "varnel/variant.h"

VARNEL_API_BEGIN

namespace varnel {

/// Event numbers (dispatch identifiers), as OnEvent receives them.
enum EventDispId : int32_t {
  Ev_ValueChange = 1,             ///< the number of ValueChange
  Ev_SymbolChange = 2,            ///< the number of SymbolChange
  Ev_ValueQueryChange = 3,        ///< the number of ValueQueryChange
  Ev_MoveRecordBefore = 4,        ///< the number of MoveRecordBefore
  Ev_MoveRecordAfter = 5,         ///< the number of MoveRecordAfter
  Ev_EditStatusChange = 6,        ///< the number of EditStatusChange
  Ev_UpdateRecordBefore = 7,      ///< the number of UpdateRecordBefore
  Ev_UserUpdateRecord = 8,        ///< the number of UserUpdateRecord
  Ev_UpdateRecordAfter = 9,       ///< the number of UpdateRecordAfter
  Ev_UndoRecordBefore = 10,       ///< the number of UndoRecordBefore
  Ev_UndoRecordAfter = 11,        ///< the number of UndoRecordAfter
  Ev_NewRecordBefore = 12,        ///< the number of NewRecordBefore
  Ev_NewRecordAfter = 13,         ///< the number of NewRecordAfter
  Ev_CopyRecordBefore = 14,       ///< the number of CopyRecordBefore
  Ev_CopyRecordAfter = 15,        ///< the number of CopyRecordAfter
  Ev_DeleteRecordBefore = 16,     ///< the number of DeleteRecordBefore
  Ev_DeleteRecordAfter = 17,      ///< the number of DeleteRecordAfter
  Ev_NewQueryBefore = 18,         ///< the number of NewQueryBefore
  Ev_NewQueryAfter = 19,          ///< the number of NewQueryAfter
  Ev_RefineQueryBefore = 20,      ///< the number of RefineQueryBefore
  Ev_RefineQueryAfter = 21,       ///< the number of RefineQueryAfter
  Ev_ModifyBefore = 22,           ///< the number of ModifyBefore
  Ev_ModifyAfter = 23,            ///< the number of ModifyAfter
  Ev_ExecuteQueryBefore = 24,     ///< the number of ExecuteQueryBefore
  Ev_ExecuteQueryAfter = 25,      ///< the number of ExecuteQueryAfter
  Ev_CancelQueryBefore = 26,      ///< the number of CancelQueryBefore
  Ev_CancelQueryAfter = 27,       ///< the number of CancelQueryAfter
  Ev_ChangeSelectRows = 28,       ///< the number of ChangeSelectRows
  Ev_DataSourceInitUser = 29,     ///< the number of DataSourceInitUser
  Ev_DataSourceRefreshUser = 30,  ///< the number of DataSourceRefreshUser
  Ev_DataSourceInit = 31,         ///< the number of DataSourceInit
  Ev_DataSourceRefresh = 32,      ///< the number of DataSourceRefresh
  Ev_RecordPointerChange = 33,    ///< the number of RecordPointerChange
  Ev_MainFieldChange = 34,        ///< the number of MainFieldChange
  Ev_UserEvent = 35,              ///< the number of UserEvent
  Ev_SysUpdateRecordAfter = 36,   ///< the number of SysUpdateRecordAfter
  Ev_SysUndoRecordAfter = 37,     ///< the number of SysUndoRecordAfter
  Ev_SysNewRecordAfter = 38,      ///< the number of SysNewRecordAfter
  Ev_SysCopyRecordAfter = 39,     ///< the number of SysCopyRecordAfter
  Ev_SysDeleteRecordAfter = 40,   ///< the number of SysDeleteRecordAfter
  Ev_SysNewQueryAfter = 41,       ///< the number of SysNewQueryAfter
  Ev_SysRefineQueryAfter = 42,    ///< the number of SysRefineQueryAfter
  Ev_SysModifyAfter = 43,         ///< the number of SysModifyAfter
  Ev_SysExecuteQueryAfter = 44,   ///< the number of SysExecuteQueryAfter
  Ev_SysCancelQueryAfter = 45,    ///< the number of SysCancelQueryAfter
  Ev_SysDataSourceInit = 46,      ///< the number of SysDataSourceInit
  Ev_SysDataSourceRefresh = 47,   ///< the number of SysDataSourceRefresh
  Ev_SysMoveRecordAfter = 48,     ///< the number of SysMoveRecordAfter
  Ev_SystemTime = 49,             ///< the number of SystemTime
  Ev_RecordPointerChange2 = 50,   ///< the number of RecordPointerChange2
};

/// The event's name for a number 1..50 ("ValueChange"); "" for any other number.
std::string EventName(int32_t DispId);

/// The event sink: override the events to handle; every default does nothing.
class ClsRecordsetEvents {
 public:
  /// Sinks are deleted through this interface.
  virtual ~ClsRecordsetEvents() = default;
  /// Called with the event's number (EventDispId) before each named event, for tracing.
  virtual void OnEvent([[maybe_unused]] int32_t DispId) {}

  /// GetSysTime asks for the time: replace SysTime (the local clock's) with, say, the server's.
  virtual void SystemTime([[maybe_unused]] Date& SysTime) {}
  /// A value was stored in row Row of the field at position Col (outside query mode).
  virtual void ValueChange([[maybe_unused]] int32_t Row, [[maybe_unused]] int32_t Col) {}
  /// A symbol (the companion value named by SymbolName) was stored in row Row of field Col.
  virtual void SymbolChange([[maybe_unused]] int32_t Row, [[maybe_unused]] int32_t Col) {}
  /// In query mode, the criterion (QueryValue) of FieldName changed.
  virtual void ValueQueryChange([[maybe_unused]] const std::string& FieldName) {}
  /// The current row is about to move; Cancel keeps it where it is.
  virtual void MoveRecordBefore([[maybe_unused]] bool& Cancel) {}
  /// The current row moved (companion controls' event, before MoveRecordAfter).
  virtual void SysMoveRecordAfter() {}
  /// The current row moved (client's event; after SysMoveRecordAfter).
  virtual void MoveRecordAfter() {}
  /// EditStatus() changed value; read it for the new status.
  virtual void EditStatusChange() {}
  /// A pending edit is about to be saved; Cancel keeps it pending (UpdateRecord gives E_Defeat).
  virtual void UpdateRecordBefore([[maybe_unused]] bool& Cancel) {}
  /// Write the pending row to the database and answer in Update_Succeed: E_Succeed, E_Defeat
  /// (keep the edit) or E_OtherErr (roll it back). TableWriter is a ready-made handler.
  virtual void UserUpdateRecord([[maybe_unused]] Enum_EditRecord& Update_Succeed) {}
  /// A pending edit was saved (companion controls' event, before UpdateRecordAfter).
  virtual void SysUpdateRecordAfter() {}
  /// A pending edit was saved (client's event).
  virtual void UpdateRecordAfter() {}
  /// One layer of pending edit is about to be undone; Cancel keeps it.
  virtual void UndoRecordBefore([[maybe_unused]] bool& Cancel) {}
  /// One layer was undone (companion controls' event, before UndoRecordAfter).
  virtual void SysUndoRecordAfter() {}
  /// One layer of pending edit was undone (client's event).
  virtual void UndoRecordAfter() {}
  /// A new row is about to be appended; Cancel stops it.
  virtual void NewRecordBefore([[maybe_unused]] bool& Cancel) {}
  /// A new row was appended (companion controls' event, before NewRecordAfter).
  virtual void SysNewRecordAfter() {}
  /// A new row was appended and is the current row (client's event).
  virtual void NewRecordAfter() {}
  /// The current row is about to be copied to a new row; Cancel stops it.
  virtual void CopyRecordBefore([[maybe_unused]] bool& Cancel) {}
  /// A copy was appended (companion controls' event, before CopyRecordAfter).
  virtual void SysCopyRecordAfter() {}
  /// The copy was appended and is the current row (client's event).
  virtual void CopyRecordAfter() {}
  /// The current row is about to be deleted; Cancel keeps it.
  virtual void DeleteRecordBefore([[maybe_unused]] bool& Cancel) {}
  /// A row was deleted (companion controls' event, before DeleteRecordAfter).
  virtual void SysDeleteRecordAfter() {}
  /// The current row was deleted in memory; the deletion is pending (client's event).
  virtual void DeleteRecordAfter() {}
  /// Query by form is about to start with empty criteria; Cancel stops it.
  virtual void NewQueryBefore([[maybe_unused]] bool& Cancel) {}
  /// Query mode started (companion controls' event, before NewQueryAfter).
  virtual void SysNewQueryAfter() {}
  /// Query by form started: values typed are now criteria (client's event).
  virtual void NewQueryAfter() {}
  /// Query by form is about to start again with the last criteria; Cancel stops it.
  virtual void RefineQueryBefore([[maybe_unused]] bool& Cancel) {}
  /// Query mode restarted (companion controls' event, before RefineQueryAfter).
  virtual void SysRefineQueryAfter() {}
  /// Query by form started with the last criteria (client's event).
  virtual void RefineQueryAfter() {}
  /// Value is about to be stored in FieldName of the current row; Cancel refuses it.
  virtual void ModifyBefore([[maybe_unused]] const std::string& FieldName,
                            [[maybe_unused]] const Variant& Value, [[maybe_unused]] bool& Cancel) {}
  /// Modify stored the value (companion controls' event, before ModifyAfter).
  virtual void SysModifyAfter() {}
  /// Modify stored the value (client's event).
  virtual void ModifyAfter() {}
  /// The criteria are about to be applied and the rows reloaded; Cancel stays in query mode.
  virtual void ExecuteQueryBefore([[maybe_unused]] bool& Cancel) {}
  /// The query ran (companion controls' event, before ExecuteQueryAfter).
  virtual void SysExecuteQueryAfter() {}
  /// The rows were reloaded with the criteria (client's event).
  virtual void ExecuteQueryAfter() {}
  /// Query mode is about to end without applying the criteria; Cancel stays in it.
  virtual void CancelQueryBefore([[maybe_unused]] bool& Cancel) {}
  /// Query mode ended (companion controls' event, before CancelQueryAfter).
  virtual void SysCancelQueryAfter() {}
  /// Query mode ended; the rows are as before (client's event).
  virtual void CancelQueryAfter() {}
  /// The selection marks changed (select, extend, toggle, all, invert, clear).
  virtual void ChangeSelectRows() {}
  /// U_User mode: open SFConnection/SFRecordset for the first load, with the composed WHERE
  /// (OutCondition) and ORDER BY (OutOrderBy) texts.
  virtual void DataSourceInitUser([[maybe_unused]] const std::string& OutCondition,
                                  [[maybe_unused]] const std::string& OutOrderBy) {}
  /// U_User mode: reopen SFRecordset for a refresh with OutCondition and OutOrderBy.
  virtual void DataSourceRefreshUser([[maybe_unused]] const std::string& OutCondition,
                                     [[maybe_unused]] const std::string& OutOrderBy) {}
  /// The first load finished (companion controls' event, before DataSourceInit).
  virtual void SysDataSourceInit() {}
  /// The first load finished and the rows are in memory (client's event).
  virtual void DataSourceInit() {}
  /// A refresh finished (companion controls' event, before DataSourceRefresh).
  virtual void SysDataSourceRefresh() {}
  /// A refresh finished and the rows are in memory (client's event).
  virtual void DataSourceRefresh() {}
  /// The current row may have changed: redraw what shows it. Ends every operation that may move
  /// it.
  virtual void RecordPointerChange() {}
  /// A pending edit ended (saved, undone or rolled back) and EditStatus() is E_Default again:
  /// the current row is an ordinary row once more; refresh what shows its edit state.
  virtual void RecordPointerChange2() {}
  /// The main Boolean field (the first with IsMain and F_Boolean) named FieldName was set or
  /// reset by a save, deletion or undo.
  virtual void MainFieldChange([[maybe_unused]] const std::string& FieldName) {}
  /// Raised by CallUserEvent: a hook for the client's own use.
  virtual void UserEvent() {}
};

}  // namespace varnel

VARNEL_API_END
