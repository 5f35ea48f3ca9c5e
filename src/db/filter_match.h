// A parsed filter bound to a recordset's columns: which of its rows it keeps.
// Each comparison takes the filter's value over to the kind of the cell it
// meets (number, date, Boolean or text) by the library's variant conversions.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "db/filter_parser.h"
#include "db/recordset_access.h"

namespace varnel::db::internal {

class CompiledFilter {
 public:
  // Binds Expr's field names to Columns (the exact name, else the one name
  // equal without regard to case); an unknown name is recorded in Context.
  static std::optional<CompiledFilter> Compile(const FilterExpr& expr,
                                               const std::vector<ColumnInfo>& columns,
                                               FilterContext& context);

  // The rows (0-based, in order) of Values ([column][row]) that the filter
  // keeps. A value that cannot be taken to a cell's kind is recorded in
  // Context, and the result is then meaningless.
  std::vector<int32_t> MatchingRows(const std::vector<std::vector<Variant>>& values,
                                    int32_t row_count, FilterContext& context) const;

 private:
  enum class LikeShape { Exact, Prefix, Suffix, Contains };

  // One comparison, with its value ready in each kind a cell may have.
  struct Term {
    int32_t column = 0;
    FilterOp op = FilterOp::Equal;
    bool null_test = false;        // the value is NULL
    std::string text;              // the value as text (LIKE: the pattern core)
    std::optional<Variant> number;  // as a number with every digit, when it converts
    std::optional<double> date;    // as a date serial, when it converts
    std::optional<bool> boolean;   // as a Boolean, when it converts
    LikeShape like = LikeShape::Exact;
    size_t value_position = 0;
  };

  struct Node {
    FilterExpr::Kind kind = FilterExpr::Kind::Term;
    int32_t term = -1;  // index into terms_ for a term
    std::vector<Node> operands;
  };

  static std::optional<Node> CompileNode(const FilterExpr& expr,
                                         const std::vector<ColumnInfo>& columns,
                                         std::vector<Term>& terms, FilterContext& context);
  static Term CompileTerm(const FilterTerm& term, int32_t column);
  bool Matches(const Node& node, const std::vector<std::vector<Variant>>& values, int32_t row,
               FilterContext& context) const;
  bool TermMatches(const Term& term, const Variant& cell, FilterContext& context) const;

  Node root_;
  std::vector<Term> terms_;
};

}  // namespace varnel::db::internal
