// The recordset's fifty events. A client derives from ClsRecordsetEvents,
// overrides what it needs and connects with ClsRecordset::Advise:
//
//   struct Screen : varnel::ClsRecordsetEvents {
//     void ModifyBefore(const std::string& FieldName, const varnel::Variant& Value,
//                       bool& Cancel) override { Cancel = FieldName == "Code"; }
//   };
//   Screen screen;
//   int32_t cookie = rs.Advise(&screen);   // ... rs.Unadvise(cookie);
//
// Before every named member, OnEvent(DispId) is called with the event's number.
// Sinks are called in the order they were connected; a by-reference argument
// passes from one sink to the next. The sink is not owned by the recordset.
#pragma once

#include <cstdint>
#include <string>

#include "varnel/enums.h"
#include "varnel/variant.h"

namespace varnel {

// Event numbers (dispatch identifiers).
enum EventDispId : int32_t {
  Ev_ValueChange = 1,
  Ev_SymbolChange = 2,
  Ev_ValueQueryChange = 3,
  Ev_MoveRecordBefore = 4,
  Ev_MoveRecordAfter = 5,
  Ev_EditStatusChange = 6,
  Ev_UpdateRecordBefore = 7,
  Ev_UserUpdateRecord = 8,
  Ev_UpdateRecordAfter = 9,
  Ev_UndoRecordBefore = 10,
  Ev_UndoRecordAfter = 11,
  Ev_NewRecordBefore = 12,
  Ev_NewRecordAfter = 13,
  Ev_CopyRecordBefore = 14,
  Ev_CopyRecordAfter = 15,
  Ev_DeleteRecordBefore = 16,
  Ev_DeleteRecordAfter = 17,
  Ev_NewQueryBefore = 18,
  Ev_NewQueryAfter = 19,
  Ev_RefineQueryBefore = 20,
  Ev_RefineQueryAfter = 21,
  Ev_ModifyBefore = 22,
  Ev_ModifyAfter = 23,
  Ev_ExecuteQueryBefore = 24,
  Ev_ExecuteQueryAfter = 25,
  Ev_CancelQueryBefore = 26,
  Ev_CancelQueryAfter = 27,
  Ev_ChangeSelectRows = 28,
  Ev_DataSourceInitUser = 29,
  Ev_DataSourceRefreshUser = 30,
  Ev_DataSourceInit = 31,
  Ev_DataSourceRefresh = 32,
  Ev_RecordPointerChange = 33,
  Ev_MainFieldChange = 34,
  Ev_UserEvent = 35,
  Ev_SysUpdateRecordAfter = 36,
  Ev_SysUndoRecordAfter = 37,
  Ev_SysNewRecordAfter = 38,
  Ev_SysCopyRecordAfter = 39,
  Ev_SysDeleteRecordAfter = 40,
  Ev_SysNewQueryAfter = 41,
  Ev_SysRefineQueryAfter = 42,
  Ev_SysModifyAfter = 43,
  Ev_SysExecuteQueryAfter = 44,
  Ev_SysCancelQueryAfter = 45,
  Ev_SysDataSourceInit = 46,
  Ev_SysDataSourceRefresh = 47,
  Ev_SysMoveRecordAfter = 48,
  Ev_SystemTime = 49,
  Ev_RecordPointerChange2 = 50,
};

// The event's name for a number 1..50; "" for any other number.
std::string EventName(int32_t DispId);

class ClsRecordsetEvents {
 public:
  virtual ~ClsRecordsetEvents() = default;
  virtual void OnEvent([[maybe_unused]] int32_t DispId) {}

  virtual void SystemTime([[maybe_unused]] Date& SysTime) {}
  virtual void ValueChange([[maybe_unused]] int32_t Row, [[maybe_unused]] int32_t Col) {}
  virtual void SymbolChange([[maybe_unused]] int32_t Row, [[maybe_unused]] int32_t Col) {}
  virtual void ValueQueryChange([[maybe_unused]] const std::string& FieldName) {}
  virtual void MoveRecordBefore([[maybe_unused]] bool& Cancel) {}
  virtual void SysMoveRecordAfter() {}
  virtual void MoveRecordAfter() {}
  virtual void EditStatusChange() {}
  virtual void UpdateRecordBefore([[maybe_unused]] bool& Cancel) {}
  virtual void UserUpdateRecord([[maybe_unused]] Enum_EditRecord& Update_Succeed) {}
  virtual void SysUpdateRecordAfter() {}
  virtual void UpdateRecordAfter() {}
  virtual void UndoRecordBefore([[maybe_unused]] bool& Cancel) {}
  virtual void SysUndoRecordAfter() {}
  virtual void UndoRecordAfter() {}
  virtual void NewRecordBefore([[maybe_unused]] bool& Cancel) {}
  virtual void SysNewRecordAfter() {}
  virtual void NewRecordAfter() {}
  virtual void CopyRecordBefore([[maybe_unused]] bool& Cancel) {}
  virtual void SysCopyRecordAfter() {}
  virtual void CopyRecordAfter() {}
  virtual void DeleteRecordBefore([[maybe_unused]] bool& Cancel) {}
  virtual void SysDeleteRecordAfter() {}
  virtual void DeleteRecordAfter() {}
  virtual void NewQueryBefore([[maybe_unused]] bool& Cancel) {}
  virtual void SysNewQueryAfter() {}
  virtual void NewQueryAfter() {}
  virtual void RefineQueryBefore([[maybe_unused]] bool& Cancel) {}
  virtual void SysRefineQueryAfter() {}
  virtual void RefineQueryAfter() {}
  virtual void ModifyBefore([[maybe_unused]] const std::string& FieldName,
                            [[maybe_unused]] const Variant& Value,
                            [[maybe_unused]] bool& Cancel) {}
  virtual void SysModifyAfter() {}
  virtual void ModifyAfter() {}
  virtual void ExecuteQueryBefore([[maybe_unused]] bool& Cancel) {}
  virtual void SysExecuteQueryAfter() {}
  virtual void ExecuteQueryAfter() {}
  virtual void CancelQueryBefore([[maybe_unused]] bool& Cancel) {}
  virtual void SysCancelQueryAfter() {}
  virtual void CancelQueryAfter() {}
  virtual void ChangeSelectRows() {}
  virtual void DataSourceInitUser([[maybe_unused]] const std::string& OutCondition,
                                  [[maybe_unused]] const std::string& OutOrderBy) {}
  virtual void DataSourceRefreshUser([[maybe_unused]] const std::string& OutCondition,
                                     [[maybe_unused]] const std::string& OutOrderBy) {}
  virtual void SysDataSourceInit() {}
  virtual void DataSourceInit() {}
  virtual void SysDataSourceRefresh() {}
  virtual void DataSourceRefresh() {}
  virtual void RecordPointerChange() {}
  virtual void RecordPointerChange2() {}
  virtual void MainFieldChange([[maybe_unused]] const std::string& FieldName) {}
  virtual void UserEvent() {}
};

}  // namespace varnel
