/// \file
/// The public enumerations. E_Nothing is 99; every other value counts from 0
/// in declaration order. All are unscoped with an int32_t underlying type, so
/// `varnel::F_Date` and a stored integer compare directly.
#pragma once

#include <cstdint>

#include "varnel/export.h"

VARNEL_API_BEGIN

namespace varnel {

/// The kind of a field (ClsFields::FieldType): it chooses how FormatValue checks
/// and normalises a value and how a query criterion is translated to SQL.
enum Enum_FieldType : int32_t {
  F_Other = 0,       ///< any value, stored as given
  F_Boolean = 1,     ///< a yes/no value (0 or 1); criteria are true/false words or numbers
  F_Date = 2,        ///< a date and/or time, cut to the field's DateType
  F_Text = 3,        ///< text, at most DefinedSize characters; criteria allow LIKE, NOT, NULL
  F_Currency = 4,    ///< an exact amount in 1/10000 units, with a currency sign in SymbolName
  F_Numeral = 5,     ///< a number, shown by the field's NumType
  F_AutoCoding = 6,  ///< a number the recordset assigns to each row (1, 2, ...); read-only to users
  F_Locked = 7,      ///< a Boolean whose value sets the row's edit mark: a true value locks the row
  F_MultiMode = 8,   ///< a value of any kind, stored as given; passed over by query by form
};

/// How a date field is cut and shown (ClsFields::DateType).
enum Enum_DateType : int32_t {
  D_YMDHNS = 0,  ///< date and time to seconds
  D_YMDHN = 1,   ///< date and time to minutes
  D_YMD = 2,     ///< date only
  D_HNS = 3,     ///< time to seconds
  D_HN = 4,      ///< time to minutes
};

/// How a numeric field is kept and shown (ClsFields::NumType).
enum Enum_NumType : int32_t {
  N_Integer = 0,  ///< whole numbers
  N_Float = 1,    ///< numbers with a fraction
  N_Percent = 2,  ///< a fraction shown as a percentage; 0% to 100%
};

/// The direction of a sort field (ClsRecordset::OrderByAscending1..3).
enum Enum_Ascending : int32_t {
  Ascending = 0,   ///< smallest first
  Descending = 1,  ///< largest first
};

/// How SysSetMutliSelectRows extends the selection, as the keys held with a click.
enum Enum_SelectRow : int32_t {
  None = 0,   ///< select this row only
  Shift = 1,  ///< select the range from the anchor row to this row
  Ctrl = 2,   ///< toggle this row, keeping the others
};

/// The answer of a save: UpdateRecord's result and UserUpdateRecord's argument.
enum Enum_EditRecord : int32_t {
  E_Succeed = 0,   ///< the row was written: the edit is committed in memory
  E_Defeat = 1,    ///< not written: the edit stays pending, as the user typed it
  E_OtherErr = 2,  ///< not written and abandoned: the row is rolled back to its saved state
};

/// Whether more than one row is selected (ClsRecordset::SelectState()).
enum Enum_SelectState : int32_t {
  S_None = 0,   ///< at most one row is selected
  S_Multi = 1,  ///< several rows are selected
};

/// Who opens the database for a load (ClsRecordset::UserOpenMode).
enum Enum_UserMode : int32_t {
  U_Auto = 0,  ///< each load opens ConnectString, reads every row and closes again
  U_User = 1,  ///< the client supplies SFConnection/SFRecordset, which stay open
};

/// The recordset's edit status (ClsRecordset::EditStatus()): what is pending
/// on the current row. See the guide's state diagram for the transitions.
enum Enum_EditStatus : int32_t {
  E_Default = 0,       ///< nothing pending: browsing
  E_Query = 1,         ///< query by form: values typed are criteria (NewQuery .. ExecuteQuery)
  E_Modify = 2,        ///< a loaded row was changed and is not saved yet
  E_Delete = 3,        ///< a loaded row was deleted and the deletion is not saved yet
  E_AddNew = 4,        ///< a new row (NewRecord) is not saved yet
  E_Copy = 5,          ///< a copied row (CopyRecord) is not saved yet
  E_ModifyDelete = 6,  ///< a changed row was then deleted, neither saved
  E_AddNewDelete = 7,  ///< a new row was deleted before it was saved
  E_CopyDelete = 8,    ///< a copied row was deleted before it was saved
  E_Nothing = 99,      ///< no state: the last open failed; moves and edits do nothing
};

}  // namespace varnel

VARNEL_API_END
