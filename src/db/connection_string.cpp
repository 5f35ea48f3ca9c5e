#include "db/connection_string.h"

#include <cctype>

#include "db/db_errors.h"

namespace varnel::db::internal {
namespace {

bool IsBlank(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

std::string_view Trim(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) {
    text.remove_prefix(1);
  }
  while (!text.empty() && IsBlank(text.back())) {
    text.remove_suffix(1);
  }
  return text;
}

std::string Lower(std::string_view text) {
  std::string out(text);
  for (char& c : out) {
    c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  }
  return out;
}

// Reads a value that starts at text[pos] up to the next ';' outside quotes;
// leaves pos on that ';' (or at the end).
std::string ReadValue(std::string_view text, size_t& pos) {
  while (pos < text.size() && IsBlank(text[pos])) {
    ++pos;
  }
  if (pos < text.size() && (text[pos] == '"' || text[pos] == '\'')) {
    const char quote = text[pos++];
    std::string value;
    for (;; ++pos) {
      if (pos >= text.size()) {
        RaiseProviderError("The connection string has an unterminated quoted value.");
      }
      if (text[pos] == quote) {
        if (pos + 1 < text.size() && text[pos + 1] == quote) {
          value += quote;
          ++pos;
          continue;
        }
        ++pos;
        break;
      }
      value += text[pos];
    }
    size_t end = text.find(';', pos);
    end = end == std::string_view::npos ? text.size() : end;
    if (!Trim(text.substr(pos, end - pos)).empty()) {
      RaiseProviderError("The connection string has text after a quoted value.");
    }
    pos = end;
    return value;
  }
  size_t end = text.find(';', pos);
  end = end == std::string_view::npos ? text.size() : end;
  std::string value(Trim(text.substr(pos, end - pos)));
  pos = end;
  return value;
}

}  // namespace

ConnectionSettings ConnectionSettings::Parse(std::string_view text) {
  ConnectionSettings settings;
  size_t pos = 0;
  while (pos < text.size()) {
    const size_t end = text.find_first_of(";=", pos);
    if (end == std::string_view::npos || text[end] == ';') {
      const size_t stop = end == std::string_view::npos ? text.size() : end;
      std::string_view stray = Trim(text.substr(pos, stop - pos));
      if (!stray.empty()) {
        RaiseProviderError("The connection string part '" + std::string(stray) +
                           "' is not a Key=Value pair.");
      }
      pos = stop + 1;
      continue;
    }
    std::string key = Lower(Trim(text.substr(pos, end - pos)));
    pos = end + 1;
    std::string value = ReadValue(text, pos);
    ++pos;  // past the ';'
    settings.values_[std::move(key)] = std::move(value);
  }
  return settings;
}

std::optional<std::string> ConnectionSettings::Get(std::string_view key) const {
  auto found = values_.find(Lower(key));
  if (found == values_.end()) {
    return std::nullopt;
  }
  return found->second;
}

std::string ConnectionSettings::GetOr(std::string_view key, std::string_view fallback) const {
  return Get(key).value_or(std::string(fallback));
}

}  // namespace varnel::db::internal
