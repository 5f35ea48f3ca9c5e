// Engine access to a field's value array and the bulk flag of the thread.
#pragma once

#include <vector>

#include "varnel/fields.h"

namespace varnel::internal {

// While set, stored values change silently: no events, no recomputation.
// Shared by every recordset of the thread.
extern thread_local bool SuspendChangeEvents;

// Sets the bulk flag for a scope and clears it on every way out.
class BulkScope {
 public:
  BulkScope() { SuspendChangeEvents = true; }
  ~BulkScope() { SuspendChangeEvents = false; }
  BulkScope(const BulkScope&) = delete;
  BulkScope& operator=(const BulkScope&) = delete;
};

struct FieldAccess {
  static std::vector<Variant>& Values(ClsFields& field) { return field.values_; }
  static const std::vector<Variant>& Values(const ClsFields& field) { return field.values_; }
};

}  // namespace varnel::internal
