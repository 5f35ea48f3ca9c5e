#include "line_reader.h"

#include <editline/readline.h>
#include <signal.h>
#include <strings.h>

#include <cstdlib>
#include <cstring>

#include "command_words.h"

namespace varnel::app {
namespace {

constexpr const char* kPrompt = "varnel> ";
constexpr int kHistoryLines = 1000;

// Set by Ctrl-C; readline then returns as at the end of the input, and this
// tells the two apart.
volatile sig_atomic_t interrupted = 0;

void OnInterrupt(int) { interrupted = 1; }

// Readline's callbacks take no context.
Completer& CurrentCompleter() {
  static Completer completer;
  return completer;
}

std::vector<std::string>& Matches() {
  static std::vector<std::string> matches;
  return matches;
}

// Readline asks for match after match (state 0 first) until it gets nullptr.
char* NextMatch(const char* text, int state) {
  static size_t index = 0;
  if (state == 0) {
    index = 0;
  }
  const std::vector<std::string>& words = Matches();
  while (index < words.size()) {
    const std::string& word = words[index++];
    if (strncasecmp(word.c_str(), text, std::strlen(text)) == 0) {
      return strdup(word.c_str());
    }
  }
  return nullptr;
}

char** Complete(const char* text, int start, int) {
  rl_attempted_completion_over = 1;  // no file names
  Matches() = CurrentCompleter() ? CurrentCompleter()(rl_line_buffer, static_cast<size_t>(start))
                                 : std::vector<std::string>();
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
    struct sigaction action {};
    action.sa_handler = &OnInterrupt;
    sigemptyset(&action.sa_mask);
    action.sa_flags = 0;  // no restart: the read in progress returns
    sigaction(SIGINT, &action, nullptr);
  }
}

LineReader::~LineReader() {
  if (interactive_ && !history_file_.empty()) {
    std::error_code ignored;
    std::filesystem::create_directories(history_file_.parent_path(), ignored);
    write_history(history_file_.c_str());
  }
}

void LineReader::SetCompleter(Completer completer) { CurrentCompleter() = std::move(completer); }

std::optional<std::string> LineReader::Next() { return Read(kPrompt, true); }

std::optional<bool> LineReader::AskYesNo(const std::string& question, const std::string& retry) {
  for (;;) {
    const std::optional<std::string> answer = Read(question.c_str(), false);
    if (!answer) {
      return std::nullopt;
    }
    if (const std::optional<bool> yes = YesNo(Trim(*answer))) {
      return yes;
    }
    out_ << retry << "\n";
  }
}

std::optional<std::string> LineReader::Read(const char* prompt, bool keep_in_history) {
  if (!interactive_) {
    std::string line;
    if (!std::getline(in_, line)) {
      return std::nullopt;
    }
    out_ << prompt << line << "\n";
    return line;
  }
  for (;;) {
    out_.flush();
    interrupted = 0;
    char* typed = readline(prompt);
    if (typed == nullptr && interrupted) {
      out_ << "^C\n";  // the line is dropped, the program goes on
      continue;
    }
    if (typed == nullptr) {
      out_ << "\n";
      return std::nullopt;
    }
    std::string line(typed);
    std::free(typed);
    if (interrupted) {
      out_ << "^C\n";
      continue;
    }
    if (keep_in_history && line.find_first_not_of(" \t") != std::string::npos) {
      add_history(line.c_str());
    }
    return line;
  }
}

}  // namespace varnel::app
