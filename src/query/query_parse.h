// The parse context of the query translators: it records the first term that
// could not be translated and why. The translators give no predicate for such
// a field (the whole-field rule) and show nothing; the context tells the
// caller, and the tests, what went wrong and where.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace varnel::internal {

enum class QueryFault {
  kNone,
  kEmptyTerm,        // nothing to compare with: "", "x AND ", a bare operator
  kUnreadableValue,  // the value is not a number, currency amount or date
  kUnexpectedText,   // text where the grammar allows none ("NULL 5", "NOT x <= 5")
};

class QueryParse {
 public:
  explicit QueryParse(std::string_view text = {}) : text_(text) {}

  // Records the fault of term number `term` (1-based) unless one is recorded.
  void Fail(QueryFault fault, size_t term, std::string_view term_text) {
    if (fault_ != QueryFault::kNone) {
      return;
    }
    fault_ = fault;
    term_ = term;
    const auto at = reinterpret_cast<std::uintptr_t>(term_text.data());
    const auto begin = reinterpret_cast<std::uintptr_t>(text_.data());
    offset_ = at >= begin && at <= begin + text_.size() ? at - begin : 0;
  }

  bool failed() const { return fault_ != QueryFault::kNone; }
  QueryFault fault() const { return fault_; }
  size_t term() const { return term_; }      // 1-based; 0 when none failed
  size_t offset() const { return offset_; }  // byte offset of that term in the text

 private:
  std::string_view text_;
  QueryFault fault_ = QueryFault::kNone;
  size_t term_ = 0;
  size_t offset_ = 0;
};

}  // namespace varnel::internal
