// A temporary directory removed with its contents at the end of the scope.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <stdexcept>
#include <string>

namespace varnel::testing {

class TempDir {
 public:
  TempDir() {
    std::string pattern = (std::filesystem::temp_directory_path() / "varnel-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
      throw std::runtime_error("cannot create a temporary directory");
    }
    path_ = pattern;
  }
  ~TempDir() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  const std::filesystem::path& path() const { return path_; }
  // "Provider=SQLite;Create=True;Data Source=<dir>/<name>": made on first open.
  std::string SqliteConnection(const std::string& name = "test.db") const {
    return "Provider=SQLite;Create=True;Data Source=" + (path_ / name).string();
  }

 private:
  std::filesystem::path path_;
};

}  // namespace varnel::testing
