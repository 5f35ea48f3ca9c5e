#include <array>
#include <string_view>

#include "varnel/events.h"

namespace varnel {
namespace {

// Event names by number; index 0 is unused.
constexpr std::array<std::string_view, 51> kEventNames = {
    "",
    "ValueChange",
    "SymbolChange",
    "ValueQueryChange",
    "MoveRecordBefore",
    "MoveRecordAfter",
    "EditStatusChange",
    "UpdateRecordBefore",
    "UserUpdateRecord",
    "UpdateRecordAfter",
    "UndoRecordBefore",
    "UndoRecordAfter",
    "NewRecordBefore",
    "NewRecordAfter",
    "CopyRecordBefore",
    "CopyRecordAfter",
    "DeleteRecordBefore",
    "DeleteRecordAfter",
    "NewQueryBefore",
    "NewQueryAfter",
    "RefineQueryBefore",
    "RefineQueryAfter",
    "ModifyBefore",
    "ModifyAfter",
    "ExecuteQueryBefore",
    "ExecuteQueryAfter",
    "CancelQueryBefore",
    "CancelQueryAfter",
    "ChangeSelectRows",
    "DataSourceInitUser",
    "DataSourceRefreshUser",
    "DataSourceInit",
    "DataSourceRefresh",
    "RecordPointerChange",
    "MainFieldChange",
    "UserEvent",
    "SysUpdateRecordAfter",
    "SysUndoRecordAfter",
    "SysNewRecordAfter",
    "SysCopyRecordAfter",
    "SysDeleteRecordAfter",
    "SysNewQueryAfter",
    "SysRefineQueryAfter",
    "SysModifyAfter",
    "SysExecuteQueryAfter",
    "SysCancelQueryAfter",
    "SysDataSourceInit",
    "SysDataSourceRefresh",
    "SysMoveRecordAfter",
    "SystemTime",
    "RecordPointerChange2",
};

}  // namespace

std::string EventName(int32_t DispId) {
  if (DispId < 1 || DispId >= static_cast<int32_t>(kEventNames.size())) {
    return "";
  }
  return std::string(kEventNames[DispId]);
}

}  // namespace varnel
