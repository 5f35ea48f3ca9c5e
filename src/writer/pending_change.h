// What a recordset's pending edit asks to be written: the rows to insert,
// update or delete, read from the recordset's edit status and its snapshots.
#pragma once

#include <cstdint>
#include <vector>

#include "editing/pending_edit.h"
#include "varnel/variant.h"

namespace varnel::internal {

enum class ChangeKind { Insert, Update, Delete };

struct RowChange {
  ChangeKind kind = ChangeKind::Update;
  // Insert, Update: the row of the store that holds the new values now.
  int32_t row = 0;
  // Update, Delete: every field's value before the edit, in field order (a
  // snapshot may hold more elements after the fields; they are not read).
  std::vector<Variant> before;
  // Insert, Update: every field's value now, in field order.
  std::vector<Variant> after;
  // Table without a key: the rows holding the values this change looks for
  // (after; before for a delete) just before it was written; -1 when not counted.
  int64_t matching = -1;
};

// The changes that saving the current edit status means, in the order they
// are to be written; empty when nothing reaches the database:
//   E_Modify                the modified row (SavedRow) from SavedValues
//   E_AddNew, E_Copy        the inserted last row
//   E_Delete                the deleted row's values (DeletedValues)
//   E_ModifyDelete          the modified row, deleted: a delete by its values
//                           from before the modification
std::vector<RowChange> PendingChanges(const PendingEdit& edit);

}  // namespace varnel::internal
