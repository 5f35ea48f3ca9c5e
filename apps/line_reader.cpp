#include "line_reader.h"

#include "command_words.h"
#include "line_editor.h"

namespace varnel::app {

LineReader::LineReader(bool interactive, std::filesystem::path history_file, std::istream& in,
                       std::ostream& out)
    : in_(in), out_(out) {
  if (interactive) {
    editor_ = std::make_unique<LineEditor>(std::move(history_file));
  }
}

LineReader::~LineReader() = default;

void LineReader::SetCompleter(Completer completer) {
  if (editor_) {
    editor_->SetCompleter(std::move(completer));
  }
}

std::optional<std::string> LineReader::Next() { return Read("varnel> ", true); }

std::optional<bool> LineReader::AskYesNo(const std::string& question, const std::string& retry) {
  for (;;) {
    const std::optional<std::string> answer = Read(question, false);
    if (!answer) {
      return std::nullopt;
    }
    if (const std::optional<bool> yes = YesNo(Trim(*answer))) {
      return yes;
    }
    out_ << retry << "\n";
  }
}

std::optional<std::string> LineReader::Read(const std::string& prompt, bool keep_in_history) {
  if (!editor_) {
    std::string line;
    if (!std::getline(in_, line)) {
      return std::nullopt;
    }
    out_ << prompt << line << "\n";
    return line;
  }
  for (;;) {
    out_.flush();
    LineEditor::Result read = editor_->Read(prompt, keep_in_history);
    if (read.interrupted) {
      out_ << "^C\n";  // the line is dropped, the program goes on
      continue;
    }
    if (!read.line) {
      out_ << "\n";
    }
    return std::move(read.line);
  }
}

}  // namespace varnel::app
