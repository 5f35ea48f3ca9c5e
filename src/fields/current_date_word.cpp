#include "fields/current_date_word.h"

#include <algorithm>
#include <cctype>
#include <string_view>

namespace varnel::internal {
namespace {

bool IsBlank(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

bool EqualsIgnoringCase(std::string_view text, std::string_view word) {
  return std::ranges::equal(text, word, [](char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) ==
           std::tolower(static_cast<unsigned char>(b));
  });
}

}  // namespace

bool IsCurrentDateWord(const Variant& value) {
  if (!value.IsString()) {
    return false;
  }
  std::string_view text = value.StringView();
  while (!text.empty() && IsBlank(text.front())) {
    text.remove_prefix(1);
  }
  while (!text.empty() && IsBlank(text.back())) {
    text.remove_suffix(1);
  }
  return EqualsIgnoringCase(text, "now") || EqualsIgnoringCase(text, "today");
}

}  // namespace varnel::internal
