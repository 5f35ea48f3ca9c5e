#include "recordset/change_propagation.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "fields/field_access.h"
#include "recordset/column_total.h"
#include "recordset/compute_dependencies.h"
#include "recordset/field_lookup.h"
#include "recordset/row_store.h"

namespace varnel::internal {
namespace {

// Pops the recompute chain on every way out of a recomputation.
class ChainEntry {
 public:
  ChainEntry(std::vector<std::string>& chain, const std::string& name) : chain_(chain) {
    chain_.push_back(name);
  }
  ~ChainEntry() { chain_.pop_back(); }
  ChainEntry(const ChainEntry&) = delete;
  ChainEntry& operator=(const ChainEntry&) = delete;

  // True when the name already stood on the chain below the new top: the
  // field is being recomputed further up, and evaluating it again would loop.
  bool IsCycle() const {
    return std::find(chain_.begin(), chain_.end() - 1, chain_.back()) != chain_.end() - 1;
  }

 private:
  std::vector<std::string>& chain_;
};

void Recompute(RecordsetState& rs, ClsFields& field, int32_t row) {
  ChainEntry entry(rs.recompute_chain, field.Name);
  if (entry.IsCycle()) {
    return;
  }
  const Variant value = EvaluateComputed(rs, field, row);
  field.SetValue(value, row);  // stores and propagates in turn
}

// A row stays editable while its lock field holds nothing or 0; any other
// value locks it (text that is not a number included).
bool LockValueAllowsEditing(const Variant& value) {
  if (value.IsBlank()) {
    return true;
  }
  if (value.IsString() && !IsNumeric(value)) {
    return false;
  }
  return value.ToDouble() == 0;
}

void RefreshEditMark(RecordsetState& rs, const ClsFields& lock_field, int32_t row) {
  const auto& values = FieldAccess::Values(lock_field);
  if (row < 0 || static_cast<size_t>(row) >= values.size() ||
      static_cast<size_t>(row) >= rs.edit_marks.size()) {
    return;
  }
  rs.edit_marks[row] = LockValueAllowsEditing(values[row]) ? 1 : 0;
}

void RunStep(RecordsetState& rs, const PropagationStep& step, int32_t row) {
  if (step.field_index >= rs.fields.size()) {
    return;  // a handler removed fields meanwhile
  }
  const std::shared_ptr<ClsFields> field = rs.fields[step.field_index];
  if (step.recompute) {
    Recompute(rs, *field, row);
  }
  if (step.locked) {
    RefreshEditMark(rs, *field, row);
  }
}

}  // namespace

void PropagateChange(RecordsetState& rs, int32_t row, int32_t col, ChangeKind kind,
                     const ReplacedValue* /*replaced: totals followed it when stored*/) {
  if (rs.edit_status == E_Query) {
    return;
  }
  if (kind == ChangeKind::Value) {
    rs.Raise(Ev_ValueChange, &ClsRecordsetEvents::ValueChange, row, col);
  } else {
    rs.Raise(Ev_SymbolChange, &ClsRecordsetEvents::SymbolChange, row, col);
  }
  // The changed field is the one at position Col; Col is not renumbered by
  // Remove, so it may name another field or none.
  const bool has_changed_field = col >= 1 && static_cast<size_t>(col) <= rs.fields.size();
  const size_t changed_index = has_changed_field ? static_cast<size_t>(col) - 1 : 0;
  if (has_changed_field) {
    for (const PropagationStep& step : PropagationPlan(rs, changed_index)) {
      RunStep(rs, step, row);
    }
  } else {
    for (size_t i = 0; i < rs.fields.size(); ++i) {
      if (rs.fields[i]->FieldType == F_Locked) {
        RunStep(rs, {i, false, true}, row);
      }
    }
  }
  if (has_changed_field && changed_index < rs.fields.size()) {
    // The stored value already moved the totals (FollowStoredValue); this
    // only recounts totals counted for another field, kind or companion.
    EnsureTotal(rs, changed_index);
  }
}

std::string GetFieldQueryValue(const RecordsetState& rs, std::string_view field_name) {
  const std::optional<size_t> index = FindFieldByName(rs, field_name);
  return index ? rs.fields[*index]->QueryValue : std::string();
}

void SetFieldQueryValue(RecordsetState& rs, ClsFields& field, std::string value) {
  field.QueryValue = std::move(value);
  const std::string name = field.Name;
  rs.Raise(Ev_ValueQueryChange, &ClsRecordsetEvents::ValueQueryChange, name);
}

void SetFieldQueryValue(RecordsetState& rs, std::string_view field_name, std::string value) {
  if (const std::optional<size_t> index = FindFieldByName(rs, field_name)) {
    const std::shared_ptr<ClsFields> field = rs.fields[*index];
    SetFieldQueryValue(rs, *field, std::move(value));
  }
}

}  // namespace varnel::internal
