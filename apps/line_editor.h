// Line editing on a terminal (libedit): the prompt, a history kept across
// sessions, Tab completion, and Ctrl-C that cancels the line being typed
// however busy the editor is when it comes.
#pragma once

#include <histedit.h>

#include <filesystem>
#include <optional>
#include <string>

#include "line_reader.h"

namespace varnel::app {

class LineEditor {
 public:
  explicit LineEditor(std::filesystem::path history_file);
  ~LineEditor();
  LineEditor(const LineEditor&) = delete;
  LineEditor& operator=(const LineEditor&) = delete;

  // What was read: a line, the end of the input, or a line cancelled by Ctrl-C.
  struct Result {
    std::optional<std::string> line;  // nullopt at the end of the input
    bool interrupted = false;
  };
  Result Read(const std::string& prompt, bool keep_in_history);

  void SetCompleter(Completer completer) { completer_ = std::move(completer); }

 private:
  static char* Prompt(EditLine* editor);
  static int ReadKey(EditLine* editor, wchar_t* key);
  static unsigned char CompleteKey(EditLine* editor, int key);
  static LineEditor& Of(EditLine* editor);
  unsigned char Complete();
  void ListChoices(const std::vector<std::string>& choices) const;

  std::filesystem::path history_file_;
  EditLine* editor_ = nullptr;
  History* history_ = nullptr;
  std::string prompt_;
  Completer completer_;
};

}  // namespace varnel::app
