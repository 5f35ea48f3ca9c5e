// Where command lines come from: a terminal gets line editing and a history
// kept across sessions (libedit); anything else is read line by line, each
// line echoed after the prompt so that a scripted session reads like a typed one.
#pragma once

#include <filesystem>
#include <istream>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace varnel::app {

class LineReader {
 public:
  // Interactive: edit lines on the terminal, keeping the history in
  // HistoryFile (when not empty). Otherwise read In and echo to Out.
  LineReader(bool interactive, std::filesystem::path history_file, std::istream& in,
             std::ostream& out);
  ~LineReader();
  LineReader(const LineReader&) = delete;
  LineReader& operator=(const LineReader&) = delete;

  // The next line; nullopt at the end of the input.
  std::optional<std::string> Next();

  // Words that the Tab key completes on a terminal (commands, field names).
  void SetCompletions(std::vector<std::string> words);

 private:
  bool interactive_;
  std::filesystem::path history_file_;
  std::istream& in_;
  std::ostream& out_;
};

}  // namespace varnel::app
