// Which fields a change of one field touches, worked out once and reused:
// the computed fields whose ComputeString mentions the changed field's name
// and the F_Locked fields, in collection order. The plan is rebuilt whenever
// a field is added, removed, renamed, retyped or given another ComputeString,
// so it always answers as a fresh scan would.
#pragma once

#include <cstddef>
#include <vector>

#include "recordset/recordset_state.h"

namespace varnel::internal {

struct PropagationStep {
  size_t field_index;  // 0-based position in the collection
  bool recompute;      // its ComputeString mentions the changed field
  bool locked;         // it is of kind F_Locked
};

// The steps for a change of the field at changed_index (0-based), in
// collection order.
std::vector<PropagationStep> PropagationPlan(const RecordsetState& rs, size_t changed_index);

// Drops what was worked out for rs; called when the recordset goes away.
void ForgetPropagationPlans(const RecordsetState& rs);

}  // namespace varnel::internal
