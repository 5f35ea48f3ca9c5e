// Whole-row operations on a recordset's store: every field's value array and
// both mark arrays always have Rows + 1 elements and change together.
// Everything here works by field index; nothing searches fields by name in a loop.
#pragma once

#include <cstdint>
#include <string>

#include "recordset/recordset_state.h"

namespace varnel::internal {

// Resizes every field and both mark arrays to 0..rows, keeping what is there
// (new values Empty, new marks false), then brings the pointer into range.
// Dropped rows leave the column totals of the rows that remain.
void ResizeRows(RecordsetState& rs, int32_t rows);

// Everything a load replaces, held apart from a recordset: every field's
// values and column total, both mark arrays and the totals' records.
struct RowStorage {
  std::vector<std::vector<Variant>> values;  // per field, in field order
  std::vector<Variant> sums;                 // SumValue per field
  std::vector<uint8_t> select_marks, edit_marks;
  std::unordered_map<const ClsFields*, ColumnTotalRecord> column_totals;
};
// Exchanges the recordset's rows with storage, field by field without
// copying values. REQUIRES storage taken from the same fields (or empty).
void SwapRows(RecordsetState& rs, RowStorage& storage);

// Inserts an empty row at position `at` (1..Rows+1): values Empty, marks false.
void InsertRow(RecordsetState& rs, int32_t at);
// Removes row `at` (1..Rows): later rows move up by one. Its values leave the
// column totals.
void EraseRow(RecordsetState& rs, int32_t at);

// The values of every field at row, in field order.
std::vector<Variant> RowValues(const RecordsetState& rs, int32_t row);
// Writes values (in field order) into row, silently (no propagation, the
// column totals not followed: RowLeavesTotals / RowJoinsTotals around it).
void WriteRowValues(RecordsetState& rs, int32_t row, const std::vector<Variant>& values);

// Recomputes every summed field's SumValue from every row: the recount of
// column_total.h (RecountTotal).
void RecomputeAllSums(RecordsetState& rs);

// Numbers the rows 1..Rows of every F_AutoCoding field.
void NumberAutoCodingRows(RecordsetState& rs);

// The value of field's ComputeString for row (the evaluator, with the
// recordset as context).
Variant EvaluateComputed(RecordsetState& rs, const ClsFields& field, int32_t row);
// Stores the value of field's ComputeString in rows 1..rows of field, row by
// row as EvaluateComputed would, the expression read once.
void EvaluateComputedRows(RecordsetState& rs, ClsFields& field, int32_t rows);

// The main field's name: the first field with IsMain and F_Boolean; "" when none.
std::string MainFieldName(const RecordsetState& rs);

// 0-based index of the field that Item(key) would return; VbError 5 when absent.
size_t FieldIndex(const RecordsetState& rs, const Variant& key);
// Row 0 means the current row (AbsolutePosition).
int32_t ResolveRow(RecordsetState& rs, int32_t row);
// The clamped current row, as the AbsolutePosition getter returns it.
int32_t ClampedCurrentRow(RecordsetState& rs);

}  // namespace varnel::internal
