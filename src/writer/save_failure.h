// What the user is told when a save does not go through: the failure in
// flight turned into plain words (what happened, what to do), in the thread's
// language, naming the field the database named.
#pragma once

#include <cstdint>
#include <string>

#include "recordset/recordset_state.h"
#include "varnel/variant.h"

namespace varnel::internal {

// An UPDATE or DELETE found no row: someone else changed or deleted it.
class RowConflictError : public VbError {
 public:
  RowConflictError();
};

// Where the save was when it failed: a lost connection while committing
// leaves the outcome unknown.
enum class SaveStage { kWriting, kCommitting };

struct SaveFailure {
  int32_t number = 0;
  std::string text;
  // The connection broke while committing: the row may have been written.
  bool outcome_unknown = false;
  bool conflict = false;  // a RowConflictError
};

// The failure of the exception in flight (call only inside a catch block).
SaveFailure DescribeSaveFailure(const RecordsetState& rs, SaveStage stage);

// How the user knows the field written to Column: its DisplayName, or its
// Name, or Column itself when no field writes it.
std::string FieldLabel(const RecordsetState& rs, const std::string& column);

}  // namespace varnel::internal
