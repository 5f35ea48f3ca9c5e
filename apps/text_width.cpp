#include "text_width.h"

#include <cstdint>

namespace varnel::app {
namespace {

struct Glyph {
  size_t bytes;  // length of its UTF-8 sequence
  size_t width;  // terminal columns
};

// East Asian wide and full-width ranges (the CJK blocks, Hangul, full-width forms).
bool IsWide(uint32_t c) {
  return (c >= 0x1100 && c <= 0x115F) || (c >= 0x2E80 && c <= 0x303E) ||
         (c >= 0x3041 && c <= 0x33FF) || (c >= 0x3400 && c <= 0x4DBF) ||
         (c >= 0x4E00 && c <= 0x9FFF) || (c >= 0xA000 && c <= 0xA4CF) ||
         (c >= 0xAC00 && c <= 0xD7A3) || (c >= 0xF900 && c <= 0xFAFF) ||
         (c >= 0xFE30 && c <= 0xFE4F) || (c >= 0xFF00 && c <= 0xFF60) ||
         (c >= 0xFFE0 && c <= 0xFFE6) || (c >= 0x20000 && c <= 0x3FFFD);
}

Glyph NextGlyph(std::string_view text, size_t at) {
  const auto lead = static_cast<unsigned char>(text[at]);
  size_t bytes = 1;
  uint32_t code = lead;
  if (lead >= 0xF0) {
    bytes = 4;
    code = lead & 0x07;
  } else if (lead >= 0xE0) {
    bytes = 3;
    code = lead & 0x0F;
  } else if (lead >= 0xC0) {
    bytes = 2;
    code = lead & 0x1F;
  }
  if (at + bytes > text.size()) {
    return {text.size() - at, 1};  // a cut sequence counts as one column
  }
  for (size_t i = 1; i < bytes; ++i) {
    code = (code << 6) | (static_cast<unsigned char>(text[at + i]) & 0x3F);
  }
  return {bytes, IsWide(code) ? 2u : 1u};
}

}  // namespace

size_t DisplayWidth(std::string_view text) {
  size_t width = 0;
  for (size_t at = 0; at < text.size();) {
    const Glyph glyph = NextGlyph(text, at);
    width += glyph.width;
    at += glyph.bytes;
  }
  return width;
}

std::string Fit(std::string_view text, size_t width) {
  if (DisplayWidth(text) <= width) {
    return PadRight(text, width);
  }
  std::string cut;
  size_t used = 0;
  for (size_t at = 0; at < text.size();) {
    const Glyph glyph = NextGlyph(text, at);
    if (used + glyph.width + 1 > width) {  // room for the ellipsis
      break;
    }
    cut.append(text.substr(at, glyph.bytes));
    used += glyph.width;
    at += glyph.bytes;
  }
  cut += "\u2026";  // one column: …
  return PadRight(cut, width);
}

std::string PadRight(std::string_view text, size_t width) {
  std::string padded(text);
  const size_t used = DisplayWidth(text);
  if (used < width) {
    padded.append(width - used, ' ');
  }
  return padded;
}

std::string PadLeft(std::string_view text, size_t width) {
  const size_t used = DisplayWidth(text);
  return (used < width ? std::string(width - used, ' ') : std::string()) + std::string(text);
}

}  // namespace varnel::app
