// The private state of a ClsRecordset, shared by the engine files of the
// data source, navigation, selection, editing and query subsystems.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "public/event_sinks.h"
#include "public/row_observers.h"
#include "recordset/exact_sum.h"
#include "varnel/recordset.h"

namespace varnel::internal {

// One row kept aside by the editing operations (the undo snapshot of a
// modified row, or a deleted row): each value with the field it belongs to,
// so that it is put back field by field even after fields were added or
// removed, and the row's edit mark.
struct RowSnapshot {
  std::vector<Variant> values;
  std::vector<std::weak_ptr<ClsFields>> fields;  // the owner of each value
  bool editable = true;

  // The kept value of field; nullopt for a field added since.
  std::optional<Variant> ValueOf(const ClsFields& field, size_t position_hint) const {
    if (position_hint < fields.size() && fields[position_hint].lock().get() == &field) {
      return values[position_hint];
    }
    for (size_t i = 0; i < fields.size(); ++i) {
      if (fields[i].lock().get() == &field) {
        return values[i];
      }
    }
    return std::nullopt;
  }
};

struct RecordsetState {
  explicit RecordsetState(ClsRecordset& owner) : self(owner) {}

  ClsRecordset& self;

  // ---- field collection (in collection order; Col is not renumbered) ----
  std::vector<std::shared_ptr<ClsFields>> fields;
  // The key of each field: the name given to Add ("" = none, reachable by
  // position only). Renaming a field later does not re-key it.
  std::vector<std::string> keys;

  // ---- per-row marks, index 0..Rows; element 0 holds no row; empty = erased ----
  std::vector<uint8_t> select_marks;
  std::vector<uint8_t> edit_marks;
  int32_t current_row = 0;  // 1-based, 0 = none
  int32_t select_anchor = 0;
  Enum_SelectState select_state = S_None;
  bool locked = false;
  Enum_EditStatus edit_status = E_Default;

  // ---- composed SQL ----
  std::string sql_text;
  std::string recordset_condition;
  std::string recordset_order_by;

  // ---- snapshots (nullopt = erased) ----
  std::optional<RowSnapshot> saved_values;  // undo snapshot of SavedRow
  int32_t saved_row = 0;
  std::optional<RowSnapshot> deleted_values;  // the last deleted row
  int32_t deleted_row = 0;
  std::optional<std::vector<Variant>> saved_query_values;  // criteria kept in query mode

  // ---- change propagation ----
  std::vector<std::string> recompute_chain;  // computed fields being recomputed
  std::unordered_map<const ClsFields*, ColumnTotalRecord> column_totals;

  EventSinks sinks;
  RowObservers row_observers;

  // The row count: the upper bound of the mark arrays (0 when erased).
  int32_t Rows() const {
    return select_marks.empty() ? 0 : static_cast<int32_t>(select_marks.size()) - 1;
  }

  // Stores a new status and raises EditStatusChange when it differs.
  void SetEditStatusValue(Enum_EditStatus status) {
    if (status != edit_status) {
      edit_status = status;
      Raise(Ev_EditStatusChange, &ClsRecordsetEvents::EditStatusChange);
    }
  }

  template <class... Params, class... Args>
  void Raise(EventDispId id, void (ClsRecordsetEvents::*member)(Params...), Args&&... args) {
    sinks.Raise(id, member, std::forward<Args>(args)...);
  }
};

struct RecordsetAccess {
  static RecordsetState& State(ClsRecordset& rs) { return *rs.d_; }
  static const RecordsetState& State(const ClsRecordset& rs) { return *rs.d_; }
};

}  // namespace varnel::internal
