// Where command lines come from: a terminal gets line editing, a history
// kept across sessions (libedit) and Tab completion; anything else is read
// line by line, each line echoed after the prompt so that a scripted session
// reads like a typed one.
//
// On a terminal Ctrl-C cancels the line being typed (the program goes on)
// and Ctrl-D on an empty line ends the input.
#pragma once

#include <filesystem>
#include <functional>
#include <istream>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace varnel::app {

// What Tab may put in place of the end of a line: the text from From on is
// replaced by one of Choices (those starting with it, whatever the case).
struct Completion {
  size_t from = 0;
  std::vector<std::string> choices;
};

// The completion for Line, the text typed before the cursor.
using Completer = std::function<Completion(const std::string& line)>;

class LineEditor;

class LineReader {
 public:
  // Interactive: edit lines on the terminal, keeping the history in
  // HistoryFile (when not empty). Otherwise read In and echo to Out.
  LineReader(bool interactive, std::filesystem::path history_file, std::istream& in,
             std::ostream& out);
  ~LineReader();
  LineReader(const LineReader&) = delete;
  LineReader& operator=(const LineReader&) = delete;

  // The next command line; nullopt at the end of the input.
  std::optional<std::string> Next();

  // A yes/no answer to Question, asked until one is given; nullopt when the
  // input ends first.
  std::optional<bool> AskYesNo(const std::string& question, const std::string& retry);

  void SetCompleter(Completer completer);

 private:
  std::optional<std::string> Read(const std::string& prompt, bool keep_in_history);

  std::unique_ptr<LineEditor> editor_;  // null when not interactive
  std::istream& in_;
  std::ostream& out_;
};

}  // namespace varnel::app
