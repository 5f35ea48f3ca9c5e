// A parsed connection string: Key=Value pairs separated by ';'. Keys are found
// without regard to case; values are trimmed, and a value may be quoted ("..."
// or '...', the quote doubled inside) to hold a ';'.
//
//   ConnectionSettings s = ConnectionSettings::Parse("Provider=SQLite; Data Source = a.db");
//   s.Get("data source")  // "a.db"
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace varnel::db::internal {

class ConnectionSettings {
 public:
  // Raises the provider error for a pair without '=' or an unterminated quote.
  static ConnectionSettings Parse(std::string_view text);

  // The value of Key (any case); nullopt when the key is absent.
  std::optional<std::string> Get(std::string_view key) const;
  // The value of Key, or "" when absent.
  std::string GetOr(std::string_view key, std::string_view fallback = {}) const;

 private:
  std::map<std::string, std::string> values_;  // lower-case key -> trimmed value
};

}  // namespace varnel::db::internal
