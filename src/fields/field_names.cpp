#include "fields/field_names.h"

#include <string>
#include <vector>

namespace varnel::internal {
namespace {

char32_t FoldAscii(char32_t c) noexcept { return (c >= U'A' && c <= U'Z') ? c + 32 : c; }

// Decodes UTF-8 into code points so that ? and [list] take whole characters;
// a stray byte stands for itself.
std::u32string Decode(std::string_view text) {
  std::u32string out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size();) {
    const auto lead = static_cast<unsigned char>(text[i]);
    size_t length = lead < 0x80           ? 1
                    : (lead >> 5) == 0x6  ? 2
                    : (lead >> 4) == 0xE  ? 3
                    : (lead >> 3) == 0x1E ? 4
                                          : 1;
    if (i + length > text.size()) {
      length = 1;
    }
    char32_t code = length == 1 ? lead : lead & (0x7F >> length);
    for (size_t k = 1; k < length; ++k) {
      code = (code << 6) | (static_cast<unsigned char>(text[i + k]) & 0x3F);
    }
    out.push_back(code);
    i += length;
  }
  return out;
}

bool HasPatternCharacters(std::string_view name) noexcept {
  return name.find_first_of("?*#[") != std::string_view::npos;
}

// One [list] at pattern[p] (pointing at '['). Returns the index after ']', or
// npos when the bracket is not closed (then '[' is an ordinary character).
size_t MatchList(const std::u32string& pattern, size_t p, char32_t c, bool& matched) {
  size_t k = p + 1;
  const bool negate = k < pattern.size() && pattern[k] == U'!';
  if (negate) {
    ++k;
  }
  bool in_list = false;
  for (; k < pattern.size() && pattern[k] != U']'; ++k) {
    if (k + 2 < pattern.size() && pattern[k + 1] == U'-' && pattern[k + 2] != U']') {
      in_list = in_list || (c >= pattern[k] && c <= pattern[k + 2]);
      k += 2;
    } else {
      in_list = in_list || c == pattern[k];
    }
  }
  if (k >= pattern.size()) {
    return std::u32string::npos;
  }
  matched = in_list != negate;
  return k + 1;
}

// True when pattern[p..] matches a prefix of text[t..] (the rest of the text
// is taken by the trailing "*").
bool MatchPrefix(const std::u32string& text, size_t t, const std::u32string& pattern, size_t p) {
  while (p < pattern.size()) {
    const char32_t pc = pattern[p];
    if (pc == U'*') {  // any run, then the rest of the name
      for (size_t rest = t; rest <= text.size(); ++rest) {
        if (MatchPrefix(text, rest, pattern, p + 1)) {
          return true;
        }
      }
      return false;
    }
    if (t >= text.size()) {
      return false;
    }
    const char32_t tc = text[t];
    if (pc == U'?') {
      ++p;
    } else if (pc == U'#') {
      if (tc < U'0' || tc > U'9') {
        return false;
      }
      ++p;
    } else if (pc == U'[') {
      bool matched = false;
      const size_t next = MatchList(pattern, p, tc, matched);
      if (next == std::u32string::npos) {
        if (tc != U'[') {
          return false;
        }
        ++p;
      } else if (!matched) {
        return false;
      } else {
        p = next;
      }
    } else if (pc != tc) {
      return false;
    } else {
      ++p;
    }
    ++t;
  }
  return true;
}

}  // namespace

bool NamesEqual(std::string_view a, std::string_view b) noexcept {
  if (a.size() != b.size()) {
    return false;
  }
  for (size_t i = 0; i < a.size(); ++i) {
    if (FoldAscii(static_cast<unsigned char>(a[i])) !=
        FoldAscii(static_cast<unsigned char>(b[i]))) {
      return false;
    }
  }
  return true;
}

bool ContainsNamePattern(std::string_view text, std::string_view name) {
  if (!HasPatternCharacters(name)) {
    return text.find(name) != std::string_view::npos;
  }
  const std::u32string decoded_text = Decode(text);
  const std::u32string decoded_name = Decode(name);
  for (size_t start = 0; start <= decoded_text.size(); ++start) {
    if (MatchPrefix(decoded_text, start, decoded_name, 0)) {
      return true;
    }
  }
  return false;
}

}  // namespace varnel::internal
