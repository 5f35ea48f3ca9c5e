#include "line_reader.h"

#include <editline/readline.h>
#include <strings.h>

#include <cstdlib>
#include <cstring>

namespace varnel::app {
namespace {

constexpr const char* kPrompt = "varnel> ";
constexpr int kHistoryLines = 1000;

// The words Tab completes; readline's callbacks take no context.
std::vector<std::string>& CompletionWords() {
  static std::vector<std::string> words;
  return words;
}

// Readline asks for match after match (state 0 first) until it gets nullptr.
char* NextMatch(const char* text, int state) {
  static size_t index = 0;
  if (state == 0) {
    index = 0;
  }
  const std::vector<std::string>& words = CompletionWords();
  while (index < words.size()) {
    const std::string& word = words[index++];
    if (strncasecmp(word.c_str(), text, std::strlen(text)) == 0) {
      return strdup(word.c_str());
    }
  }
  return nullptr;
}

char** Complete(const char* text, int, int) {
  rl_attempted_completion_over = 1;  // no file names
  return rl_completion_matches(text, &NextMatch);
}

}  // namespace

LineReader::LineReader(bool interactive, std::filesystem::path history_file, std::istream& in,
                       std::ostream& out)
    : interactive_(interactive), history_file_(std::move(history_file)), in_(in), out_(out) {
  if (interactive_) {
    using_history();
    stifle_history(kHistoryLines);
    rl_attempted_completion_function = &Complete;
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

void LineReader::SetCompletions(std::vector<std::string> words) {
  CompletionWords() = std::move(words);
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
