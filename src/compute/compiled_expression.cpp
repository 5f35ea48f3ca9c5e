#include "compute/compiled_expression.h"

#include "compute/operators.h"

namespace varnel::internal {
namespace {

std::string Rewritten(const std::string& source) {
  std::string text;
  text.reserve(source.size() + 1);
  for (char c : source) {
    if (c != ' ') {
      text += c;
    }
  }
  text += '#';
  return text;
}

std::string NumberInStandardForm(std::string_view text) {
  return CStr(Variant(Val(std::string(text))));
}

// Reads tokens from the rewritten expression. An operand extends over every
// character up to the next operator character, and past it only while the
// text so far is exactly a field name or a number in standard form.
class ExpressionReader {
 public:
  ExpressionReader(std::string_view text, const FieldNames& names) : text_(text), names_(names) {}

  ExpressionToken Next() {
    if (position_ >= text_.size()) {
      return OperatorToken('\0');
    }
    const char c = text_[position_];
    if (IsOperatorChar(c)) {
      ++position_;
      return OperatorToken(c);
    }
    return ReadOperand();
  }

 private:
  static ExpressionToken OperatorToken(char op) {
    ExpressionToken token;
    token.op = op;
    return token;
  }

  bool IsOperand(std::string_view s) const {
    if (NumberInStandardForm(s) == s && IsNumeric(s)) {
      return true;
    }
    if (!s.empty() && !IsOperatorChar(s.back())) {
      return true;
    }
    return names_.FirstNamed(s).has_value();
  }

  ExpressionToken ReadOperand() {
    std::string_view operand;
    for (size_t n = 1; position_ + n <= text_.size(); ++n) {
      const std::string_view candidate = text_.substr(position_, n);
      if (!IsOperand(candidate)) {
        break;
      }
      operand = candidate;
    }
    ExpressionToken token;
    if (!IsOperand(operand)) {
      token.kind = ExpressionToken::Kind::ReadFailure;
      return token;
    }
    position_ += operand.size();
    token.kind = ExpressionToken::Kind::Operand;
    const std::string text =
        IsNumeric(operand) ? NumberInStandardForm(operand) : std::string(operand);
    // A number never names a field, even a field named like one.
    if (!IsNumeric(std::string_view(text))) {
      token.field = names_.FirstNamed(text).value_or(-1);
    }
    token.text = Variant(text);
    return token;
  }

  std::string_view text_;
  const FieldNames& names_;
  size_t position_ = 0;
};

bool EndsReading(const ExpressionToken& token) {
  return token.kind == ExpressionToken::Kind::ReadFailure ||
         (token.kind == ExpressionToken::Kind::Operator && (token.op == '#' || token.op == '\0'));
}

// Reading past the last token: an operator that relates to nothing.
const ExpressionToken kPastEnd{};

// Runs the two-stack parse over the tokens with only the operator stack (the
// operands decide nothing), writing down each step an evaluation takes.
class Planner {
 public:
  explicit Planner(const std::vector<ExpressionToken>& tokens) : tokens_(tokens) {}

  std::vector<PlanStep> Plan() {
    const ExpressionToken* token = nullptr;
    if (!Read(token)) {
      return std::move(steps_);
    }
    for (;;) {
      const bool end_mark = token->kind == ExpressionToken::Kind::Operator && token->op == '#';
      if (Top() == '#' && end_mark) {
        Add(PlanStep::Kind::Result);
        return std::move(steps_);
      }
      if (token->kind == ExpressionToken::Kind::Operand) {
        Add(PlanStep::Kind::PushOperand).token = static_cast<uint32_t>(token - tokens_.data());
      } else {
        switch (Precede(Top(), token->op)) {
          case Relation::Lower:
            operators_.push_back(token->op);
            break;
          case Relation::Same:
            Pop();  // a "(" meeting its ")"
            break;
          case Relation::Higher: {
            const char theta = Pop();
            Add(PlanStep::Kind::Reduce).op = theta;
            continue;  // the same token is compared again
          }
          case Relation::None:
            Add(PlanStep::Kind::Malformed);
            return std::move(steps_);
        }
      }
      if (!Read(token)) {
        return std::move(steps_);
      }
    }
  }

 private:
  PlanStep& Add(PlanStep::Kind kind) {
    steps_.push_back(PlanStep{kind});
    return steps_.back();
  }

  bool Read(const ExpressionToken*& token) {
    token = next_ < tokens_.size() ? &tokens_[next_++] : &kPastEnd;
    if (token->kind == ExpressionToken::Kind::ReadFailure) {
      Add(PlanStep::Kind::ReadFailure);
      return false;
    }
    return true;
  }

  char Top() {
    if (operators_.empty()) {
      Add(PlanStep::Kind::StackMessage).title = "GetTop";
      return '\0';
    }
    return operators_.back();
  }

  char Pop() {
    if (operators_.empty()) {
      Add(PlanStep::Kind::StackMessage).title = "Pop";
      return '\0';
    }
    const char top = operators_.back();
    operators_.pop_back();
    return top;
  }

  const std::vector<ExpressionToken>& tokens_;
  std::vector<PlanStep> steps_;
  std::vector<char> operators_{'#'};
  size_t next_ = 0;
};

}  // namespace

FieldNames::FieldNames(const FieldList& fields) {
  names_.reserve(fields.size());
  for (size_t i = 0; i < fields.size(); ++i) {
    names_.push_back(fields[i]->Name);
    first_index_.emplace(fields[i]->Name, static_cast<int32_t>(i));  // keeps the first
  }
}

bool FieldNames::Matches(const FieldList& fields) const {
  if (fields.size() != names_.size()) {
    return false;
  }
  for (size_t i = 0; i < fields.size(); ++i) {
    if (fields[i]->Name != names_[i]) {
      return false;
    }
  }
  return true;
}

std::optional<int32_t> FieldNames::FirstNamed(std::string_view name) const {
  const auto found = first_index_.find(name);
  if (found == first_index_.end()) {
    return std::nullopt;
  }
  return found->second;
}

std::unique_ptr<CompiledExpression> CompileExpression(const std::string& source,
                                                      const FieldList& fields) {
  auto code = std::unique_ptr<CompiledExpression>(
      new CompiledExpression{source, Rewritten(source), FieldNames(fields), {}, {}});
  ExpressionReader reader(code->rewritten, code->names);
  do {
    code->tokens.push_back(reader.Next());
  } while (!EndsReading(code->tokens.back()));
  code->plan = Planner(code->tokens).Plan();
  return code;
}

}  // namespace varnel::internal
