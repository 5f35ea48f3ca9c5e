#include "safe_output.h"

#include <fmt/format.h>

namespace varnel::app {
namespace {

constexpr unsigned char kUtf8TwoByteC2 = 0xC2;

std::string EscapeByte(unsigned char c) {
  switch (c) {
    case '\t':
      return "\\t";
    case '\r':
      return "\\r";
    default:
      return fmt::format("\\x{:02x}", c);
  }
}

bool IsControl(unsigned char c) { return (c < 0x20 && c != '\n') || c == 0x7F; }

// U+0080..U+009F, written C2 80..C2 9F: terminals take them as controls too.
bool IsC1Second(unsigned char c) { return c >= 0x80 && c <= 0x9F; }

}  // namespace

std::string Escaped(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    const auto c = static_cast<unsigned char>(text[i]);
    if (IsControl(c)) {
      result += EscapeByte(c);
    } else if (c == kUtf8TwoByteC2 && i + 1 < text.size() &&
               IsC1Second(static_cast<unsigned char>(text[i + 1]))) {
      result += fmt::format("\\u{:04x}", static_cast<unsigned char>(text[++i]));
    } else {
      result.push_back(text[i]);
    }
  }
  return result;
}

SafeOutput::SafeOutput(std::ostream& stream) : stream_(stream), target_(stream.rdbuf(this)) {}

SafeOutput::~SafeOutput() {
  if (lead_c2_) {
    target_->sputc(static_cast<char>(kUtf8TwoByteC2));
  }
  target_->pubsync();
  stream_.rdbuf(target_);
}

void SafeOutput::Put(std::string_view text) { target_->sputn(text.data(), text.size()); }

SafeOutput::int_type SafeOutput::overflow(int_type value) {
  if (traits_type::eq_int_type(value, traits_type::eof())) {
    return traits_type::not_eof(value);
  }
  const auto c = static_cast<unsigned char>(traits_type::to_char_type(value));
  if (lead_c2_) {
    lead_c2_ = false;
    if (IsC1Second(c)) {
      Put(fmt::format("\\u{:04x}", c));
      return value;
    }
    target_->sputc(static_cast<char>(kUtf8TwoByteC2));
  }
  if (c == kUtf8TwoByteC2) {
    lead_c2_ = true;
  } else if (IsControl(c)) {
    Put(EscapeByte(c));
  } else {
    target_->sputc(static_cast<char>(c));
  }
  return value;
}

int SafeOutput::sync() { return target_->pubsync(); }

}  // namespace varnel::app
