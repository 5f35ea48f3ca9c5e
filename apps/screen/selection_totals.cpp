#include "selection_totals.h"

#include "varnel/qt/value_text.h"

namespace varnel::screen {
namespace {

QString Caption(const ClsFields& field) {
  return QString::fromStdString(field.DisplayName.empty() ? field.Name : field.DisplayName);
}

// One field's total. Amounts in several currencies are never added together:
// "$400.00 + ¥400.00 + €700.00", each sign's rows on their own.
QString TotalText(ClsRecordset& rs, const ClsFields& field, bool selected) {
  const Variant name(field.Name);
  QString text;
  if (field.FieldType == F_Currency) {
    for (const SymbolTotal& total : rs.SumValueBySymbol(name, selected)) {
      text += (text.isEmpty() ? "" : " + ") +
              qt::AmountText(total.Total, QString::fromStdString(total.Symbol));
    }
    if (!text.isEmpty()) {
      return text;
    }
  }
  const Variant total = selected ? rs.SelectedSumValue(name) : field.SumValue;
  if (field.FieldType == F_Currency) {
    return qt::AmountText(total.IsBlank() ? Variant(Currency{0}) : total);
  }
  return qt::DisplayText(field, total, -1);  // no row: no sign
}

}  // namespace

SelectionTotals TotalsOf(ClsRecordset& Recordset) {
  SelectionTotals totals;
  for (const auto& field : Recordset) {
    if (field->IsSum) {
      const QString gap = totals.all.isEmpty() ? "" : "   ";
      totals.all += gap + Caption(*field) + " " + TotalText(Recordset, *field, false);
      totals.selected += gap + Caption(*field) + " " + TotalText(Recordset, *field, true);
    }
  }
  return totals;
}

int32_t SelectedRowCount(ClsRecordset& Recordset) {
  const int32_t rows = Recordset.Rows();
  if (Recordset.SelectState() != S_Multi) {
    return rows > 0 ? 1 : 0;
  }
  int32_t count = 0;
  for (int32_t row = 1; row <= rows; ++row) {
    count += Recordset.GetSelectRow(row) ? 1 : 0;
  }
  return count;
}

}  // namespace varnel::screen
