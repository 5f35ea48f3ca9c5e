#include "compute/column_kernel.h"

namespace varnel::internal {
std::optional<FieldPair> FieldPairOf(const CompiledExpression& code) {
  const std::vector<PlanStep>& plan = code.plan;
  if (plan.size() != 4 || plan[0].kind != PlanStep::Kind::PushOperand ||
      plan[1].kind != PlanStep::Kind::PushOperand || plan[2].kind != PlanStep::Kind::Reduce ||
      plan[3].kind != PlanStep::Kind::Result) {
    return std::nullopt;
  }
  const int32_t left = code.tokens[plan[0].token].field;
  const int32_t right = code.tokens[plan[1].token].field;
  if (left < 0 || right < 0) {
    return std::nullopt;
  }
  return FieldPair{left, right, plan[2].op};
}

}  // namespace varnel::internal
