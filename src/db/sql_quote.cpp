#include "db/sql_quote.h"

namespace varnel::db::internal {
namespace {

// Text with every Quote doubled, between Open and Close ('\0': none).
std::string Doubled(std::string_view text, char quote, char open, char close) {
  std::string out;
  out.reserve(text.size() + 2);
  if (open != '\0') {
    out += open;
  }
  for (const char c : text) {
    out += c;
    if (c == quote) {
      out += c;
    }
  }
  if (close != '\0') {
    out += close;
  }
  return out;
}

// Inner with every doubled Quote read as one.
std::string Undoubled(std::string_view inner, char quote) {
  std::string out;
  out.reserve(inner.size());
  for (size_t i = 0; i < inner.size(); ++i) {
    out += inner[i];
    if (inner[i] == quote && i + 1 < inner.size() && inner[i + 1] == quote) {
      ++i;
    }
  }
  return out;
}

}  // namespace

std::string BracketName(std::string_view name) { return Doubled(name, ']', '[', ']'); }

std::string UnquoteName(std::string_view name) {
  if (!name.empty() && name.front() == '[') {
    std::string_view inner = name.substr(1);
    if (!inner.empty() && inner.back() == ']') {
      inner.remove_suffix(1);
    }
    return Undoubled(inner, ']');
  }
  if (name.size() >= 2 && (name.front() == '"' || name.front() == '`') &&
      name.back() == name.front()) {
    return Undoubled(name.substr(1, name.size() - 2), name.front());
  }
  return std::string(name);
}

std::string QuoteNameWith(std::string_view name, char quote) {
  return Doubled(name, quote, quote, quote);
}

std::string EscapeText(std::string_view text) { return Doubled(text, '\'', '\0', '\0'); }

std::string TextLiteral(std::string_view text) { return Doubled(text, '\'', '\'', '\''); }

std::optional<ReadLiteral> ReadTextLiteral(std::string_view sql) {
  if (sql.empty() || sql.front() != '\'') {
    return std::nullopt;
  }
  for (size_t at = 1; at < sql.size(); ++at) {
    if (sql[at] != '\'') {
      continue;
    }
    if (at + 1 < sql.size() && sql[at + 1] == '\'') {
      ++at;  // a doubled quote stays inside
      continue;
    }
    return ReadLiteral{Undoubled(sql.substr(1, at - 1), '\''), sql.substr(at + 1)};
  }
  return std::nullopt;
}

}  // namespace varnel::db::internal
