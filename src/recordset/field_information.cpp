// Building the field collection from a field-information table: one row per
// field of a view, the rows of one view told apart by its ViewName column.
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "fields/current_date_word.h"
#include "messages/error_trap.h"
#include "recordset/field_default.h"
#include "recordset/recordset_state.h"
#include "varnel/messages.h"

namespace varnel::internal {
namespace {

// A cell that the platform would find equal to 0.
bool EqualsZero(const Variant& cell) {
  if (cell.VarType() == vbBoolean) {
    return !cell.AsBoolean();
  }
  return !cell.IsBlank() && IsNumeric(cell) && cell.ToDouble() == 0;
}

// A bound of accepted input, by the kind's own conversion; other kinds keep no bound.
void SetBound(Variant& bound, const ClsFields& field, const Variant& cell) {
  switch (field.FieldType) {
    case F_Currency:
      bound = Variant(cell.ToCurrency());
      break;
    case F_Numeral:
      bound = Variant(cell.ToDouble());
      break;
    case F_Date:
      bound = Variant(CDate(cell));
      break;
    default:
      break;
  }
}

std::optional<Date> AsDate(const Variant& cell) {
  if (cell.VarType() == vbDate) {
    return cell.AsDate();
  }
  if (!cell.IsString()) {
    return std::nullopt;
  }
  try {
    return CDate(cell);
  } catch (const VbError&) {
    return std::nullopt;
  }
}

}  // namespace

void SetDefaultValue(ClsFields& field, const Variant& cell) {
  switch (field.FieldType) {
    case F_Boolean:  // integers, not Booleans
      field.DefaultValue = Variant(static_cast<int16_t>(EqualsZero(cell) ? 0 : 1));
      break;
    case F_Currency:
    case F_Numeral:
      if (IsNumeric(cell)) {
        field.DefaultValue = Variant(cell.ToDouble());
      }
      break;
    case F_Date:
      if (IsCurrentDateWord(cell)) {
        field.DefaultValue = cell;
      } else if (const std::optional<Date> date = AsDate(cell)) {
        field.DefaultValue = Variant(*date);
      }
      break;
    case F_Text:
      field.DefaultValue = Variant(CStr(cell));
      break;
    default:
      field.DefaultValue = cell;
      break;
  }
}

namespace {

using Setter = void (*)(ClsFields&, const Variant&);

struct InformationColumn {
  const char* name;  // "" for the display name, whose column depends on the language
  Setter set;
};

// The columns read for every field, in the table's order; "Name" comes first.
const std::array<InformationColumn, 19> kColumns = {{
    {"Name", nullptr},
    {"FieldType", [](ClsFields& f, const Variant& v) { f.FieldType = Enum_FieldType(v.ToLong()); }},
    {"IsMain", [](ClsFields& f, const Variant& v) { f.IsMain = v.ToBool(); }},
    {"DateType", [](ClsFields& f, const Variant& v) { f.DateType = Enum_DateType(v.ToLong()); }},
    {"NumType", [](ClsFields& f, const Variant& v) { f.NumType = Enum_NumType(v.ToLong()); }},
    {"SymbolName", [](ClsFields& f, const Variant& v) { f.SymbolName = CStr(v); }},
    {"IsData", [](ClsFields& f, const Variant& v) { f.IsData = v.ToBool(); }},
    {"EnableNull", [](ClsFields& f, const Variant& v) { f.EnableNull = v.ToBool(); }},
    {"Edit", [](ClsFields& f, const Variant& v) { f.Edit = v.ToBool(); }},
    {"Copy", [](ClsFields& f, const Variant& v) { f.Copy = v.ToBool(); }},
    {"InputMax", [](ClsFields& f, const Variant& v) { SetBound(f.InputMax, f, v); }},
    {"InputMin", [](ClsFields& f, const Variant& v) { SetBound(f.InputMin, f, v); }},
    {"QueryValue", [](ClsFields& f, const Variant& v) { f.QueryValue = CStr(v); }},
    {"IsSum", [](ClsFields& f, const Variant& v) { f.IsSum = v.ToBool(); }},
    {"ComputeString", [](ClsFields& f, const Variant& v) { f.ComputeString = CStr(v); }},
    {"DefaultValue", &SetDefaultValue},
    {"DefinedSize", [](ClsFields& f, const Variant& v) { f.DefinedSize = v.ToLong(); }},
    {"SaveToDB", [](ClsFields& f, const Variant& v) { f.SaveToDB = v.ToBool(); }},
    {"", [](ClsFields& f, const Variant& v) { f.DisplayName = CStr(v); }},
}};

std::vector<std::string> ColumnNames() {
  std::vector<std::string> names;
  for (const InformationColumn& column : kColumns) {
    names.push_back(*column.name != '\0' ? column.name : "DisplayName" + LoadResString(0));
  }
  return names;
}

// The view's sort settings, from its first row. A Null sort field ends the
// chain: the later ones are not read and keep their values.
void ReadSortSettings(ClsRecordset& rs, const db::Fields& row) {
  const std::array<std::string*, 3> fields = {&rs.OrderByField1, &rs.OrderByField2,
                                              &rs.OrderByField3};
  const std::array<Enum_Ascending*, 3> directions = {&rs.OrderByAscending1, &rs.OrderByAscending2,
                                                     &rs.OrderByAscending3};
  for (size_t i = 0; i < fields.size(); ++i) {
    const std::string suffix = std::to_string(i + 1);
    const Variant field = row.Item("OrderByField" + suffix).Value();
    if (field.IsNull()) {
      return;
    }
    *fields[i] = CStr(field);
    *directions[i] =
        EqualsZero(row.Item("OrderByAscending" + suffix).Value()) ? Ascending : Descending;
  }
}

void ReadViewSettings(ClsRecordset& rs, const db::Recordset& source) {
  const db::Fields row = source.Fields();
  // The database object of the view's data becomes the table the recordset
  // loads. A Null one is error 94 and ends the reading before any field is added.
  rs.TableName = CStr(row.Item("FieldObject").Value());
  ReadSortSettings(rs, row);
}

// Returns true when Add refused a row (it has told the user why); the fields
// added before stay.
bool AddFields(ClsRecordset& rs, const std::vector<std::vector<Variant>>& table) {
  const size_t rows = table.empty() ? 0 : table[0].size();
  for (size_t r = 0; r < rows; ++r) {
    const std::shared_ptr<ClsFields> field = rs.Add(CStr(table[0][r]));
    if (field == nullptr) {
      return true;
    }
    for (size_t c = 1; c < kColumns.size(); ++c) {
      const Variant& cell = table[c][r];
      if (!cell.IsNull()) {  // a Null cell keeps what Add gave
        kColumns[c].set(*field, cell);
      }
    }
  }
  return false;
}

bool ReadInformation(ClsRecordset& rs, db::Recordset& source, const std::string& view,
                     const std::string& other) {
  // The view name goes between quotes as it stands.
  source.Filter("ViewName='" + view + "'" + (other.empty() ? "" : " and " + other));
  const bool has_rows = !source.Bof() && !source.Eof();
  if (has_rows) {
    ReadViewSettings(rs, source);
  }
  rs.Clear();
  return has_rows && AddFields(rs, source.GetRows(-1, ColumnNames()));
}

}  // namespace
}  // namespace varnel::internal

namespace varnel {

bool ClsRecordset::ReadFieldsInformation(std::shared_ptr<db::Recordset>& AdoRecordset,
                                         const std::string& ViewName,
                                         const std::string& OtherCondition) {
  return internal::Trapped(SysErrState, true, [&] {
    if (AdoRecordset == nullptr) {
      RaiseError(91);
    }
    return internal::ReadInformation(*this, *AdoRecordset, ViewName, OtherCondition);
  });
}

}  // namespace varnel
