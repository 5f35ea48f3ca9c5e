#include "db/filter_match.h"

#include <strings.h>

#include <cctype>
#include <string_view>

#include "automation/decimal_math.h"
#include "automation/value_rules.h"

namespace varnel::db::internal {
namespace {

std::optional<int32_t> FindColumn(const std::vector<ColumnInfo>& columns, const std::string& name) {
  std::optional<int32_t> loose;
  for (size_t i = 0; i < columns.size(); ++i) {
    if (columns[i].name == name) {
      return static_cast<int32_t>(i);
    }
    if (!loose && strcasecmp(columns[i].name.c_str(), name.c_str()) == 0) {
      loose = static_cast<int32_t>(i);
    }
  }
  return loose;
}

template <class Convert>
auto Try(Convert convert) -> std::optional<decltype(convert())> {
  try {
    return convert();
  } catch (const VbError&) {
    return std::nullopt;  // the value has no form of this kind
  }
}

bool SameNoCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && strncasecmp(a.data(), b.data(), a.size()) == 0;
}

bool ContainsNoCase(std::string_view text, std::string_view part) {
  if (part.empty()) {
    return true;
  }
  for (size_t i = 0; i + part.size() <= text.size(); ++i) {
    if (SameNoCase(text.substr(i, part.size()), part)) {
      return true;
    }
  }
  return false;
}

// The value as a number with every digit: numeric text that a Double cannot
// hold reads as a LongLong or a Decimal, as the recordset loads such columns.
std::optional<Variant> NumberOf(const Variant& value) {
  if (value.IsString()) {
    if (std::optional<Variant> exact = varnel::internal::ExactNumberOfText(value.StringView())) {
      return exact;
    }
  } else if (value.IsNumber()) {
    return value;
  }
  const std::optional<double> number = Try([&] { return value.ToDouble(); });
  return number ? std::optional<Variant>(Variant(*number)) : std::nullopt;
}

template <class T>
int Compare(const T& a, const T& b) {
  return a < b ? -1 : (b < a ? 1 : 0);
}

bool OrderHolds(FilterOp op, int order) {
  switch (op) {
    case FilterOp::Less:
      return order < 0;
    case FilterOp::Greater:
      return order > 0;
    case FilterOp::LessEqual:
      return order <= 0;
    case FilterOp::GreaterEqual:
      return order >= 0;
    case FilterOp::NotEqual:
      return order != 0;
    default:
      return order == 0;
  }
}

}  // namespace

std::optional<CompiledFilter> CompiledFilter::Compile(const FilterExpr& expr,
                                                      const std::vector<ColumnInfo>& columns,
                                                      FilterContext& context) {
  CompiledFilter filter;
  std::optional<Node> root = CompileNode(expr, columns, filter.terms_, context);
  if (!root) {
    return std::nullopt;
  }
  filter.root_ = std::move(*root);
  return filter;
}

std::optional<CompiledFilter::Node> CompiledFilter::CompileNode(
    const FilterExpr& expr, const std::vector<ColumnInfo>& columns, std::vector<Term>& terms,
    FilterContext& context) {
  Node node;
  node.kind = expr.kind;
  if (expr.kind == FilterExpr::Kind::Term) {
    std::optional<int32_t> column = FindColumn(columns, expr.term.field);
    if (!column) {
      context.Fail(expr.term.field_position,
                   "the recordset has no field '" + expr.term.field + "'");
      return std::nullopt;
    }
    node.term = static_cast<int32_t>(terms.size());
    terms.push_back(CompileTerm(expr.term, *column));
    return node;
  }
  for (const FilterExpr& operand : expr.operands) {
    std::optional<Node> compiled = CompileNode(operand, columns, terms, context);
    if (!compiled) {
      return std::nullopt;
    }
    node.operands.push_back(std::move(*compiled));
  }
  return node;
}

CompiledFilter::Term CompiledFilter::CompileTerm(const FilterTerm& source, int32_t column) {
  Term term;
  term.column = column;
  term.op = source.op;
  term.value_position = source.value_position;
  const Variant& value = source.value;
  if (value.IsNull()) {
    term.null_test = true;
    return term;
  }
  term.text = CStr(value);
  if (term.op == FilterOp::Like) {
    std::string_view core = term.text;
    const bool lead = !core.empty() && (core.front() == '*' || core.front() == '%');
    if (lead) {
      core.remove_prefix(1);
    }
    const bool trail = !core.empty() && (core.back() == '*' || core.back() == '%');
    if (trail) {
      core.remove_suffix(1);
    }
    term.like = lead && trail ? LikeShape::Contains
                : lead        ? LikeShape::Suffix
                : trail       ? LikeShape::Prefix
                              : LikeShape::Exact;
    term.text = std::string(core);
    return term;
  }
  term.number = NumberOf(value);
  term.date = Try([&] { return CDate(value).Value; });
  term.boolean = Try([&] { return value.ToBool(); });
  return term;
}

std::vector<int32_t> CompiledFilter::MatchingRows(const std::vector<std::vector<Variant>>& values,
                                                  int32_t row_count, FilterContext& context) const {
  std::vector<int32_t> rows;
  for (int32_t row = 0; row < row_count && !context.failed(); ++row) {
    if (Matches(root_, values, row, context)) {
      rows.push_back(row);
    }
  }
  return rows;
}

bool CompiledFilter::Matches(const Node& node, const std::vector<std::vector<Variant>>& values,
                             int32_t row, FilterContext& context) const {
  switch (node.kind) {
    case FilterExpr::Kind::Term: {
      const Term& term = terms_[node.term];
      return TermMatches(term, values[term.column][row], context);
    }
    case FilterExpr::Kind::And:
      for (const Node& operand : node.operands) {
        if (!Matches(operand, values, row, context)) {
          return false;
        }
      }
      return true;
    case FilterExpr::Kind::Or:
    default:
      for (const Node& operand : node.operands) {
        if (Matches(operand, values, row, context)) {
          return true;
        }
      }
      return false;
  }
}

bool CompiledFilter::TermMatches(const Term& term, const Variant& cell,
                                 FilterContext& context) const {
  if (term.null_test) {
    return (term.op == FilterOp::Equal) == cell.IsBlank();
  }
  if (cell.IsBlank()) {
    return false;  // Null satisfies no comparison with a value
  }
  if (term.op == FilterOp::Like) {
    const std::string owned = cell.IsString() ? std::string() : CStr(cell);
    const std::string_view text = cell.IsString() ? cell.StringView() : std::string_view(owned);
    const std::string_view core = term.text;
    switch (term.like) {
      case LikeShape::Prefix:
        return text.size() >= core.size() && SameNoCase(text.substr(0, core.size()), core);
      case LikeShape::Suffix:
        return text.size() >= core.size() &&
               SameNoCase(text.substr(text.size() - core.size()), core);
      case LikeShape::Contains:
        return ContainsNoCase(text, core);
      default:
        return SameNoCase(text, core);
    }
  }
  std::optional<int> order;
  switch (cell.VarType()) {
    case vbString:
      order = cell.StringView().compare(term.text);
      break;
    case vbDate:
      order = term.date ? std::optional(Compare(cell.AsDate().Value, *term.date)) : std::nullopt;
      break;
    case vbBoolean:
      // True is -1 and False 0, as the platform orders them.
      order = term.boolean
                  ? std::optional(Compare(cell.AsBoolean() ? -1 : 0, *term.boolean ? -1 : 0))
                  : std::nullopt;
      break;
    default:
      order = !term.number ? std::nullopt
              : cell.IsNumber()
                  ? std::optional(varnel::internal::CompareNumbers(cell, *term.number))
                  : std::optional(Compare(cell.ToDouble(), term.number->ToDouble()));
      break;
  }
  if (!order) {
    context.Fail(term.value_position, "the value '" + term.text + "' cannot be compared with the " +
                                          cell.TypeName() + " values of its field");
    return false;
  }
  return OrderHolds(term.op, *order);
}

}  // namespace varnel::db::internal
