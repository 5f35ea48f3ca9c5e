// The public enumerations. E_Nothing is 99; every other value counts from 0.
#pragma once

#include <cstdint>

namespace varnel {

enum Enum_FieldType : int32_t {
  F_Other = 0,
  F_Boolean = 1,
  F_Date = 2,
  F_Text = 3,
  F_Currency = 4,
  F_Numeral = 5,
  F_AutoCoding = 6,
  F_Locked = 7,
  F_MultiMode = 8,
};

enum Enum_DateType : int32_t {
  D_YMDHNS = 0,  // date and time to seconds
  D_YMDHN = 1,   // date and time to minutes
  D_YMD = 2,     // date only
  D_HNS = 3,     // time to seconds
  D_HN = 4,      // time to minutes
};

enum Enum_NumType : int32_t { N_Integer = 0, N_Float = 1, N_Percent = 2 };

enum Enum_Ascending : int32_t { Ascending = 0, Descending = 1 };

enum Enum_SelectRow : int32_t { None = 0, Shift = 1, Ctrl = 2 };

enum Enum_EditRecord : int32_t { E_Succeed = 0, E_Defeat = 1, E_OtherErr = 2 };

enum Enum_SelectState : int32_t { S_None = 0, S_Multi = 1 };

enum Enum_UserMode : int32_t { U_Auto = 0, U_User = 1 };

enum Enum_EditStatus : int32_t {
  E_Default = 0,
  E_Query = 1,
  E_Modify = 2,
  E_Delete = 3,
  E_AddNew = 4,
  E_Copy = 5,
  E_ModifyDelete = 6,
  E_AddNewDelete = 7,
  E_CopyDelete = 8,
  E_Nothing = 99,
};

}  // namespace varnel
