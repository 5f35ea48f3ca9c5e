#include "compute/column_kernel.h"

#include "automation/arithmetic_rules.h"

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

size_t MultiplyWholeByCurrency(const NumberBits& bits, const Variant* left, const Variant* right,
                               Variant* out, size_t first, size_t end) {
  using Kind = NumberBits::Kind;
  size_t row = first;
  for (; row < end; ++row) {
    const Kind a = bits.KindOf(left[row]);
    const Kind b = bits.KindOf(right[row]);
    int64_t whole = 0;
    int64_t units = 0;
    if (b == Kind::Currency && (a == Kind::Long || a == Kind::Integer)) {
      whole = NumberBits::Whole(left[row], a);
      units = NumberBits::Units(right[row]);
    } else if (a == Kind::Currency && (b == Kind::Long || b == Kind::Integer)) {
      whole = NumberBits::Whole(right[row], b);
      units = NumberBits::Units(left[row]);
    } else {
      break;
    }
    int64_t product = 0;
    if (!WholeTimesCurrency(whole, units, product)) {
      break;
    }
    bits.StoreCurrency(out[row], product);
  }
  return row;
}

}  // namespace varnel::internal
