// The public reading of the selection totals and the per-symbol totals that
// the column totals keep (column_total.h).
#include "messages/error_trap.h"
#include "recordset/column_total.h"
#include "recordset/row_store.h"

namespace varnel {

Variant ClsRecordset::SelectedSumValue(const Variant& Field) {
  return internal::Trapped(SysErrState, Variant::Null(), [&] {
    return internal::SelectedTotal(*d_, internal::FieldIndex(*d_, Field));
  });
}

std::vector<SymbolTotal> ClsRecordset::SumValueBySymbol(const Variant& Field, bool SelectedOnly) {
  return internal::Trapped(SysErrState, std::vector<SymbolTotal>(), [&] {
    std::vector<SymbolTotal> totals;
    for (auto& entry :
         internal::TotalsBySymbol(*d_, internal::FieldIndex(*d_, Field), SelectedOnly)) {
      totals.push_back(SymbolTotal{std::move(entry.symbol), std::move(entry.total)});
    }
    return totals;
  });
}

}  // namespace varnel
