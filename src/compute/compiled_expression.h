// An expression read once into tokens for one list of field names. The tokens
// depend only on the expression's text and the field names (never on row
// values), so a computed field is read once and then evaluated for every row
// by the field indexes its operands resolved to.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "varnel/fields.h"
#include "varnel/variant.h"

namespace varnel::internal {

using FieldList = std::vector<std::shared_ptr<ClsFields>>;

struct ExpressionToken {
  enum class Kind : uint8_t {
    Operator,
    Operand,
    ReadFailure,  // the operand at this point could not be read
  };
  Kind kind = Kind::Operator;
  char op = '\0';      // Operator: one of "&+-*/()#"; '\0' when reading ran past the end
  Variant text;        // Operand: its text; a number in standard form ("1.50" reads "1.5")
  int32_t field = -1;  // Operand: index of the first field it names; -1 when it names none
};

// The field names of a recordset, in collection order, with the first index
// of each name. Names are exact and case-sensitive.
class FieldNames {
 public:
  explicit FieldNames(const FieldList& fields);
  // True when fields carry exactly these names in this order.
  bool Matches(const FieldList& fields) const;
  // The index of the first field named name.
  std::optional<int32_t> FirstNamed(std::string_view name) const;

 private:
  struct Hash {
    using is_transparent = void;
    size_t operator()(std::string_view s) const { return std::hash<std::string_view>{}(s); }
  };
  std::vector<std::string> names_;
  std::unordered_map<std::string, int32_t, Hash, std::equal_to<>> first_index_;
};

// One step of an evaluation. The operator-precedence parse decides its shifts
// and reductions from the operator characters alone, never from the values,
// so it runs once when the expression is read; every row then replays the
// steps on its own values, with the same results and the same messages in
// the same order as parsing the tokens row by row.
struct PlanStep {
  enum class Kind : uint8_t {
    PushOperand,   // push tokens[token] as read
    Reduce,        // apply op to the top two operands
    StackMessage,  // the operator stack was empty: show error 9 titled `title`
    ReadFailure,   // show the read failure and stop: malformed
    Malformed,     // two operators met that may not meet: stop
    Result,        // the value on top of the operands is the result
  };
  Kind kind = Kind::Malformed;
  char op = '\0';
  uint32_t token = 0;
  const char* title = "";
};

struct CompiledExpression {
  std::string source;     // the expression as the caller set it
  std::string rewritten;  // every blank removed, "#" appended
  FieldNames names;       // the names it was read against
  // Tokens in reading order, ending with the first of: the end mark "#", a
  // read past the end, or a read failure. Evaluation never reads beyond it.
  std::vector<ExpressionToken> tokens;
  // The evaluation's steps, ending with Result, ReadFailure or Malformed.
  std::vector<PlanStep> plan;
};

// Reads source against the names of fields.
std::unique_ptr<CompiledExpression> CompileExpression(const std::string& source,
                                                      const FieldList& fields);

}  // namespace varnel::internal
