// What a stored value or symbol sets off in its recordset: the ValueChange /
// SymbolChange event, the recomputation of the computed fields that mention
// the changed field, the F_Locked edit marks and the column total. Also the
// recordset's query-value operations used by the fields in query mode.
//
//   // after field->values_[row] went from old_value to value, unless SuspendChangeEvents:
//   const internal::ReplacedValue replaced{*field, old_value, value};
//   internal::PropagateChange(rs, row, field->Col, internal::ChangeKind::Value, &replaced);
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "recordset/recordset_state.h"

namespace varnel::internal {

enum class ChangeKind { Value, Symbol };

// A value that SetValue replaced: the field that holds it and its value at
// the row before and after, so that the column total can follow by the
// difference. The references must outlive the propagation.
struct ReplacedValue {
  const ClsFields& field;
  const Variant& old_value;
  const Variant& new_value;
};

// The change propagation for (row, col), col being a 1-based position in the
// collection (the changed field's Col). Nothing in query mode. Raises
// ValueChange or SymbolChange; then, in collection order, recomputes every
// computed field whose ComputeString contains the changed field's name (a
// field already being recomputed further up is not evaluated again) and
// refreshes the row's edit mark from every F_Locked field; finally brings the
// SumValue of the field at col up to date (the stored value already moved the
// totals; a recount only when they were counted for another field or kind).
void PropagateChange(RecordsetState& rs, int32_t row, int32_t col, ChangeKind kind,
                     const ReplacedValue* replaced = nullptr);

// The QueryValue of the field Item(field_name) would return; "" when none.
std::string GetFieldQueryValue(const RecordsetState& rs, std::string_view field_name);
// Stores value as field's QueryValue and raises ValueQueryChange(field.Name).
void SetFieldQueryValue(RecordsetState& rs, ClsFields& field, std::string value);
// The same for the field Item(field_name) would return; nothing when none.
void SetFieldQueryValue(RecordsetState& rs, std::string_view field_name, std::string value);

}  // namespace varnel::internal
