// Engine access to a field's value array and the bulk flag of the thread.
#pragma once

#include <vector>

#include "varnel/fields.h"

namespace varnel::internal {

// While set, stored values change silently: no events, no recomputation.
// Shared by every recordset of the thread.
extern thread_local bool SuspendChangeEvents;

// Sets the bulk flag for a scope and gives it back its previous value on
// every way out, so that a scope nested in another (or in a load of another
// recordset of the thread) does not end the outer one. No client callback
// (event, message) may run inside: the client would see its changes silenced.
class BulkScope {
 public:
  BulkScope() : previous_(SuspendChangeEvents) { SuspendChangeEvents = true; }
  ~BulkScope() { SuspendChangeEvents = previous_; }
  BulkScope(const BulkScope&) = delete;
  BulkScope& operator=(const BulkScope&) = delete;

 private:
  bool previous_;
};

struct FieldAccess {
  static std::vector<Variant>& Values(ClsFields& field) { return field.values_; }
  static const std::vector<Variant>& Values(const ClsFields& field) { return field.values_; }
};

}  // namespace varnel::internal
