// The recordset filter grammar: comparisons of a field with a value, joined
// by AND and OR (AND binds tighter; parentheses group).
//
//   Name = 'O''Brien' OR (Qty >= 10 AND Shipped <> NULL)
//   [Order Date] < #5/6/2003#   Title LIKE 'abc*'   Code LIKE '%x%'
//
// Operators: < > <= >= <> = LIKE. Values: text in '...' (a doubled '' is one
// quote), a date in #...#, a bare number, NULL (only with = and <>), TRUE or
// FALSE. Field names bare or in [brackets]; keywords in any case. LIKE takes
// text with its wildcard * or % only at the start and/or the end.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "varnel/variant.h"

namespace varnel::db::internal {

// Records the first error of a parse (or of applying the result) and where it
// is, so the caller decides how to report it.
class FilterContext {
 public:
  explicit FilterContext(std::string_view text) : text_(text) {}

  // Keeps the first error only. Position is 0-based in the filter text.
  void Fail(size_t position, std::string what);
  bool failed() const { return error_.has_value(); }
  const std::string& what() const { return error_->what; }
  size_t position() const { return error_->position; }
  // "expected a value after '>' at position 6 of the filter \"Qty > \"".
  std::string Describe() const;

 private:
  struct Error {
    size_t position;
    std::string what;
  };
  std::string_view text_;
  std::optional<Error> error_;
};

enum class FilterOp { Less, Greater, LessEqual, GreaterEqual, NotEqual, Equal, Like };

struct FilterTerm {
  std::string field;
  size_t field_position = 0;
  FilterOp op = FilterOp::Equal;
  Variant value;  // Null for NULL; a String for LIKE patterns
  size_t value_position = 0;
};

// A term, or the AND / OR of two or more operands.
struct FilterExpr {
  enum class Kind { Term, And, Or };
  Kind kind = Kind::Term;
  FilterTerm term;
  std::vector<FilterExpr> operands;
};

// Parses Text; nullopt (with the error in Context) when it does not parse.
std::optional<FilterExpr> ParseFilter(std::string_view text, FilterContext& context);

}  // namespace varnel::db::internal
