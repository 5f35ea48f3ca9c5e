#include "query/computed_criterion.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "query/term_grammar.h"
#include "varnel/fields.h"
#include "varnel/messages.h"
#include "varnel/recordset.h"
#include "varnel/variant.h"

namespace varnel::internal {
namespace {

constexpr std::string_view kOperators = "&+-*/()";
// Reported when a formula cannot be computed by the database, as the
// platform's "invalid procedure call or argument".
constexpr int32_t kNotQueryable = 5;

// The formula as the evaluator reads it (blanks removed) turned into SQL by
// recursive descent: sum := product {(+|-) product}; product := factor
// {(*|/) factor}; factor := number | number column | "(" sum ")". Each piece
// keeps the evaluator's meaning: a missing operand of + or - gives the other
// one, * and / propagate it, / is floating and a zero divisor gives none.
class FormulaToSql {
 public:
  FormulaToSql(const ClsFields& field, std::string formula)
      : field_(field), text_(std::move(formula)) {}

  std::optional<std::string> Translate() {
    std::optional<std::string> sql = Sum();
    if (!sql || at_ != text_.size()) {
      return std::nullopt;
    }
    return "(" + *sql + ")";
  }

 private:
  struct Piece {
    std::string sql;
    bool literal = false;  // a number written in the formula
  };

  std::optional<std::string> Sum() {
    std::optional<Piece> left = Product();
    while (left && at_ < text_.size() && (text_[at_] == '+' || text_[at_] == '-')) {
      const char op = text_[at_++];
      std::optional<Piece> right = Product();
      // Two written numbers joined by + are joined as text by the evaluator.
      if (!right || (op == '+' && left->literal && right->literal)) {
        return std::nullopt;
      }
      const std::string& a = left->sql;
      const std::string& b = right->sql;
      left = Piece{"COALESCE(" + a + op + b + "," + a + "," + b + ")"};
    }
    return left ? std::optional<std::string>(left->sql) : std::nullopt;
  }

  std::optional<Piece> Product() {
    std::optional<Piece> left = Factor();
    while (left && at_ < text_.size() && (text_[at_] == '*' || text_[at_] == '/')) {
      const char op = text_[at_++];
      std::optional<Piece> right = Factor();
      if (!right) {
        return std::nullopt;
      }
      left = Piece{op == '*' ? "(" + left->sql + "*" + right->sql + ")"
                             : "(" + left->sql + "*1.0/NULLIF(" + right->sql + ",0))"};
    }
    return left;
  }

  std::optional<Piece> Factor() {
    if (at_ < text_.size() && text_[at_] == '(') {
      ++at_;
      std::optional<std::string> inner = Sum();
      if (!inner || at_ >= text_.size() || text_[at_] != ')') {
        return std::nullopt;
      }
      ++at_;
      return Piece{"(" + *inner + ")"};
    }
    const size_t end = std::min(text_.find_first_of(kOperators, at_), text_.size());
    const std::string operand = text_.substr(at_, end - at_);
    at_ = end;
    if (IsNumber(operand)) {
      return Piece{operand, true};
    }
    if (const ClsFields* column = NumberColumn(operand)) {
      return Piece{Column(column->Name)};
    }
    return std::nullopt;
  }

  static bool IsNumber(const std::string& text) {
    const size_t digits = text.find_first_not_of("0123456789");
    if (text.empty() || digits == 0) {
      return false;
    }
    return digits == std::string::npos ||
           (text[digits] == '.' &&
            text.find_first_not_of("0123456789", digits + 1) == std::string::npos);
  }

  // The field named exactly Name (as the evaluator finds it) when it is a
  // column of the table holding numbers.
  const ClsFields* NumberColumn(const std::string& name) const {
    if (field_.Parent == nullptr || name.empty()) {
      return nullptr;
    }
    for (const auto& candidate : *field_.Parent) {
      if (candidate->Name == name) {
        const bool number = candidate->FieldType == F_Numeral || candidate->FieldType == F_Currency;
        return number && candidate->IsData && candidate->ComputeString.empty() ? candidate.get()
                                                                               : nullptr;
      }
    }
    return nullptr;
  }

  const ClsFields& field_;
  std::string text_;
  size_t at_ = 0;
};

std::string WithoutBlanks(const std::string& text) {
  std::string result;
  for (const char c : text) {
    if (c != ' ') {
      result.push_back(c);
    }
  }
  return result;
}

// Every Column outside single-quoted text replaced by Expression.
std::string ReplaceColumn(const std::string& predicate, const std::string& column,
                          const std::string& expression) {
  std::string result;
  bool quoted = false;
  for (size_t at = 0; at < predicate.size();) {
    if (!quoted && predicate.compare(at, column.size(), column) == 0) {
      result += expression;
      at += column.size();
      continue;
    }
    quoted = predicate[at] == '\'' ? !quoted : quoted;
    result.push_back(predicate[at++]);
  }
  return result;
}

std::string NotQueryableText(const ClsFields& field) {
  const std::string name = field.DisplayName.empty() ? field.Name : field.DisplayName;
  if (GetThreadUILanguage() == 2052) {
    return "'" + name + "' 无法查询：其公式 " + field.ComputeString +
           " 不是对表中数字列的四则运算。";
  }
  return "'" + name + "' cannot be queried: its formula " + field.ComputeString +
         " is not arithmetic on number columns of the table.";
}

}  // namespace

bool IsComputedOnly(const ClsFields& field) {
  return !field.IsData && !TrimBlanks(field.ComputeString).empty();
}

std::string PredicateOnComputedField(const ClsFields& field, const std::string& predicate) {
  const std::optional<std::string> expression =
      FormulaToSql(field, WithoutBlanks(field.ComputeString)).Translate();
  if (!expression) {
    throw VbError(kNotQueryable, NotQueryableText(field));
  }
  return ReplaceColumn(predicate, Column(field.Name), *expression);
}

}  // namespace varnel::internal
