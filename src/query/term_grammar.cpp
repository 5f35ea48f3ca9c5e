#include "query/term_grammar.h"

#include <algorithm>
#include <cstddef>

#include "db/sql_quote.h"

namespace varnel::internal {
namespace {

constexpr std::string_view kAnd = " AND ";
constexpr std::string_view kOr = " OR ";

// The next occurrence of separator at or after from, found in the upper-cased
// text; remembered so that a long text is scanned once per separator.
class SeparatorScan {
 public:
  SeparatorScan(const std::string& upper, std::string_view separator)
      : upper_(upper), separator_(separator) {}
  size_t Next(size_t from) {
    if (!searched_ || (found_ != std::string::npos && found_ < from)) {
      found_ = upper_.find(separator_, from);
      searched_ = true;
    }
    return found_;
  }

 private:
  const std::string& upper_;
  std::string_view separator_;
  size_t found_ = std::string::npos;
  bool searched_ = false;
};

}  // namespace

std::string_view TrimBlanks(std::string_view text) {
  const size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) {
    return text.substr(text.size());  // empty, still pointing into text
  }
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string_view TrimRightBlanks(std::string_view text) {
  const size_t last = text.find_last_not_of(' ');
  return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

std::string UpperAscii(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) {
    if (c >= 'a' && c <= 'z') {
      c = static_cast<char>(c - 'a' + 'A');
    }
  }
  return upper;
}

std::string CompactUpper(std::string_view text) {
  std::string compact = UpperAscii(text);
  std::erase(compact, ' ');
  return compact;
}

bool MatchesPattern(std::string_view text, std::string_view pattern) {
  // Greedy match with backtracking to the last "*": linear for these patterns.
  size_t t = 0, p = 0, star = std::string_view::npos, resume = 0;
  while (t < text.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      resume = t;
    } else if (p < pattern.size() && pattern[p] == text[t]) {
      ++p;
      ++t;
    } else if (star != std::string_view::npos) {
      p = star + 1;
      t = ++resume;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == '*') {
    ++p;
  }
  return p == pattern.size();
}

std::string Column(std::string_view name) { return db::internal::BracketName(name); }

TermForms::TermForms(std::string_view term)
    : trimmed(TrimBlanks(term)), upper(UpperAscii(trimmed)), compact(CompactUpper(trimmed)) {}

QueryTerms SplitTerms(std::string_view text) {
  const std::string upper = UpperAscii(text);
  SeparatorScan ands(upper, kAnd), ors(upper, kOr);
  QueryTerms result;
  size_t pos = 0;
  for (;;) {
    const size_t a = ands.Next(pos), o = ors.Next(pos);
    if (a == std::string::npos && o == std::string::npos) {
      break;
    }
    const bool is_and = a < o;  // npos is the largest value
    const size_t at = is_and ? a : o;
    result.terms.push_back(TrimBlanks(text.substr(pos, at - pos)));
    result.connectors.push_back(is_and ? " and " : " or ");
    pos = at + (is_and ? kAnd.size() : kOr.size());
  }
  result.terms.push_back(TrimBlanks(text.substr(pos)));
  return result;
}

std::optional<std::string> JoinPredicates(
    const QueryTerms& terms, const std::vector<std::optional<std::string>>& predicates) {
  if (std::any_of(predicates.begin(), predicates.end(),
                  [](const auto& p) { return !p || p->empty(); })) {
    return std::nullopt;
  }
  std::string joined;
  for (size_t i = 0; i < predicates.size(); ++i) {
    if (i > 0) {
      joined.append(terms.connectors[i - 1]);
    }
    joined.append(*predicates[i]);
  }
  return joined.empty() ? joined : "(" + joined + ")";
}

}  // namespace varnel::internal
