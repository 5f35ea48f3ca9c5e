#include "form_view.h"

#include <algorithm>

#include "text_width.h"
#include "texts.h"
#include "value_text.h"

namespace varnel::app {
namespace {

std::string Trim(const std::string& text) {
  const size_t begin = text.find_first_not_of(' ');
  if (begin == std::string::npos) {
    return "";
  }
  return text.substr(begin, text.find_last_not_of(' ') - begin + 1);
}

char FieldMark(const ClsFields& field) {
  if (!field.Edit) {
    return '-';
  }
  return field.EnableNull ? ' ' : '*';
}

std::string StatusName(Enum_EditStatus status) {
  if (status == E_Nothing) {
    return Tr(Text::StatusNothing);
  }
  if (status < E_Default || status > E_CopyDelete) {
    return std::to_string(status);
  }
  return Tr(static_cast<Text>(static_cast<int>(Text::StatusDefault) + status));
}

int32_t SelectedCount(ClsRecordset& rs) {
  int32_t count = 0;
  for (int32_t row = 1; row <= rs.Rows(); ++row) {
    count += rs.GetSelectRow(row) ? 1 : 0;
  }
  return count;
}

// A summed field's total, one per currency sign when its rows carry several
// ("1200.00 $ + 310.50 €"), over all rows or the selected ones.
std::string TotalText(ClsRecordset& rs, const ClsFields& field, bool selected) {
  if (!field.SymbolName.empty()) {
    std::string text;
    for (const SymbolTotal& total : rs.SumValueBySymbol(Variant(field.Name), selected)) {
      text += (text.empty() ? "" : " + ") + ValueText(field, total.Total) +
              (total.Symbol.empty() ? "" : " " + total.Symbol);
    }
    if (!text.empty()) {
      return text;
    }
  }
  return ValueText(field, selected ? rs.SelectedSumValue(Variant(field.Name)) : field.SumValue);
}

std::string Sums(ClsRecordset& rs, bool selected) {
  std::string sums;
  for (const auto& field : rs) {
    if (field->IsSum) {
      sums +=
          (sums.empty() ? std::string(Tr(selected ? Text::SelectedSum : Text::Sum)) + " " : ", ") +
          Say(Text::SumItem, fmt::arg("name", ShownName(*field)),
              fmt::arg("value", TotalText(rs, *field, selected)));
    }
  }
  return sums;
}

}  // namespace

std::string ShownName(const ClsFields& field) {
  return field.DisplayName.empty() ? field.Name : field.DisplayName;
}

void WriteForm(ClsRecordset& rs, std::ostream& out) {
  size_t name_width = 0;
  for (const auto& field : rs) {
    name_width = std::max(name_width, DisplayWidth(ShownName(*field)));
  }
  const bool querying = rs.EditStatus() == E_Query;
  const bool has_row = rs.Rows() > 0 && rs.AbsolutePosition() > 0;
  for (const auto& field : rs) {
    std::string value;
    std::string symbol;
    if (querying) {
      value = field->QueryValue;
    } else if (has_row) {
      value = ValueText(*field, field->GetValue());
      const Variant sign = field->SymbolName.empty() ? Variant() : field->GetSymbol();
      symbol = sign.IsBlank() ? "" : CStr(sign);  // an emptied sign shows nothing
    }
    std::string line = std::string("  ") + FieldMark(*field) + " " +
                       PadRight(ShownName(*field), name_width) + "  " + value;
    if (!symbol.empty()) {
      line += " " + symbol;
    }
    out << line << "\n";
  }
  out << StatusLine(rs) << "\n";
}

std::string StatusLine(ClsRecordset& rs) {
  std::string line = rs.Rows() > 0 ? Say(Text::RowOf, fmt::arg("row", rs.AbsolutePosition()),
                                         fmt::arg("rows", rs.Rows()))
                                   : std::string(Tr(Text::NoRows));
  line += " | " + StatusName(rs.EditStatus());
  if (rs.EditStatus() == E_Query) {
    return line;
  }
  if (rs.SelectState() == S_Multi) {
    line += " | " + Say(Text::Selected, fmt::arg("count", SelectedCount(rs)));
  }
  if (rs.Rows() > 0 && !rs.GetEdit()) {
    line += std::string(" | ") + Tr(Text::ReadOnlyRow);
  }
  if (const std::string sums = Sums(rs, false); !sums.empty()) {
    line += " | " + sums;
  }
  if (rs.SelectState() == S_Multi) {
    if (const std::string sums = Sums(rs, true); !sums.empty()) {
      line += " | " + sums;
    }
  }
  return line;
}

std::string ComposedSelect(ClsRecordset& rs) {
  const std::string condition = rs.RecordsetCondition();
  const std::string order = rs.RecordsetOrderBy();
  const std::string fields = Trim(rs.FieldsName);
  const std::string& table = rs.TableName;
  if (fields.empty() && condition.empty() && order.empty()) {
    return table;  // the recordset opens the bare table
  }
  if (!fields.empty() && condition.empty() && order.empty()) {
    return "Select " + fields + "From " + table;  // no blank before From: as the recordset does
  }
  std::string sql = "Select " + (fields.empty() ? std::string("*") : fields) + " From " + table;
  if (!condition.empty()) {
    sql += " Where " + condition;
  }
  if (!order.empty()) {
    sql += " Order By " + order;
  }
  return sql;
}

}  // namespace varnel::app
