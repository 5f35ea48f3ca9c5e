// The editing engine behind ClsRecordset's Modify, NewRecord, CopyRecord,
// DeleteRecord, UndoRecord and UpdateRecord. These functions raise VbError;
// the public members trap it. Each may be called from another (a pending edit
// is saved before a new one starts), so none of them traps on its own.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "recordset/recordset_state.h"

namespace varnel::internal {

// UpdateRecord: validates the pending row, asks the client to save it and
// commits, keeps or rolls back the edit by the answer.
Enum_EditRecord SavePendingEdit(RecordsetState& rs);

// Modify: true when the change was refused, cancelled or rejected.
bool ModifyField(RecordsetState& rs, const Variant& field, const Variant& value, int32_t row);

// NewRecord / CopyRecord: true when refused. `argument` names a field and the
// value that the new row takes in it.
struct FieldArgument {
  std::string field_name;
  Variant value;
};
bool InsertNewRow(RecordsetState& rs, const std::optional<FieldArgument>& argument);
bool InsertCopiedRow(RecordsetState& rs);

// DeleteRecord, UndoRecord: true when refused.
bool DeleteCurrentRow(RecordsetState& rs);
bool UndoPendingLayer(RecordsetState& rs);

}  // namespace varnel::internal
