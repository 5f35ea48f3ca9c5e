// ClsFields: one column of a ClsRecordset, its definition and its value in
// every loaded row. Made only by ClsRecordset::Add or ReadFieldsInformation.
//
//   auto qty = rs.Add("Qty");
//   qty->FieldType = varnel::F_Numeral;
//   qty->SetValue(int32_t{5}, 3);          // row 3
//   varnel::Variant v = qty->GetValue();   // the current row
//
// Rows are numbered from 1; Row 0 means the recordset's current row. In query
// mode the value operations read and write QueryValue instead of row values.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "varnel/enums.h"
#include "varnel/variant.h"
#include "varnel/export.h"

VARNEL_API_BEGIN

namespace varnel {

class ClsRecordset;
VARNEL_API_END  // engine types: declared here, never exported
namespace internal {
struct FieldAccess;
}
VARNEL_API_BEGIN

/// One column of a ClsRecordset: its definition and its value in every loaded row.
class ClsFields {
 public:
  struct Key;  // only the recordset can make fields
  /// Made only by ClsRecordset::Add and ReadFieldsInformation.
  explicit ClsFields(const Key&);
  /// Drops the values and the back reference.
  ~ClsFields();
  ClsFields(const ClsFields&) = delete;
  ClsFields& operator=(const ClsFields&) = delete;

  /// False: UpdateRecord refuses a pending row that leaves this field blank.
  bool EnableNull = false;
  /// The column's name in the database (exact case); the collection key is the name given to Add.
  std::string Name;
  /// The kind of value: decides checking, formatting, totals and query translation.
  /// F_Other's query text goes into the SQL as raw text (see MdlQuery::QueryOther):
  /// meant for trusted screens only.
  Enum_FieldType FieldType = F_Other;
  /// For F_Date: the part of the date and time kept.
  Enum_DateType DateType = D_YMDHNS;
  /// For F_Numeral and F_Currency: integer, decimal or percent.
  Enum_NumType NumType = N_Integer;
  /// Client data naming a parent field; not used by the library.
  std::string FieldParentIDName;
  /// The column's declared length; a load sets it from the database when known.
  int32_t DefinedSize = 0;
  /// CopyRecord copies this field's value into the new row.
  bool Copy = false;
  /// The value a new row starts with ("Now"/"Today" in a date field: the current date).
  Variant DefaultValue;
  /// The position given at Add (1-based); not renumbered when an earlier field is removed.
  int32_t Col = 0;
  /// False: Modify refuses to change this field (outside query mode).
  bool Edit = false;
  /// The recordset that owns the field; null once removed or the recordset is gone.
  ClsRecordset* Parent = nullptr;
  /// The Name of the companion field holding this field's symbol; "" for none.
  std::string SymbolName;
  /// True when the value is loaded from the column of the same Name.
  bool IsData = false;
  /// An expression over other fields giving this field's value in each row.
  std::string ComputeString;
  /// The largest value accepted (Null: no limit).
  Variant InputMax;
  /// The smallest value accepted (Null: no limit).
  Variant InputMin;
  /// With F_Boolean, the row's main mark: Modify stores 1 and raises MainFieldChange.
  bool IsMain = false;
  /// The query-by-form criterion typed into this field; "" for none.
  std::string QueryValue;
  /// True when SumValue keeps the column's total.
  bool IsSum = false;
  /// The column total of a summed field, always equal to a recount of its rows; Null when not summed.
  Variant SumValue;
  /// True when a writer stores this field's value in the database.
  bool SaveToDB = false;
  /// The name shown to the user; messages fall back to Name when it is "".
  std::string DisplayName;

  /// Stores a value at Row (0 = current row) and runs the change handling
  /// (ValueChange, computed fields, lock marks, the total). False when stored or
  /// nothing changed; true for a row outside the store, a detached field, or an error.
  bool SetValue(const Variant& Field_Value, int32_t Row = 0);
  /// Stores the symbol (in the companion field named by SymbolName) at Row and
  /// raises SymbolChange. False also when there is no companion; true as SetValue.
  bool SetSymbol(const Variant& Field_Symbol, int32_t Row = 0);
  /// The value at Row; Empty for a row outside the store. In query mode: QueryValue.
  Variant GetValue(int32_t Row = 0) const;
  /// The companion field's value at Row; Empty when there is no companion.
  Variant GetSymbol(int32_t Row = 0) const;

  /// Client data; not used by the library.
  Variant Tag;

 private:
  friend class ClsRecordset;
  friend struct internal::FieldAccess;
  std::vector<Variant> values_;  // index 0..Rows; element 0 is not a row
};

}  // namespace varnel

VARNEL_API_END
