#include "line_reader.h"

#include <editline/readline.h>

#include <cstdlib>

namespace varnel::app {
namespace {

constexpr const char* kPrompt = "varnel> ";
constexpr int kHistoryLines = 1000;

}  // namespace

LineReader::LineReader(bool interactive, std::filesystem::path history_file, std::istream& in,
                       std::ostream& out)
    : interactive_(interactive), history_file_(std::move(history_file)), in_(in), out_(out) {
  if (interactive_) {
    using_history();
    stifle_history(kHistoryLines);
    if (!history_file_.empty()) {
      read_history(history_file_.c_str());
    }
  }
}

LineReader::~LineReader() {
  if (interactive_ && !history_file_.empty()) {
    std::error_code ignored;
    std::filesystem::create_directories(history_file_.parent_path(), ignored);
    write_history(history_file_.c_str());
  }
}

std::optional<std::string> LineReader::Next() {
  if (!interactive_) {
    std::string line;
    if (!std::getline(in_, line)) {
      return std::nullopt;
    }
    out_ << kPrompt << line << "\n";
    return line;
  }
  out_.flush();
  char* typed = readline(kPrompt);
  if (typed == nullptr) {
    out_ << "\n";
    return std::nullopt;
  }
  std::string line(typed);
  std::free(typed);
  if (line.find_first_not_of(" \t") != std::string::npos) {
    add_history(line.c_str());
  }
  return line;
}

}  // namespace varnel::app
