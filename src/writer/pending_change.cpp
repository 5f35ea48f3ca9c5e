#include "writer/pending_change.h"

#include <optional>

#include "fields/field_access.h"

namespace varnel::internal {
namespace {

std::vector<Variant> ValuesAt(const RecordsetState& rs, int32_t row) {
  std::vector<Variant> values;
  values.reserve(rs.fields.size());
  for (const auto& field : rs.fields) {
    const std::vector<Variant>& column = FieldAccess::Values(*field);
    values.push_back(row >= 0 && static_cast<size_t>(row) < column.size() ? column[row]
                                                                          : Variant());
  }
  return values;
}

RowChange DeleteOf(const std::vector<Variant>& before) {
  return RowChange{ChangeKind::Delete, 0, before, {}};
}

// The modified row was then deleted: the database still holds its values from
// before the modification, and those find the row to delete.
std::vector<RowChange> ModifyDeleteChanges(const RecordsetState& rs) {
  if (rs.saved_values) {
    return {DeleteOf(*rs.saved_values)};
  }
  if (rs.deleted_values) {
    return {DeleteOf(*rs.deleted_values)};
  }
  return {};
}

}  // namespace

std::vector<RowChange> PendingChanges(const RecordsetState& rs) {
  std::vector<RowChange> changes;
  switch (rs.edit_status) {
    case E_Modify:
      if (rs.saved_values && rs.saved_row > 0 && rs.saved_row <= rs.Rows()) {
        changes.push_back(RowChange{ChangeKind::Update, rs.saved_row, *rs.saved_values,
                                    ValuesAt(rs, rs.saved_row)});
      }
      break;
    case E_AddNew:
    case E_Copy:
      if (rs.Rows() > 0) {
        changes.push_back(RowChange{ChangeKind::Insert, rs.Rows(), {}, ValuesAt(rs, rs.Rows())});
      }
      break;
    case E_Delete:
      if (rs.deleted_values) {
        changes.push_back(DeleteOf(*rs.deleted_values));
      }
      break;
    case E_ModifyDelete:
      changes = ModifyDeleteChanges(rs);
      break;
    default:
      break;
  }
  return changes;
}

}  // namespace varnel::internal
