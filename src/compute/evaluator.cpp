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

thread_local std::vector<std::unique_ptr<Stacks>> stacks_pool;
thread_local size_t evaluation_depth = 0;

class StacksInUse {
 public:
  StacksInUse() {
    if (stacks_pool.size() <= evaluation_depth) {
      stacks_pool.push_back(std::make_unique<Stacks>());
    }
    stacks_ = stacks_pool[evaluation_depth++].get();
    stacks_->operators.assign(1, '#');
    stacks_->operands.clear();
  }
  ~StacksInUse() {
    stacks_->operands.clear();  // releases the values
    --evaluation_depth;
  }
  StacksInUse(const StacksInUse&) = delete;
  StacksInUse& operator=(const StacksInUse&) = delete;
  Stacks& get() { return *stacks_; }

 private:
  Stacks* stacks_;
};

// Reading past the last cached token: an operator that relates to nothing.
const ExpressionToken kPastEnd{};

// One evaluation of a compiled expression for one row.
class Reduction {
 public:
  Reduction(const CompiledExpression& code, const FieldList& fields, int32_t row, Stacks& stacks)
      : code_(code), fields_(fields), row_(row), stacks_(stacks) {}

  // The value; nullopt when the expression is malformed (a read failed, or two
  // operators met that may not meet).
  std::optional<Variant> Run() {
    const ExpressionToken* token = nullptr;
    if (!Read(token)) {
      return std::nullopt;
    }
    for (;;) {
      const bool end_mark = token->kind == ExpressionToken::Kind::Operator && token->op == '#';
      if (TopOperator() == '#' && end_mark) {
        return TopOperandValue();
      }
      if (token->kind == ExpressionToken::Kind::Operand) {
        stacks_.operands.push_back({token, Variant()});
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
            return std::nullopt;
        }
      }
      if (!Read(token)) {
        return std::nullopt;
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
    const StackOperand b = PopOperand();  // the right operand comes off first
    const StackOperand a = PopOperand();
    stacks_.operands.push_back({nullptr, Operate(a, theta, b)});
  }

  // A failing operator shows its operands and gives what it had computed:
  // Empty. The evaluation goes on with that value.
  Variant Operate(const StackOperand& a_in, char theta, const StackOperand& b_in) {
    Variant a, b, result;
    int resolved = 0;
    try {
      a = Resolve(a_in);
      ++resolved;
      b = Resolve(b_in);
      ++resolved;
      result = ApplyOperator(a, theta, b);
    } catch (...) {
      const std::string description = CurrentErrorDescription();
      if (resolved < 1) {
        a = AsRead(a_in);
      }
      if (resolved < 2) {
        b = AsRead(b_in);
      }
      const Variant op(std::string_view(&theta, theta == '\0' ? 0 : 1));
      MsgBox(description + "\r\n" + std::string(Concat(Concat(a, op), b).StringView()), kOkOnly,
             "Operate");
    }
    return result;
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
  std::optional<Variant> value;
  try {
    const CacheUse cache_use;
    StacksInUse stacks;
    const FieldList& fields = RecordsetAccess::State(*recordset).fields;
    const CompiledExpression& code = CachedExpression(recordset, Expression, fields);
    Expression = code.rewritten;
    value = Reduction(code, fields, CurRow, stacks.get()).Run();
  } catch (...) {
    return ReportFailure(CurrentErrorDescription());
  }
  return value ? std::move(*value) : ReportFailure("");  // a malformed expression
}

}  // namespace varnel
