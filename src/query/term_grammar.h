// The grammar that every query-by-form translator shares: a query text is cut
// into terms at " AND " / " OR " (any letter case), each term becomes one
// predicate, and the predicates are joined with the lower-case connectors and
// wrapped in parentheses. One term without a predicate drops the whole field.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace varnel::internal {

// A query text cut at its separators. connectors[i] stands between terms[i]
// and terms[i + 1]; terms are trimmed of blanks.
struct QueryTerms {
  std::vector<std::string_view> terms;
  std::vector<std::string_view> connectors;  // " and " or " or "
};

// Cuts text into terms. The views point into text.
QueryTerms SplitTerms(std::string_view text);

// Joins one predicate per term with the connectors and wraps the result in
// "(" ")". nullopt when any predicate is missing or empty (the whole-field
// rule); "" when there is nothing to join.
std::optional<std::string> JoinPredicates(
    const QueryTerms& terms, const std::vector<std::optional<std::string>>& predicates);

// Text without leading and trailing blanks (spaces only, as the platform's Trim).
std::string_view TrimBlanks(std::string_view text);
std::string_view TrimRightBlanks(std::string_view text);
// ASCII letters upper-cased; every other byte, and so every byte position, kept.
std::string UpperAscii(std::string_view text);
// Upper-cased with every blank removed.
std::string CompactUpper(std::string_view text);
// The platform's Like for patterns made of literal characters and "*" (any
// run of characters); other pattern characters are taken literally.
bool MatchesPattern(std::string_view text, std::string_view pattern);
// "[" name "]" (a "]" in it doubled): how every translator writes its column.
std::string Column(std::string_view name);

// The three forms of one term that the prefix tests look at.
struct TermForms {
  explicit TermForms(std::string_view term);
  std::string_view trimmed;  // the term as typed, trimmed
  std::string upper;         // trimmed, upper-cased (same byte positions as trimmed)
  std::string compact;       // every blank removed, upper-cased
};

}  // namespace varnel::internal
