// The shape check of translated SQL: a predicate may hold the column, the
// translators' own words and operators, and literals of the field's kind
// (validated numbers, quoted dates, or quoted text with every quote doubled).
// Anything else would be user text reaching the SQL.
#pragma once

#include <string>
#include <string_view>

#include "automation/calendar.h"
#include "automation/numeric_text.h"

namespace varnel::fuzzing {

enum class Literals { kNumbers, kDates, kQuotedText };

namespace shape_detail {

// Longest first, so that " is null or not " wins over " is null or ".
constexpr std::string_view kWords[] = {
    " is NULL and not ",
    " is null or not ",
    " isnull or not ",
    " NOT  LIKE ",
    " is null or ",
    " is NULL or ",
    " NOT LIKE ",
    "datetime(",
    " is NULL",
    " LIKE ",
    "time(",
    " and ",
    "not ",
    " or ",
    "<=",
    ">=",
    "<>",
    "(",
    ")",
    "=",
    "<",
    ">",
};

inline bool IsNumberChar(char c) {
  return (c >= '0' && c <= '9') || c == '.' || c == '+' || c == '-' || c == 'E';
}

inline bool IsDateChar(char c) {
  return (c >= '0' && c <= '9') || c == '/' || c == ':' || c == ' ' || c == '-';
}

// Reads a quoted literal at sql[pos] (pos at the opening quote); false when unterminated.
inline bool ReadQuoted(std::string_view sql, size_t& pos, std::string& content) {
  for (++pos; pos < sql.size(); ++pos) {
    if (sql[pos] == '\'') {
      if (pos + 1 < sql.size() && sql[pos + 1] == '\'') {
        content.push_back('\'');
        ++pos;
        continue;
      }
      ++pos;
      return true;
    }
    content.push_back(sql[pos]);
  }
  return false;
}

inline bool ReadLiteral(std::string_view sql, size_t& pos, Literals literals) {
  if (literals == Literals::kNumbers) {
    const size_t start = pos;
    while (pos < sql.size() && IsNumberChar(sql[pos])) {
      ++pos;
    }
    return pos > start && internal::ParseNumber(sql.substr(start, pos - start)).has_value();
  }
  if (sql[pos] != '\'') {
    return false;
  }
  std::string content;
  if (!ReadQuoted(sql, pos, content)) {
    return false;
  }
  if (literals == Literals::kQuotedText) {
    return true;
  }
  for (const char c : content) {
    if (!IsDateChar(c)) {
      return false;
    }
  }
  return internal::ParseDateText(content).has_value();
}

}  // namespace shape_detail

// True when sql is made only of column, the translators' words and literals.
inline bool SqlShapeOk(std::string_view sql, std::string_view column, Literals literals) {
  size_t pos = 0;
  while (pos < sql.size()) {
    if (sql.substr(pos).starts_with(column)) {
      pos += column.size();
      continue;
    }
    bool matched = false;
    for (std::string_view word : shape_detail::kWords) {
      if (sql.substr(pos).starts_with(word)) {
        pos += word.size();
        matched = true;
        break;
      }
    }
    if (!matched && !shape_detail::ReadLiteral(sql, pos, literals)) {
      return false;
    }
  }
  return true;
}

}  // namespace varnel::fuzzing
