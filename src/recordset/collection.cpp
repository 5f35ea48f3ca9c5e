// The recordset's life and its field collection. The collection keeps the
// fields in order; the key of a field is the name given to Add, compared
// without regard to case (renaming the field later does not re-key it), and a
// field added without a name is reachable by position only. Col is the
// position given at Add and is not renumbered when an earlier field goes.
//
// Failures: Add with a name that is already a key returns nullptr and reports
// error 457 (a programming mistake worth seeing); Item with an unknown key or
// position returns nullptr and Remove returns true, both quietly.
#include <memory>

#include "fields/field_access.h"
#include "fields/field_values.h"
#include "messages/error_trap.h"
#include "recordset/compute_dependencies.h"
#include "recordset/field_lookup.h"
#include "recordset/recordset_state.h"

namespace varnel {
namespace {

using internal::RecordsetState;

constexpr int32_t kDuplicateKey = 457;

// The settings a named field starts with; an unnamed field keeps every type
// default (IsData, Edit and EnableNull false).
void ApplyInitialSettings(ClsFields& field) {
  field.IsData = true;
  field.InputMax = Variant::Null();
  field.InputMin = Variant::Null();
  field.Edit = true;
  field.DefaultValue = Variant::Null();
  field.EnableNull = true;
  field.IsSum = false;
  field.SumValue = Variant::Null();
  field.Copy = false;
}

// A removed field no longer belongs to this recordset: its value operations
// fail quietly instead of reaching a recordset that may be gone.
void Release(ClsFields& field) { field.Parent = nullptr; }

}  // namespace

ClsRecordset::ClsRecordset() : d_(std::make_unique<RecordsetState>(*this)) {
  internal::SuspendChangeEvents = false;
}

ClsRecordset::~ClsRecordset() {
  CloseDataSource();
  for (const auto& field : d_->fields) {
    Release(*field);
  }
  d_->fields.clear();
  d_->keys.clear();
  internal::ForgetPropagationPlans(*d_);
}

std::shared_ptr<ClsFields> ClsRecordset::Add(const std::string& Name) {
  return internal::Trapped(SysErrState, std::shared_ptr<ClsFields>(), [&] {
    RecordsetState& rs = *d_;
    std::shared_ptr<ClsFields> field = internal::MakeField();
    field->Col = Count() + 1;
    field->Parent = this;
    if (!Name.empty()) {
      field->Name = Name;
      ApplyInitialSettings(*field);
      if (internal::FindFieldByKey(rs, Name)) {
        Release(*field);
        throw VbError(kDuplicateKey,
                      "This key is already associated with an element of this collection");
      }
    }
    rs.fields.push_back(field);
    rs.keys.push_back(Name);
    if (rs.Rows() > 0) {
      internal::ResizeValues(*field, rs.Rows());
    }
    return field;
  });
}

std::shared_ptr<ClsFields> ClsRecordset::Item(const Variant& Name) const {
  const std::optional<size_t> index = internal::FindField(*d_, Name);
  return index ? d_->fields[*index] : nullptr;
}

int32_t ClsRecordset::Count() const { return static_cast<int32_t>(d_->fields.size()); }

bool ClsRecordset::Remove(const Variant& Name) {
  const std::optional<size_t> index = internal::FindField(*d_, Name);
  if (!index) {
    return true;
  }
  const std::shared_ptr<ClsFields> field = d_->fields[*index];
  d_->fields.erase(d_->fields.begin() + static_cast<std::ptrdiff_t>(*index));
  d_->keys.erase(d_->keys.begin() + static_cast<std::ptrdiff_t>(*index));
  Release(*field);
  return false;
}

bool ClsRecordset::Clear() {
  for (const auto& field : d_->fields) {
    Release(*field);
  }
  d_->fields.clear();
  d_->keys.clear();
  return false;
}

std::vector<std::shared_ptr<ClsFields>>::const_iterator ClsRecordset::begin() const {
  return d_->fields.begin();
}

std::vector<std::shared_ptr<ClsFields>>::const_iterator ClsRecordset::end() const {
  return d_->fields.end();
}

int32_t ClsRecordset::Advise(ClsRecordsetEvents* Sink) {
  return Sink == nullptr ? 0 : d_->sinks.Advise(Sink);
}

void ClsRecordset::Unadvise(int32_t Cookie) { d_->sinks.Unadvise(Cookie); }

}  // namespace varnel
