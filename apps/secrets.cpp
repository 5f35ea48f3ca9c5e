#include "secrets.h"

#include <algorithm>

#include "command_words.h"

namespace varnel::app {
namespace {

// Pieces this short occur in any text; hiding them would garble messages.
constexpr size_t kShortestHidden = 3;

// Keys whose values are secrets; the others (provider, host, file, user)
// name things the messages must be able to name.
bool IsSecretKey(const std::string& key) {
  const std::string name = Trim(key);
  return Same(name, "Password") || Same(name, "Pwd");
}

}  // namespace

void Secrets::Add(std::string piece) {
  piece = Trim(piece);
  if (piece.size() >= kShortestHidden) {
    pieces_.push_back(std::move(piece));
  }
}

void Secrets::AddConnection(const std::string& connection_string, const std::string& password) {
  Add(connection_string);
  Add(password);
  size_t begin = 0;
  while (begin <= connection_string.size()) {
    const size_t end = std::min(connection_string.find(';', begin), connection_string.size());
    const std::string pair = connection_string.substr(begin, end - begin);
    const size_t equals = pair.find('=');
    if (equals == std::string::npos) {
      Add(pair);  // a malformed piece: perhaps the rest of a password with a ";"
    } else if (IsSecretKey(pair.substr(0, equals))) {
      // The value as typed and without its quotes.
      const std::string value = Trim(pair.substr(equals + 1));
      Add(value);
      if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'')) {
        Add(value.substr(1, value.size() - 2));
      }
    }
    begin = end + 1;
  }
  // Longer pieces first, so that a piece inside another is not left half shown.
  std::sort(pieces_.begin(), pieces_.end(),
            [](const std::string& a, const std::string& b) { return a.size() > b.size(); });
}

std::string Secrets::Hide(std::string text) const {
  for (const std::string& piece : pieces_) {
    for (size_t at = text.find(piece); at != std::string::npos; at = text.find(piece, at + 3)) {
      text.replace(at, piece.size(), "***");
    }
  }
  return text;
}

}  // namespace varnel::app
