#include "query/comparison_grammar.h"

#include <array>
#include <vector>

#include "query/term_grammar.h"

namespace varnel::internal {
namespace {

// How a row builds its predicate from the kind's comparison C.
enum class Form {
  kNegated,      // "[N] is null or not " C: rows whose column is null match too
  kNotNull,      // "not [N] is NULL"
  kNull,         // "[N] is NULL"
  kPlain,        // C
  kNullOrPlain,  // "[N] is null or " C
  kNumberNot,    // "[N] isnull or not " C, the numeric kind's leading "NOT "
};

// Where a row's prefix is looked for.
enum class Look {
  kCompact,  // the term with every blank removed, upper-cased
  kUpper,    // the trimmed term, upper-cased
};

constexpr unsigned kDate = static_cast<unsigned>(ValueKindId::kDate);
constexpr unsigned kNumber = static_cast<unsigned>(ValueKindId::kNumber);
constexpr unsigned kCurrency = static_cast<unsigned>(ValueKindId::kCurrency);
constexpr unsigned kAll = kDate | kNumber | kCurrency;

struct PrefixRow {
  std::string_view prefix;
  Look look;
  std::string_view pattern;  // the upper term may match this instead ("" = none)
  Form form;
  CompareOp op;
  unsigned kinds;
};

// Tried in order; the first row that matches decides the term.
constexpr std::array kRows = {
    PrefixRow{"NOT<=", Look::kCompact, "NOT*<=*", Form::kNegated, CompareOp::kLe, kAll},
    PrefixRow{"NOT>=", Look::kCompact, "NOT*>=*", Form::kNegated, CompareOp::kGe, kAll},
    PrefixRow{"NOT<>", Look::kCompact, "NOT*<>*", Form::kNegated, CompareOp::kNe, kAll},
    PrefixRow{"NOT=", Look::kCompact, "NOT*=*", Form::kNegated, CompareOp::kEq, kAll},
    PrefixRow{"NOT<", Look::kCompact, "NOT*<*", Form::kNegated, CompareOp::kLt, kAll},
    PrefixRow{"NOT>", Look::kCompact, "NOT*>*", Form::kNegated, CompareOp::kGt, kAll},
    PrefixRow{"NOTNULL", Look::kCompact, "NOT*NULL", Form::kNotNull, CompareOp::kEq, kAll},
    PrefixRow{"NULL", Look::kCompact, "", Form::kNull, CompareOp::kEq, kAll},
    PrefixRow{"<=", Look::kCompact, "", Form::kPlain, CompareOp::kLe, kAll},
    PrefixRow{">=", Look::kCompact, "", Form::kPlain, CompareOp::kGe, kAll},
    PrefixRow{"<>", Look::kCompact, "", Form::kNullOrPlain, CompareOp::kNe, kCurrency},
    PrefixRow{"<>", Look::kCompact, "", Form::kPlain, CompareOp::kNe, kDate | kNumber},
    PrefixRow{"=", Look::kCompact, "", Form::kPlain, CompareOp::kEq, kAll},
    PrefixRow{"<", Look::kCompact, "", Form::kPlain, CompareOp::kLt, kAll},
    PrefixRow{">", Look::kCompact, "", Form::kPlain, CompareOp::kGt, kAll},
    PrefixRow{"NOT ", Look::kUpper, "", Form::kNumberNot, CompareOp::kEq, kNumber},
    PrefixRow{"", Look::kCompact, "", Form::kPlain, CompareOp::kEq, kAll},  // a bare value
};

// What follows a compact prefix in the trimmed term: the prefix's characters
// are passed over together with any blanks between them.
std::string_view AfterCompactPrefix(std::string_view trimmed, size_t prefix_length) {
  size_t pos = 0;
  for (size_t matched = 0; matched < prefix_length && pos < trimmed.size(); ++pos) {
    if (trimmed[pos] != ' ') {
      ++matched;
    }
  }
  return TrimBlanks(trimmed.substr(pos));
}

// The row that decides the term, and the value text after its prefix;
// nullopt value when the row was matched by its pattern alone.
struct RowMatch {
  const PrefixRow* row = nullptr;
  std::optional<std::string_view> rest;
};

RowMatch MatchRow(const TermForms& t, unsigned kind) {
  for (const PrefixRow& row : kRows) {
    if ((row.kinds & kind) == 0) {
      continue;
    }
    if (row.look == Look::kUpper && t.upper.starts_with(row.prefix)) {
      return {&row, TrimBlanks(t.trimmed.substr(row.prefix.size()))};
    }
    if (row.look == Look::kCompact && t.compact.starts_with(row.prefix)) {
      return {&row, AfterCompactPrefix(t.trimmed, row.prefix.size())};
    }
    if (!row.pattern.empty() && MatchesPattern(t.upper, row.pattern)) {
      return {&row, std::nullopt};
    }
  }
  return {};  // unreachable: the bare-value row matches every term
}

std::optional<std::string> TermPredicate(std::string_view term, size_t number,
                                         const std::string& column, ComparisonKind& kind,
                                         QueryParse& parse) {
  const TermForms t(term);
  const RowMatch match = MatchRow(t, static_cast<unsigned>(kind.id()));
  if (match.row == nullptr) {
    parse.Fail(QueryFault::kUnexpectedText, number, term);
    return std::nullopt;
  }
  const Form form = match.row->form;
  if (form == Form::kNull || form == Form::kNotNull) {
    // The keyword is the whole term; "NOT ... NULL" is the pattern's own form.
    const bool by_pattern =
        !match.row->pattern.empty() && MatchesPattern(t.upper, match.row->pattern);
    if (match.rest && !match.rest->empty() && !by_pattern) {
      parse.Fail(QueryFault::kUnexpectedText, number, term);
      return std::nullopt;
    }
    return form == Form::kNull ? column + " is NULL" : "not " + column + " is NULL";
  }
  if (!match.rest) {  // text between NOT and the operator
    parse.Fail(QueryFault::kUnexpectedText, number, term);
    return std::nullopt;
  }
  if (match.rest->empty()) {
    parse.Fail(QueryFault::kEmptyTerm, number, term);
    return std::nullopt;
  }
  const std::optional<std::string> compare = kind.Compare(match.row->op, *match.rest);
  if (!compare) {
    parse.Fail(QueryFault::kUnreadableValue, number, term);
    return std::nullopt;
  }
  switch (form) {
    case Form::kNegated:
      return column + " is null or not " + *compare;
    case Form::kNullOrPlain:
      return column + " is null or " + *compare;
    case Form::kNumberNot:
      return column + " isnull or not " + *compare;
    default:
      return compare;
  }
}

}  // namespace

std::string_view OpText(CompareOp op) {
  static constexpr std::array<std::string_view, 6> kText = {"<=", ">=", "<>", "=", "<", ">"};
  return kText[static_cast<size_t>(op)];
}

std::optional<std::string> TranslateComparisons(std::string_view query_text, std::string_view name,
                                                ComparisonKind& kind, QueryParse& parse) {
  const QueryTerms terms = SplitTerms(query_text);
  const std::string column = Column(name);
  std::vector<std::optional<std::string>> predicates;
  predicates.reserve(terms.terms.size());
  for (size_t i = 0; i < terms.terms.size(); ++i) {
    predicates.push_back(TermPredicate(terms.terms[i], i + 1, column, kind, parse));
    if (!predicates.back()) {
      break;  // the whole-field rule: one failed term drops the field
    }
  }
  if (predicates.back() == std::nullopt) {
    return std::nullopt;
  }
  return JoinPredicates(terms, predicates);
}

}  // namespace varnel::internal
