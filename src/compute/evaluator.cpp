// MdlCompute: the two-stack operator-precedence evaluator of computed fields.
//
// Each evaluation replays the expression's cached plan (compiled_expression.h)
// on the row's values: operands are pushed as read and resolved to field
// values only when an operator applies to them, so a number read from the
// text stays text (1+2 is "12"). Failures are shown
// in message boxes titled with the failing step and never raised: a failing
// operator gives Empty for its step and the evaluation goes on.
#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

#include "compute/column_kernel.h"
#include "compute/operators.h"
#include "compute/token_cache.h"
#include "fields/field_access.h"
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

// Message boxes shown by evaluations on this thread: a box lets client code
// run, which may change the fields an evaluation of many rows relies on.
thread_local uint64_t messages_shown = 0;

void Show(const std::string& prompt, const char* title) {
  ++messages_shown;
  MsgBox(prompt, kOkOnly, title);
}

// An entry of the operand stack: an operand as read, or a computed value.
struct StackOperand {
  const ExpressionToken* token = nullptr;  // set: the operand as read
  Variant value;                           // the value when token is null
};

// The operand stack of one evaluation, kept per nesting depth so that its
// storage is reused from row to row.
struct StacksPool {
  std::vector<std::unique_ptr<std::vector<StackOperand>>> by_depth;
  size_t depth = 0;  // evaluations in progress on this thread
};

thread_local StacksPool stacks_pool;

class StacksInUse {
 public:
  StacksInUse() : pool_(stacks_pool) {
    if (pool_.by_depth.size() <= pool_.depth) {
      pool_.by_depth.push_back(std::make_unique<std::vector<StackOperand>>());
    }
    operands_ = pool_.by_depth[pool_.depth++].get();
    operands_->clear();
  }
  ~StacksInUse() {
    operands_->clear();  // releases the values
    --pool_.depth;
  }
  StacksInUse(const StacksInUse&) = delete;
  StacksInUse& operator=(const StacksInUse&) = delete;
  std::vector<StackOperand>& get() { return *operands_; }

 private:
  StacksPool& pool_;
  std::vector<StackOperand>* operands_;
};

// One evaluation of a compiled expression for one row: the plan's steps
// replayed on the row's values.
class Reduction {
 public:
  Reduction(const CompiledExpression& code, const FieldList& fields, int32_t row,
            std::vector<StackOperand>& operands)
      : code_(code), fields_(fields), row_(row), operands_(operands) {}

  // Stores the value in result; false when the expression is malformed (a
  // read failed, or two operators met that may not meet).
  bool Run(Variant& result) {
    operands_.clear();
    for (const PlanStep& step : code_.plan) {
      switch (step.kind) {
        case PlanStep::Kind::PushOperand:
          operands_.emplace_back().token = &code_.tokens[step.token];
          break;
        case PlanStep::Kind::Reduce:
          Reduce(step.op);
          break;
        case PlanStep::Kind::StackMessage:
          Show(StandardDescription(kSubscriptOutOfRange), step.title);
          break;
        case PlanStep::Kind::ReadFailure:
          Show("", "Read");  // no run-time error is in flight
          return false;
        case PlanStep::Kind::Malformed:
          return false;
        case PlanStep::Kind::Result:
          result = TopOperandValue();
          return true;
      }
    }
    return false;
  }

 private:
  void Reduce(char theta) {
    if (operands_.size() >= 2) {  // both operands there: work on them in place
      Variant value = Operate(operands_[operands_.size() - 2], theta, operands_.back());
      operands_.pop_back();
      operands_.back().token = nullptr;
      operands_.back().value = std::move(value);
      return;
    }
    const StackOperand b = PopOperand();  // the right operand comes off first
    const StackOperand a = PopOperand();
    operands_.push_back({nullptr, Operate(a, theta, b)});
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
      Show(description + "\r\n" + std::string(shown.StringView()), "Operate");
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

  StackOperand PopOperand() {
    if (operands_.empty()) {
      Show(StandardDescription(kSubscriptOutOfRange), "Pop");
      return {};
    }
    StackOperand top = std::move(operands_.back());
    operands_.pop_back();
    return top;
  }

  Variant TopOperandValue() {
    if (operands_.empty()) {
      Show(StandardDescription(kSubscriptOutOfRange), "GetTop");
      return Variant();
    }
    StackOperand& top = operands_.back();
    return top.token != nullptr ? top.token->text : std::move(top.value);
  }

  const CompiledExpression& code_;
  const FieldList& fields_;
  const int32_t row_;
  std::vector<StackOperand>& operands_;
};

Variant ReportFailure(const std::string& description) {
  Show(LoadResString(101) + description, "Exp_Reduced");
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

namespace internal {
namespace {

// Row by row what Exp_Reduced does with Expression = source, CurRow = row and
// CurRecordset = recordset, the expression looked up once. It is looked up
// again after a row that showed a message, whose handler may have changed
// the fields or the module state.
class RowsEvaluation {
 public:
  RowsEvaluation(ClsRecordset& recordset, const std::string& source, std::vector<Variant>& out)
      : recordset_(recordset),
        state_(RecordsetAccess::State(recordset)),
        source_(source),
        out_(out) {}

  void Run(int32_t first, int32_t last) {
    for (int32_t row = QuickRows(first, last); row <= last; row = QuickRows(row + 1, last)) {
      General(row);
    }
    MdlCompute::CurRow = last >= first ? last : MdlCompute::CurRow;
  }

 private:
  void Store(int32_t row, Variant value) {
    if (row >= 0 && static_cast<size_t>(row) < out_.size()) {
      out_[static_cast<size_t>(row)] = std::move(value);
    }
  }

  // Rows from `first` on whose two fields' values combine straight (no
  // message, no client code can run); returns the first row that needs the
  // general evaluation.
  int32_t QuickRows(int32_t first, int32_t last) {
    if (!pair_ || pair_->op != '*' || !bits_.Usable() || state_.edit_status == E_Query ||
        first < 0) {
      return first;
    }
    const size_t end = std::min({left_->size(), right_->size(), out_.size(),
                                 static_cast<size_t>(std::max(last, first - 1)) + 1});
    return static_cast<int32_t>(MultiplyWholeByCurrency(
        bits_, left_->data(), right_->data(), out_.data(), static_cast<size_t>(first), end));
  }

  void General(int32_t row) {
    const uint64_t messages_before = messages_shown;
    MdlCompute::CurRow = row;
    MdlCompute::CurRecordset = &recordset_;
    Variant value;
    bool evaluated = false;
    std::string description;
    try {
      if (code_ == nullptr) {
        Read();
      }
      evaluated = Reduction(*code_, state_.fields, row, stacks_.get()).Run(value);
    } catch (...) {
      description = CurrentErrorDescription();
    }
    stacks_.get().clear();
    if (!evaluated) {
      value = ReportFailure(description);
    }
    MdlCompute::CurRecordset = nullptr;
    if (messages_shown != messages_before) {
      code_ = nullptr;  // read again: the fields may have changed
      pair_.reset();
    }
    Store(row, std::move(value));
  }

  void Read() {
    MdlCompute::Expression = source_;
    code_ = &cache_.Get(&recordset_, source_, state_.fields);
    MdlCompute::Expression = code_->rewritten;
    pair_ = FieldPairOf(*code_);
    if (pair_) {
      left_ = &FieldAccess::Values(*state_.fields[static_cast<size_t>(pair_->left)]);
      right_ = &FieldAccess::Values(*state_.fields[static_cast<size_t>(pair_->right)]);
    }
  }

  ClsRecordset& recordset_;
  RecordsetState& state_;
  const std::string& source_;
  std::vector<Variant>& out_;
  CacheUse cache_;
  StacksInUse stacks_;
  const CompiledExpression* code_ = nullptr;
  std::optional<FieldPair> pair_;
  const NumberBits bits_;
  const std::vector<Variant>* left_ = nullptr;
  const std::vector<Variant>* right_ = nullptr;
};

}  // namespace

void EvaluateRows(ClsRecordset& recordset, const std::string& source, int32_t first, int32_t last,
                  std::vector<Variant>& out) {
  RowsEvaluation(recordset, source, out).Run(first, last);
}

}  // namespace internal
}  // namespace varnel
