#include "fields/field_values.h"

#include "fields/field_access.h"
#include "recordset/recordset_state.h"

namespace varnel::internal {

thread_local bool SuspendChangeEvents = false;

std::shared_ptr<ClsFields> MakeField() { return std::make_shared<ClsFields>(ClsFields::Key{}); }

void ResetValues(ClsFields& field, int32_t rows) {
  if (rows < 0) {
    RaiseError(9);
  }
  std::vector<Variant>& values = FieldAccess::Values(field);
  values.clear();
  if (rows != 0) {
    values.assign(static_cast<size_t>(rows) + 1, Variant::Null());
  }
}

void ResizeValues(ClsFields& field, int32_t rows) {
  if (rows < 0) {
    RaiseError(9);
  }
  FieldAccess::Values(field).resize(static_cast<size_t>(rows) + 1);
}

std::shared_ptr<ClsFields> FindCompanion(const ClsFields& field) {
  if (field.Parent == nullptr || field.SymbolName.empty()) {
    return nullptr;
  }
  const RecordsetState& rs = RecordsetAccess::State(*field.Parent);
  std::shared_ptr<ClsFields> companion;
  for (const auto& f : rs.fields) {
    if (f->Name == field.SymbolName) {
      companion = f;  // the last match wins
    }
  }
  return companion;
}

Variant GetSymbolQueryValue(const ClsFields& field) {
  const std::shared_ptr<ClsFields> companion = FindCompanion(field);
  return companion ? Variant(companion->QueryValue) : Variant();
}

}  // namespace varnel::internal
