// A temporary directory removed with its contents at the end of the scope.
#pragma once

#include <filesystem>
#include <string>

namespace varnel::testing {

class TempDir {
 public:
  TempDir();
  ~TempDir();
  const std::filesystem::path& path() const { return path_; }
  // "Provider=SQLite;Create=True;Data Source=<dir>/<name>": made on first open.
  std::string SqliteConnection(const std::string& name = "test.db") const;

 private:
  std::filesystem::path path_;
};

}  // namespace varnel::testing
