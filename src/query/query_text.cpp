// Text predicates: a plain word finds every row whose column contains it;
// LIKE, NOT, NOT LIKE, NULL and NOTNULL are the keywords of a term.
#include <optional>
#include <string>

#include "query/query_engine.h"
#include "query/term_grammar.h"
#include "varnel/fields.h"
#include "varnel/modules.h"

namespace varnel::internal {
namespace {

// "[N]" + keyword + "'%" Q(rest) "%'"; no predicate when the quoted rest is empty.
std::optional<std::string> LikePredicate(const std::string& column, std::string_view keyword,
                                         std::string_view rest) {
  if (rest.empty()) {
    return std::nullopt;
  }
  const std::string quoted = MdlQuery::QuoteText(Variant(rest));
  if (quoted.empty()) {
    return std::nullopt;
  }
  return column + std::string(keyword) + "'%" + quoted + "%'";
}

std::optional<std::string> TextTermPredicate(const std::string& column, std::string_view term) {
  const TermForms t(term);
  if (t.compact.starts_with("NOTLIKE") && MatchesPattern(t.upper, "NOT*LIKE*")) {
    // The rest follows the first "LIKE " with its blank; without one there is none.
    const size_t like = t.upper.find("LIKE ");
    const std::string_view rest =
        like == std::string::npos ? std::string_view() : t.trimmed.substr(like + 5);
    return LikePredicate(column, " NOT LIKE ", rest);
  }
  if (t.compact.starts_with("NOTNULL") || MatchesPattern(t.upper, "NOT*NULL")) {
    return "not " + column + " is NULL and not " + column + "=''";
  }
  if (t.upper.starts_with("LIKE ")) {
    return LikePredicate(column, " LIKE ", t.trimmed.substr(5));
  }
  if (t.upper == "NULL") {
    return column + " is NULL or " + column + "=''";
  }
  if (t.upper.starts_with("NOT ")) {
    // Two blanks between NOT and LIKE: the system's own text, kept byte for byte.
    return LikePredicate(column, " NOT  LIKE ", t.trimmed.substr(4));
  }
  return LikePredicate(column, " LIKE ", t.trimmed);
}

}  // namespace

std::optional<std::string> TranslateText(const ClsFields& field, QueryParse& parse) {
  const QueryTerms terms = SplitTerms(field.QueryValue);
  const std::string column = Column(field.Name);
  std::vector<std::optional<std::string>> predicates;
  predicates.reserve(terms.terms.size());
  for (size_t i = 0; i < terms.terms.size(); ++i) {
    predicates.push_back(TextTermPredicate(column, terms.terms[i]));
    if (!predicates.back()) {
      parse.Fail(QueryFault::kEmptyTerm, i + 1, terms.terms[i]);
    }
  }
  return JoinPredicates(terms, predicates);
}

}  // namespace varnel::internal
