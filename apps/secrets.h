// Keeping connection strings out of what is shown: a database's or the
// library's error text may repeat pieces of the string it was given (a
// malformed pair, a password), so every message passes through Hide first.
#pragma once

#include <string>
#include <vector>

namespace varnel::app {

class Secrets {
 public:
  // Remembers the whole of ConnectionString, its password value, its pieces
  // without "=" (a password cut at a ";"), and Password, as texts never to show.
  void AddConnection(const std::string& connection_string, const std::string& password = "");

  // Text with every remembered piece replaced by "***".
  std::string Hide(std::string text) const;

 private:
  void Add(std::string piece);

  std::vector<std::string> pieces_;
};

}  // namespace varnel::app
