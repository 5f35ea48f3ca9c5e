#include "selection_totals.h"

#include <QLocale>
#include <vector>

#include "varnel/qt/value_text.h"

namespace varnel::screen {
namespace {

QString Caption(const ClsFields& field) {
  return QString::fromStdString(field.DisplayName.empty() ? field.Name : field.DisplayName);
}

// A total adds rows of any currency, so it is shown without a sign.
void Append(QString& text, const ClsFields& field, const Variant& value) {
  QString shown;
  if (field.FieldType == F_Currency && !value.IsBlank()) {
    shown = QLocale::c().toString(value.ToDouble(), 'f', 2);
  } else {
    shown = qt::DisplayText(field, value);
  }
  text += (text.isEmpty() ? "" : "   ") + Caption(field) + " " + shown;
}

}  // namespace

// The selected rows' totals are counted here over the selection marks, one
// pass per change of the selection, until the library keeps them itself.
SelectionTotals TotalsOf(ClsRecordset& Recordset) {
  SelectionTotals totals;
  std::vector<std::shared_ptr<ClsFields>> summed;
  for (const auto& field : Recordset) {
    if (field->IsSum) {
      summed.push_back(field);
      Append(totals.all, *field, field->SumValue);
    }
  }
  if (Recordset.SelectState() != S_Multi || Recordset.EditStatus() == E_Query) {
    totals.selected_rows = Recordset.Rows() > 0 ? 1 : 0;
    return totals;
  }
  std::vector<Variant> sums(summed.size(), Variant(int32_t{0}));
  const int32_t rows = Recordset.Rows();
  for (int32_t row = 1; row <= rows; ++row) {
    if (!Recordset.GetSelectRow(row)) {
      continue;
    }
    ++totals.selected_rows;
    for (size_t i = 0; i < summed.size(); ++i) {
      const Variant value = summed[i]->GetValue(row);
      if (!value.IsBlank()) {
        sums[i] = sums[i] + value;
      }
    }
  }
  for (size_t i = 0; i < summed.size(); ++i) {
    Append(totals.selected, *summed[i], sums[i]);
  }
  return totals;
}

}  // namespace varnel::screen
