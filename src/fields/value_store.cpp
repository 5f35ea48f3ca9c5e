// The per-row value and symbol store of ClsFields. Outside query mode a value
// lives at its row of the field's array; in query mode (EditStatus E_Query)
// the same operations read and write the field's QueryValue.
//
// Results of SetValue and SetSymbol: true when the value could not be stored
// because of an error (no Parent, a row outside the store, an error raised
// while the change propagated); false when it was stored or there was nothing
// to store (blank over blank, an equal value, a field kind that takes no query
// text, no companion field).
#include <memory>
#include <string>
#include <utility>

#include "fields/field_access.h"
#include "fields/field_values.h"
#include "messages/error_trap.h"
#include "recordset/change_propagation.h"
#include "recordset/column_total.h"
#include "recordset/row_store.h"

namespace varnel {
namespace {

using internal::ChangeKind;
using internal::RecordsetState;

// Fields of these kinds take no query text.
bool TakesNoQueryText(Enum_FieldType type) {
  return type == F_Other || type == F_AutoCoding || type == F_MultiMode;
}

std::string QueryText(const Variant& value) { return value.IsBlank() ? "" : value.ToString(); }

// Blank over blank, or a value equal to the stored one, stores nothing.
bool ChangesStoredValue(const Variant& old_value, const Variant& new_value) {
  if (old_value.IsBlank() || new_value.IsBlank()) {
    return old_value.IsBlank() != new_value.IsBlank();
  }
  return !ValuesEqual(new_value, old_value);
}

bool InQueryMode(const RecordsetState& rs) { return rs.edit_status == E_Query; }

bool StoreRowValue(RecordsetState& rs, ClsFields& field, const Variant& value, int32_t row_arg) {
  const int32_t row = internal::ResolveRow(rs, row_arg);
  std::vector<Variant>& values = internal::FieldAccess::Values(field);
  if (row < 0 || static_cast<size_t>(row) >= values.size()) {
    return true;  // a row outside the store is not stored
  }
  if (!ChangesStoredValue(values[row], value)) {
    return false;
  }
  const Variant old_value = std::exchange(values[row], value);
  // Totals follow every stored value, silent ones too, so they never need a recount.
  internal::FollowStoredValue(rs, field, row, old_value, value);
  if (!internal::SuspendChangeEvents) {
    const internal::ReplacedValue replaced{field, old_value, value};
    internal::PropagateChange(rs, row, field.Col, ChangeKind::Value, &replaced);
  }
  return false;
}

// In query mode the text goes to target's QueryValue; the kind that decides
// whether the call counts is the field that was called (owner).
bool StoreQueryText(RecordsetState& rs, const ClsFields& owner, ClsFields& target,
                    const Variant& value, ChangeKind kind) {
  if (TakesNoQueryText(owner.FieldType)) {
    return false;
  }
  std::string text = QueryText(value);
  if (text == target.QueryValue) {
    return false;
  }
  internal::SetFieldQueryValue(rs, target, std::move(text));
  if (!internal::SuspendChangeEvents) {
    internal::PropagateChange(rs, 0, owner.Col, kind);
  }
  return false;
}

bool StoreSymbol(RecordsetState& rs, ClsFields& field, const Variant& symbol, int32_t row_arg) {
  const std::shared_ptr<ClsFields> companion = internal::FindCompanion(field);
  if (!companion) {
    return false;
  }
  if (InQueryMode(rs)) {
    return StoreQueryText(rs, field, *companion, symbol, ChangeKind::Symbol);
  }
  const int32_t row = internal::ResolveRow(rs, row_arg);
  const std::vector<Variant>& values = internal::FieldAccess::Values(*companion);
  if (row < 0 || static_cast<size_t>(row) >= values.size()) {
    return true;
  }
  if (!ChangesStoredValue(values[row], symbol)) {
    return false;
  }
  if (companion->SetValue(symbol, row)) {
    return true;
  }
  if (!internal::SuspendChangeEvents) {
    internal::PropagateChange(rs, row, field.Col, ChangeKind::Symbol);
  }
  return false;
}

}  // namespace

ClsFields::ClsFields(const Key&) {}

ClsFields::~ClsFields() {
  values_.clear();
  Parent = nullptr;
}

bool ClsFields::SetValue(const Variant& Field_Value, int32_t Row) {
  if (Parent == nullptr) {
    return true;
  }
  RecordsetState& rs = internal::RecordsetAccess::State(*Parent);
  const internal::ErrorFieldScope error_field(Name);
  return internal::Trapped(Parent->SysErrState, true, [&] {
    return InQueryMode(rs) ? StoreQueryText(rs, *this, *this, Field_Value, ChangeKind::Value)
                           : StoreRowValue(rs, *this, Field_Value, Row);
  });
}

bool ClsFields::SetSymbol(const Variant& Field_Symbol, int32_t Row) {
  if (Parent == nullptr) {
    return true;
  }
  RecordsetState& rs = internal::RecordsetAccess::State(*Parent);
  const internal::ErrorFieldScope error_field(Name);
  return internal::Trapped(Parent->SysErrState, true,
                           [&] { return StoreSymbol(rs, *this, Field_Symbol, Row); });
}

Variant ClsFields::GetValue(int32_t Row) const {
  if (Parent == nullptr) {
    return Variant();
  }
  RecordsetState& rs = internal::RecordsetAccess::State(*Parent);
  if (InQueryMode(rs)) {
    return Variant(QueryValue);
  }
  const int32_t row = internal::ResolveRow(rs, Row);
  if (row < 0 || static_cast<size_t>(row) >= values_.size()) {
    return Variant();
  }
  return values_[row];
}

Variant ClsFields::GetSymbol(int32_t Row) const {
  const std::shared_ptr<ClsFields> companion = internal::FindCompanion(*this);
  return companion ? companion->GetValue(Row) : Variant();
}

}  // namespace varnel
