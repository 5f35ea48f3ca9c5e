#include "temp_dir.h"

#include <stdlib.h>

#include <stdexcept>

namespace varnel::testing {

TempDir::TempDir() {
  std::string pattern = (std::filesystem::temp_directory_path() / "varnel-test-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) {
    throw std::runtime_error("cannot create a temporary directory");
  }
  path_ = pattern;
}

TempDir::~TempDir() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string TempDir::SqliteConnection(const std::string& name) const {
  return "Provider=SQLite;Create=True;Data Source=" + (path_ / name).string();
}

}  // namespace varnel::testing
