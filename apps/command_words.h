// Reading what a person typed: trimming, words, numbers and the yes/no words
// of both languages. One place for these rules, shared by every command.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace varnel::app {

// Text without leading and trailing blanks, tabs and carriage returns.
std::string Trim(std::string_view text);

// A word of the text and where it starts.
struct Word {
  std::string text;
  size_t begin = 0;
};
// The blank-separated words of Text, each once: linear in the text's length.
std::vector<Word> SplitWords(std::string_view text);

// A whole number from Low to High, written in decimal digits; nullopt for
// anything else (letters, overflow, out of range).
std::optional<int64_t> NumberIn(std::string_view text, int64_t low, int64_t high);

// Equal without regard to ASCII letter case.
bool Same(std::string_view a, std::string_view b);

// true for yes/y/true/1/是/真/对, false for no/n/false/0/否/假/错; nullopt otherwise.
std::optional<bool> YesNo(std::string_view text);

}  // namespace varnel::app
