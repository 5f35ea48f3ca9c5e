// Whole-row steps shared by the editing operations: snapshots, putting a
// deleted row back, dropping an inserted row, the column totals and auto-coded
// numbers that follow, and the roll-back of a pending edit. Every step here
// writes values silently (callers hold a BulkScope) and raises no event.
#pragma once

#include <cstdint>
#include <vector>

#include "recordset/recordset_state.h"

namespace varnel::internal {

// Raises VbError 9 unless 1 <= row <= Rows.
void RequireRow(const RecordsetState& rs, int32_t row);

// SavedValues := the values of row and its edit mark; SavedRow := row.
void TakeSnapshot(RecordsetState& rs, int32_t row);
// Writes SavedValues (values and edit mark) back into SavedRow field by
// field, when both are there, the totals of the summed fields it changes following by the
// difference; erases them.
void RestoreSnapshot(RecordsetState& rs);
void EraseSavedValues(RecordsetState& rs);
void EraseDeletedValues(RecordsetState& rs);

// Removes row from the store and keeps it, with its edit mark, in DeletedValues/DeletedRow.
void RemoveRowKeepingIt(RecordsetState& rs, int32_t row);
// Puts DeletedValues back at DeletedRow (later rows move down), field by
// field, with its edit mark, unselected; erases DeletedValues and returns the
// row. VbError 9 when no row was kept.
int32_t PutDeletedRowBack(RecordsetState& rs);
// Appends an empty row (values Empty, editable, unselected); returns its number.
int32_t AppendRow(RecordsetState& rs);
// Removes the last row (an inserted one) and keeps the current row in range.
void DropLastRow(RecordsetState& rs);

// Brings SumValue and the auto-coded numbers up to date after rows from
// first_changed_row on were inserted, removed or rewritten.
void RefreshTotals(RecordsetState& rs, int32_t first_changed_row);
// The same after one row was appended: its values join the running totals,
// exactly as a full recount adding rows in order would, without the recount.
void TotalsAfterAppend(RecordsetState& rs, int32_t row);

// Takes the pending edit of `status` back in memory, so that the rows again
// match the database: a modification is restored from SavedValues, an inserted
// or copied row is removed, a deleted row is put back.
void RollBackInMemory(RecordsetState& rs, Enum_EditStatus status);

// Raises MainFieldChange with the main field's name, when there is one.
void RaiseMainFieldChange(RecordsetState& rs);

// True for a main marker field: IsMain and F_Boolean.
bool IsMainBoolean(const ClsFields& field);

}  // namespace varnel::internal
