// The column total (SumValue) of a summed field: what one value adds to it,
// the recount of the column, and how the total follows a change of one value
// or an appended row without a recount. Whatever path it takes, the total is
// exactly what a recount of the column would give at that moment.
//
//   internal::AdjustTotal(rs, index, old_value, new_value);  // a row's value changed
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "recordset/recordset_state.h"

namespace varnel::internal {

// Numbers and numeric text count, as Currency in a currency field; blanks,
// other text, dates and Booleans add nothing (nullopt).
std::optional<Variant> TotalAddend(const ClsFields& field, const Variant& value);

// Recounts SumValue of the field at index (0-based): Null when the field is
// not summed, else Currency 0 (a currency field) or Long 0 plus the addend of
// every row, in row order, with the platform's addition. VbError 9 when there
// is no such field.
void RecountTotal(RecordsetState& rs, size_t field_index);

// SumValue of the field at index after the value of one of its rows went
// from old_value to new_value. The old addend is taken off and the new one
// put on where the result is certain to equal a recount: a Long total of
// whole addends, or a currency field's total, while no running total of the
// recount could leave the kind's range. Anything else is recounted.
void AdjustTotal(RecordsetState& rs, size_t field_index, const Variant& old_value,
                 const Variant& new_value);

// SumValue of the field at index after value was appended as its last row:
// the recount's next step. A summed field whose total is not a number is
// recounted; a field that is not summed is left alone.
void AddAppendedValue(RecordsetState& rs, size_t field_index, const Variant& value);

// How many times the total of field has been recounted. A change propagation
// compares it before and after: a recount in between may already hold the
// change, whose difference must then not be applied again.
uint64_t TotalRecounts(const RecordsetState& rs, const ClsFields& field);

}  // namespace varnel::internal
