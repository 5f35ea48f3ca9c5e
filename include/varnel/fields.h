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

class ClsFields {
 public:
  struct Key;  // only the recordset can make fields
  explicit ClsFields(const Key&);
  ~ClsFields();
  ClsFields(const ClsFields&) = delete;
  ClsFields& operator=(const ClsFields&) = delete;

  bool EnableNull = false;
  std::string Name;
  /// The field's kind. F_Other's query text goes into the SQL as raw text (see
  /// MdlQuery::QueryOther): meant for trusted screens only.
  Enum_FieldType FieldType = F_Other;
  Enum_DateType DateType = D_YMDHNS;
  Enum_NumType NumType = N_Integer;
  std::string FieldParentIDName;
  int32_t DefinedSize = 0;
  bool Copy = false;
  Variant DefaultValue;
  int32_t Col = 0;
  bool Edit = false;
  ClsRecordset* Parent = nullptr;  // cleared when the recordset is destroyed
  std::string SymbolName;
  bool IsData = false;
  std::string ComputeString;
  Variant InputMax;
  Variant InputMin;
  bool IsMain = false;
  std::string QueryValue;
  bool IsSum = false;
  Variant SumValue;
  bool SaveToDB = false;
  std::string DisplayName;

  // Stores a value at Row (0 = current row); returns true when it failed.
  bool SetValue(const Variant& Field_Value, int32_t Row = 0);
  // Stores the symbol (the companion field named by SymbolName) at Row.
  bool SetSymbol(const Variant& Field_Symbol, int32_t Row = 0);
  // The value at Row; Empty for a row outside the store. In query mode: QueryValue.
  Variant GetValue(int32_t Row = 0) const;
  // The companion field's value at Row; Empty when there is no companion.
  Variant GetSymbol(int32_t Row = 0) const;

  Variant Tag;

 private:
  friend class ClsRecordset;
  friend struct internal::FieldAccess;
  std::vector<Variant> values_;  // index 0..Rows; element 0 is not a row
};

}  // namespace varnel

VARNEL_API_END
