// The one translator of the date, numeric and currency kinds. A term's
// operator is decided by a table of prefixes (one row per prefix, tried in
// order); the kinds differ only in how a value is read and written, which a
// ComparisonKind supplies.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "query/query_parse.h"

namespace varnel::internal {

enum class CompareOp { kLe, kGe, kNe, kEq, kLt, kGt };

// "<=", ">=", "<>", "=", "<", ">".
std::string_view OpText(CompareOp op);

enum class ValueKindId : unsigned { kDate = 1, kNumber = 2, kCurrency = 4 };

class ComparisonKind {
 public:
  virtual ~ComparisonKind() = default;
  virtual ValueKindId id() const = 0;
  // The comparison of the column with the value typed (not empty), or nullopt
  // when the value cannot be read. A comparison made of several parts comes
  // back in parentheses, so that it can stand after "not".
  virtual std::optional<std::string> Compare(CompareOp op, std::string_view value) = 0;
};

// Translates query_text over column "[name]" with kind's values. nullopt when
// the field adds no condition; parse holds the first term that failed.
std::optional<std::string> TranslateComparisons(std::string_view query_text, std::string_view name,
                                                ComparisonKind& kind, QueryParse& parse);

}  // namespace varnel::internal
