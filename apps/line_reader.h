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
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace varnel::app {

// The words Tab offers for the word that starts at Word_start of Line.
using Completer =
    std::function<std::vector<std::string>(const std::string& line, size_t word_start)>;

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
  std::optional<std::string> Read(const char* prompt, bool keep_in_history);

  bool interactive_;
  std::filesystem::path history_file_;
  std::istream& in_;
  std::ostream& out_;
};

}  // namespace varnel::app
