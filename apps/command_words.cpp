#include "command_words.h"

#include <strings.h>

#include <charconv>

namespace varnel::app {
namespace {

constexpr std::string_view kBlanks = " \t\r";

bool OneOf(std::string_view text, std::initializer_list<std::string_view> words) {
  for (std::string_view word : words) {
    if (Same(text, word)) {
      return true;
    }
  }
  return false;
}

}  // namespace

std::string Trim(std::string_view text) {
  const size_t begin = text.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos) {
    return "";
  }
  return std::string(text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1));
}

std::vector<Word> SplitWords(std::string_view text) {
  std::vector<Word> words;
  size_t at = text.find_first_not_of(kBlanks);
  while (at != std::string_view::npos) {
    const size_t end = std::min(text.find_first_of(kBlanks, at), text.size());
    words.push_back({std::string(text.substr(at, end - at)), at});
    at = text.find_first_not_of(kBlanks, end);
  }
  return words;
}

std::optional<int64_t> NumberIn(std::string_view text, int64_t low, int64_t high) {
  int64_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (text.empty() || error != std::errc() || end != text.data() + text.size() || value < low ||
      value > high) {
    return std::nullopt;
  }
  return value;
}

bool Same(std::string_view a, std::string_view b) {
  return a.size() == b.size() && strncasecmp(a.data(), b.data(), a.size()) == 0;
}

std::optional<bool> YesNo(std::string_view text) {
  if (OneOf(text, {"yes", "y", "true", "1", "是", "真", "对"})) {
    return true;
  }
  if (OneOf(text, {"no", "n", "false", "0", "否", "假", "错"})) {
    return false;
  }
  return std::nullopt;
}

}  // namespace varnel::app
