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

struct RecordsetState {
  explicit RecordsetState(ClsRecordset& owner) : self(owner) {}

  ClsRecordset& self;

  // ---- field collection (in collection order; Col is not renumbered) ----
  std::vector<std::shared_ptr<ClsFields>> fields;

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

  // ---- snapshots (one element per field, in field order; nullopt = erased) ----
  std::optional<std::vector<Variant>> saved_values;  // undo snapshot of SavedRow
  int32_t saved_row = 0;
  std::optional<std::vector<Variant>> deleted_values;  // the last deleted row
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
