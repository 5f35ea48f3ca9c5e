// MdlCompute: the two-stack operator-precedence evaluator of computed fields.
//
// Each evaluation runs over the expression's cached tokens: operands are pushed
// as read and resolved to field values only when an operator applies to them,
// so a number read from the text stays text (1+2 is "12"). Failures are shown
// in message boxes titled with the failing step and never raised: a failing
// operator gives Empty for its step and the evaluation goes on.
#include <memory>
#include <vector>

#include "compute/operators.h"
#include "compute/token_cache.h"
#include "recordset/recordset_state.h"
#include "varnel/messages.h"
#include "varnel/modules.h"

namespace varnel {
namespace MdlCompute {

thread_local std::string Expression;
thread_local ClsRecordset* CurRecordset = nullptr;
thread_local int32_t CurRow = 0;

}  // namespace MdlCompute

namespace internal {
namespace {

constexpr int32_t kOkOnly = 0;
constexpr int32_t kSubscriptOutOfRange = 9;

// The description of the run-time error in flight (call inside a catch).
std::string CurrentErrorDescription() {
  try {
    throw;
  } catch (const VbError& e) {
    return e.Description();
  } catch (const std::exception& e) {
    return e.what();
  } catch (...) {
    return std::string();
  }
}

std::string StandardDescription(int32_t number) {
  try {
    RaiseError(number);
  } catch (const VbError& e) {
    return e.Description();
  }
}

// An entry of the operand stack: an operand as read, or a computed value.
struct StackOperand {
  const ExpressionToken* token = nullptr;  // set: the operand as read
  Variant value;                           // the value when token is null
};

// The two stacks of one evaluation, kept per nesting depth so that their
// storage is reused from row to row.
struct Stacks {
  std::vector<char> operators;
  std::vector<StackOperand> operands;
};

struct StacksPool {
  std::vector<std::unique_ptr<Stacks>> by_depth;
  size_t depth = 0;  // evaluations in progress on this thread
};

thread_local StacksPool stacks_pool;

// Fresh stacks for one evaluation ("#" at the bottom of the operators),
// released when it ends.
class StacksInUse {
 public:
  StacksInUse() : pool_(stacks_pool) {
    if (pool_.by_depth.size() <= pool_.depth) {
      pool_.by_depth.push_back(std::make_unique<Stacks>());
    }
    stacks_ = pool_.by_depth[pool_.depth++].get();
    stacks_->operators.assign(1, '#');
    stacks_->operands.clear();
  }
  ~StacksInUse() {
    stacks_->operands.clear();  // releases the values
    --pool_.depth;
  }
  StacksInUse(const StacksInUse&) = delete;
  StacksInUse& operator=(const StacksInUse&) = delete;
  Stacks& get() { return *stacks_; }

 private:
  StacksPool& pool_;
  Stacks* stacks_;
};

// Reading past the last cached token: an operator that relates to nothing.
const ExpressionToken kPastEnd{};

// One evaluation of a compiled expression for one row.
class Reduction {
 public:
  Reduction(const CompiledExpression& code, const FieldList& fields, int32_t row, Stacks& stacks)
      : code_(code), fields_(fields), row_(row), stacks_(stacks) {}

  // Stores the value in result; false when the expression is malformed (a
  // read failed, or two operators met that may not meet).
  bool Run(Variant& result) {
    const ExpressionToken* token = nullptr;
    if (!Read(token)) {
      return false;
    }
    for (;;) {
      const bool end_mark = token->kind == ExpressionToken::Kind::Operator && token->op == '#';
      if (TopOperator() == '#' && end_mark) {
        result = TopOperandValue();
        return true;
      }
      if (token->kind == ExpressionToken::Kind::Operand) {
        stacks_.operands.emplace_back().token = token;
      } else {
        switch (Precede(TopOperator(), token->op)) {
          case Relation::Lower:
            stacks_.operators.push_back(token->op);
            break;
          case Relation::Same:
            PopOperator();  // a "(" meeting its ")"
            break;
          case Relation::Higher:
            Reduce();
            continue;  // the same token is compared again
          case Relation::None:
            return false;
        }
      }
      if (!Read(token)) {
        return false;
      }
    }
  }

 private:
  bool Read(const ExpressionToken*& token) {
    token = next_token_ < code_.tokens.size() ? &code_.tokens[next_token_++] : &kPastEnd;
    if (token->kind == ExpressionToken::Kind::ReadFailure) {
      MsgBox("", kOkOnly, "Read");  // no run-time error is in flight
      return false;
    }
    return true;
  }

  void Reduce() {
    const char theta = PopOperator();
    std::vector<StackOperand>& operands = stacks_.operands;
    if (operands.size() >= 2) {  // both operands there: work on them in place
      Variant value = Operate(operands[operands.size() - 2], theta, operands.back());
      operands.pop_back();
      operands.back().token = nullptr;
      operands.back().value = std::move(value);
      return;
    }
    const StackOperand b = PopOperand();  // the right operand comes off first
    const StackOperand a = PopOperand();
    operands.push_back({nullptr, Operate(a, theta, b)});
  }

  // A failing operator shows its operands and gives what it had computed:
  // Empty. The evaluation goes on with that value.
  Variant Operate(const StackOperand& a, char theta, const StackOperand& b) {
    try {
      return ApplyOperator(Resolve(a), theta, Resolve(b));
    } catch (...) {
      const std::string description = CurrentErrorDescription();
      const Variant op(std::string_view(&theta, theta == '\0' ? 0 : 1));
      const Variant shown = Concat(Concat(ShownOperand(a), op), ShownOperand(b));
      MsgBox(description + "\r\n" + std::string(shown.StringView()), kOkOnly, "Operate");
      return Variant();
    }
  }

  // The operand as the failure message shows it: resolved when it can be.
  Variant ShownOperand(const StackOperand& operand) const {
    try {
      return Resolve(operand);
    } catch (...) {
      return AsRead(operand);
    }
  }

  // An operand that is not numeric and names a field stands for that field's
  // value in the row; any other operand is used as it is.
  Variant Resolve(const StackOperand& operand) const {
    if (operand.token != nullptr) {
      return operand.token->field >= 0 ? FieldValue(operand.token->field) : operand.token->text;
    }
    if (operand.value.IsString() && !IsNumeric(operand.value)) {
      if (const auto index = code_.names.FirstNamed(operand.value.StringView())) {
        return FieldValue(*index);
      }
    }
    return operand.value;
  }

  Variant FieldValue(int32_t index) const {
    if (static_cast<size_t>(index) >= fields_.size()) {
      RaiseError(kSubscriptOutOfRange);  // the field went away while a message was shown
    }
    return fields_[index]->GetValue(row_);
  }

  static Variant AsRead(const StackOperand& operand) {
    return operand.token != nullptr ? operand.token->text : operand.value;
  }

  char TopOperator() {
    if (stacks_.operators.empty()) {
      MsgBox(StandardDescription(kSubscriptOutOfRange), kOkOnly, "GetTop");
      return '\0';
    }
    return stacks_.operators.back();
  }

  char PopOperator() {
    if (stacks_.operators.empty()) {
      MsgBox(StandardDescription(kSubscriptOutOfRange), kOkOnly, "Pop");
      return '\0';
    }
    const char top = stacks_.operators.back();
    stacks_.operators.pop_back();
    return top;
  }

  StackOperand PopOperand() {
    if (stacks_.operands.empty()) {
      MsgBox(StandardDescription(kSubscriptOutOfRange), kOkOnly, "Pop");
      return {};
    }
    StackOperand top = std::move(stacks_.operands.back());
    stacks_.operands.pop_back();
    return top;
  }

  Variant TopOperandValue() {
    if (stacks_.operands.empty()) {
      MsgBox(StandardDescription(kSubscriptOutOfRange), kOkOnly, "GetTop");
      return Variant();
    }
    StackOperand& top = stacks_.operands.back();
    return top.token != nullptr ? top.token->text : std::move(top.value);
  }

  const CompiledExpression& code_;
  const FieldList& fields_;
  const int32_t row_;
  Stacks& stacks_;
  size_t next_token_ = 0;
};

Variant ReportFailure(const std::string& description) {
  MsgBox(LoadResString(101) + description, kOkOnly, "Exp_Reduced");
  return Variant();
}

}  // namespace
}  // namespace internal

Variant MdlCompute::Exp_Reduced() {
  using namespace internal;
  ClsRecordset* const recordset = CurRecordset;
  if (recordset == nullptr) {
    return ReportFailure("");
  }
  Variant value;
  bool evaluated = false;
  std::string description;
  try {
    CacheUse cache;
    StacksInUse stacks;
    const FieldList& fields = RecordsetAccess::State(*recordset).fields;
    const CompiledExpression& code = cache.Get(recordset, Expression, fields);
    Expression = code.rewritten;
    evaluated = Reduction(code, fields, CurRow, stacks.get()).Run(value);
  } catch (...) {
    description = CurrentErrorDescription();
  }
  if (!evaluated) {  // the stacks are released before the message
    value = ReportFailure(description);
  }
  return value;
}

}  // namespace varnel
