#include "writer/pending_change.h"

#include <optional>
#include <utility>

namespace varnel::internal {
namespace {

RowChange DeleteOf(const std::vector<Variant>& before) {
  return RowChange{ChangeKind::Delete, 0, before, {}};
}

// The modified row was then deleted: the database still holds its values from
// before the modification, and those find the row to delete.
std::vector<RowChange> ModifyDeleteChanges(const PendingEdit& edit) {
  if (auto before = edit.SavedValues()) {
    return {DeleteOf(*before)};
  }
  if (auto deleted = edit.DeletedValues()) {
    return {DeleteOf(*deleted)};
  }
  return {};
}

}  // namespace

std::vector<RowChange> PendingChanges(const PendingEdit& edit) {
  std::vector<RowChange> changes;
  switch (edit.Status()) {
    case E_Modify: {
      const int32_t row = edit.SavedRow();
      auto before = edit.SavedValues();
      if (before && row > 0 && row <= edit.Rows()) {
        changes.push_back(
            RowChange{ChangeKind::Update, row, std::move(*before), edit.ValuesAt(row)});
      }
      break;
    }
    case E_AddNew:
    case E_Copy:
      if (edit.Rows() > 0) {
        changes.push_back(
            RowChange{ChangeKind::Insert, edit.Rows(), {}, edit.ValuesAt(edit.Rows())});
      }
      break;
    case E_Delete:
      if (auto deleted = edit.DeletedValues()) {
        changes.push_back(DeleteOf(*deleted));
      }
      break;
    case E_ModifyDelete:
      changes = ModifyDeleteChanges(edit);
      break;
    default:
      break;
  }
  return changes;
}

}  // namespace varnel::internal
