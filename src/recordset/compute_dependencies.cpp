#include "recordset/compute_dependencies.h"

#include <optional>
#include <string>
#include <unordered_map>

#include "fields/field_names.h"

namespace varnel::internal {
namespace {

// What a plan was worked out from, field by field.
struct FieldSignature {
  const ClsFields* field;
  std::string name;
  std::string compute;
  Enum_FieldType type;

  bool Describes(const ClsFields& f) const {
    return field == &f && type == f.FieldType && name == f.Name && compute == f.ComputeString;
  }
};

struct Plans {
  std::vector<FieldSignature> signature;
  std::vector<std::optional<std::vector<PropagationStep>>> by_changed;
};

// Events are raised on the client's thread, so the plans are kept per thread.
thread_local std::unordered_map<const RecordsetState*, Plans> t_plans;

bool StillDescribes(const Plans& plans, const std::vector<std::shared_ptr<ClsFields>>& fields) {
  if (plans.signature.size() != fields.size()) {
    return false;
  }
  for (size_t i = 0; i < fields.size(); ++i) {
    if (!plans.signature[i].Describes(*fields[i])) {
      return false;
    }
  }
  return true;
}

void Restart(Plans& plans, const std::vector<std::shared_ptr<ClsFields>>& fields) {
  plans.signature.clear();
  plans.signature.reserve(fields.size());
  for (const auto& f : fields) {
    plans.signature.push_back({f.get(), f->Name, f->ComputeString, f->FieldType});
  }
  plans.by_changed.assign(fields.size(), std::nullopt);
}

// A field without a name cannot be mentioned, and a field without a
// ComputeString is not computed: neither is ever recomputed.
std::vector<PropagationStep> BuildPlan(const std::vector<std::shared_ptr<ClsFields>>& fields,
                                       size_t changed_index) {
  const std::string& changed_name = fields[changed_index]->Name;
  std::vector<PropagationStep> steps;
  for (size_t i = 0; i < fields.size(); ++i) {
    const ClsFields& f = *fields[i];
    const bool recompute = !changed_name.empty() && !f.ComputeString.empty() &&
                           ContainsNamePattern(f.ComputeString, changed_name);
    const bool locked = f.FieldType == F_Locked;
    if (recompute || locked) {
      steps.push_back({i, recompute, locked});
    }
  }
  return steps;
}

}  // namespace

std::vector<PropagationStep> PropagationPlan(const RecordsetState& rs, size_t changed_index) {
  if (changed_index >= rs.fields.size()) {
    return {};
  }
  Plans& plans = t_plans[&rs];
  if (!StillDescribes(plans, rs.fields)) {
    Restart(plans, rs.fields);
  }
  auto& plan = plans.by_changed[changed_index];
  if (!plan) {
    plan = BuildPlan(rs.fields, changed_index);
  }
  return *plan;
}

void ForgetPropagationPlans(const RecordsetState& rs) { t_plans.erase(&rs); }

}  // namespace varnel::internal
