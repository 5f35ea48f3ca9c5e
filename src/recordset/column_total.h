// The totals of summed fields: SumValue over every row, the total over the
// selected rows, and both per symbol (the value of the companion field named
// by SymbolName). Every stored value, inserted or removed row and flipped
// selection mark moves them by its own contribution (exact_sum.h), so they
// always equal a recount and cost the same on a million rows as on ten.
//
//   internal::FollowStoredValue(rs, field, row, old_value, new_value);  // a value changed
//   internal::RowLeavesTotals(rs, row);  EraseRow...                    // a row goes
//   InsertRow... WriteRowValues...  internal::RowJoinsTotals(rs, row);  // a row comes
//
// Writes that bypass these calls (a load, a silent rewrite of a whole column)
// are followed by RecountTotal. The totals also recount themselves when the
// field's IsSum, kind of units or companion changed since they were counted.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "recordset/recordset_state.h"

namespace varnel::internal {

// Recounts every total of the field at index (0-based) from its rows: SumValue
// Null when the field is not summed. VbError 9 when there is no such field.
void RecountTotal(RecordsetState& rs, size_t field_index);

// Brings SumValue of the field at index up to date: a recount only when the
// totals were counted for another field, kind or companion.
void EnsureTotal(RecordsetState& rs, size_t field_index);

// After field's value at row went from old_value to new_value: the totals of
// field, and of the summed fields whose companion field is, follow.
void FollowStoredValue(RecordsetState& rs, const ClsFields& field, int32_t row,
                       const Variant& old_value, const Variant& new_value);

// Before row is removed or rewritten: its values (and its selection mark)
// leave every total. After a row was inserted or rewritten: they join.
void RowLeavesTotals(RecordsetState& rs, int32_t row);
void RowJoinsTotals(RecordsetState& rs, int32_t row);

// After the selection mark of row flipped to `selected`.
void FollowSelectMark(RecordsetState& rs, int32_t row, bool selected);
// After every mark was set, cleared or negated at once.
enum class WholeSelection { All, None, Inverted };
void FollowWholeSelection(RecordsetState& rs, WholeSelection change);

// Recounts the summed F_AutoCoding fields (their rows were renumbered).
void RecountRenumberedTotals(RecordsetState& rs);

// The total of the field at index over the selected rows: the marked rows in
// S_Multi, the current row in S_None. Null when the field is not summed.
Variant SelectedTotal(RecordsetState& rs, size_t field_index);

// The totals of the field at index per symbol, in the order of the symbols'
// text, over every row or over the selected rows; symbols whose rows add
// nothing are left out. Without a companion field: one entry, symbol "".
struct SymbolTotalEntry {
  std::string symbol;
  Variant total;
};
std::vector<SymbolTotalEntry> TotalsBySymbol(RecordsetState& rs, size_t field_index,
                                             bool selected_only);

}  // namespace varnel::internal
