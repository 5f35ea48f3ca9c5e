#include "line_editor.h"

#include <poll.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cwchar>

#include "command_words.h"
#include "text_width.h"

namespace varnel::app {
namespace {

constexpr int kHistoryLines = 1000;

// Set by Ctrl-C: a key while a line is edited (so that it cannot land while
// the editor is busy between two keys), a signal while a command runs or
// while lines typed ahead are read.
volatile sig_atomic_t interrupted = 0;

void OnInterrupt(int) { interrupted = 1; }

constexpr char kCtrlC = '\x03';
constexpr char kCtrlZ = '\x1a';

// Keeps Ctrl-C blocked while it lives, so that a check of the flag and the
// wait that follows cannot miss an interrupt landing between them.
class InterruptBlock {
 public:
  InterruptBlock() {
    sigset_t interrupt;
    sigemptyset(&interrupt);
    sigaddset(&interrupt, SIGINT);
    sigprocmask(SIG_BLOCK, &interrupt, &unblocked_);
  }
  ~InterruptBlock() { sigprocmask(SIG_SETMASK, &unblocked_, nullptr); }
  InterruptBlock(const InterruptBlock&) = delete;
  InterruptBlock& operator=(const InterruptBlock&) = delete;

  const sigset_t* Unblocked() const { return &unblocked_; }

 private:
  sigset_t unblocked_;
};

// The next byte typed; nullopt at the end of the input or on Ctrl-C.
std::optional<char> ReadByte() {
  const InterruptBlock block;
  for (;;) {
    pollfd ready{STDIN_FILENO, POLLIN, 0};
    const int polled = interrupted ? -1 : ppoll(&ready, 1, nullptr, block.Unblocked());
    if (interrupted) {
      return std::nullopt;
    }
    if (polled < 0) {
      if (errno == EINTR) {
        continue;
      }
      return std::nullopt;
    }
    char byte = 0;
    const ssize_t n = read(STDIN_FILENO, &byte, 1);
    if (n == 1 && byte == kCtrlC) {
      interrupted = 1;
      return std::nullopt;
    }
    if (n == 1 && byte == kCtrlZ) {
      raise(SIGTSTP);  // as the terminal would; the editor takes the line back after
      continue;
    }
    if (n == 1) {
      return byte;
    }
    if (n == 0 || errno != EINTR) {
      return std::nullopt;
    }
  }
}

bool StartsWith(const std::string& text, const std::string& prefix) {
  return text.size() >= prefix.size() && Same(text.substr(0, prefix.size()), prefix);
}

size_t CharacterCount(const std::string& text) {
  return static_cast<size_t>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  }));
}

// The longest start all Choices share (letter case from the first), cut
// back to whole characters.
std::string SharedStart(const std::vector<std::string>& choices) {
  size_t length = choices.front().size();
  for (const std::string& choice : choices) {
    size_t same = 0;
    while (same < length && same < choice.size() &&
           Same(choice.substr(same, 1), choices.front().substr(same, 1))) {
      ++same;
    }
    length = same;
  }
  while (length < choices.front().size() &&
         (static_cast<unsigned char>(choices.front()[length]) & 0xC0) == 0x80) {
    --length;
  }
  return choices.front().substr(0, length);
}

size_t TerminalColumns() {
  winsize size{};
  if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) {
    return size.ws_col;
  }
  return 80;
}

}  // namespace

LineEditor::LineEditor(std::filesystem::path history_file)
    : history_file_(std::move(history_file)) {
  struct sigaction action {};
  action.sa_handler = &OnInterrupt;
  sigemptyset(&action.sa_mask);
  action.sa_flags = 0;  // no restart: a wait in progress returns
  sigaction(SIGINT, &action, nullptr);

  HistEvent event;
  history_ = history_init();
  history(history_, &event, H_SETSIZE, kHistoryLines);
  history(history_, &event, H_SETUNIQUE, 1);
  if (!history_file_.empty()) {
    history(history_, &event, H_LOAD, history_file_.c_str());
  }
  editor_ = el_init("varnel", stdin, stdout, stderr);
  el_set(editor_, EL_CLIENTDATA, this);
  el_set(editor_, EL_EDITOR, "emacs");
  el_set(editor_, EL_SIGNAL, 1);  // the terminal's mode across Ctrl-Z and resizes
  el_set(editor_, EL_SETTY, "-d", "-isig", nullptr);  // Ctrl-C comes as a key
  el_set(editor_, EL_PROMPT, &Prompt);
  el_set(editor_, EL_HIST, history, history_);
  el_set(editor_, EL_GETCFN, &ReadKey);
  // The wide form: the narrow one copies the names and never frees them.
  el_wset(editor_, EL_ADDFN, L"varnel-complete", L"Complete the word", &CompleteKey);
  el_set(editor_, EL_BIND, "^I", "varnel-complete", nullptr);
  el_set(editor_, EL_BIND, "^R", "em-inc-search-prev", nullptr);
}

LineEditor::~LineEditor() {
  if (!history_file_.empty()) {
    std::error_code ignored;
    std::filesystem::create_directories(history_file_.parent_path(), ignored);
    HistEvent event;
    history(history_, &event, H_SAVE, history_file_.c_str());
  }
  el_end(editor_);
  history_end(history_);
}

LineEditor::Result LineEditor::Read(const std::string& prompt, bool keep_in_history) {
  prompt_ = prompt;
  interrupted = 0;
  int count = 0;
  const char* typed = el_gets(editor_, &count);
  if (interrupted) {
    return {std::nullopt, true};
  }
  if (typed == nullptr || count <= 0) {
    return {};
  }
  std::string line(typed, static_cast<size_t>(count));
  while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) {
    line.pop_back();
  }
  if (keep_in_history && line.find_first_not_of(" \t") != std::string::npos) {
    HistEvent event;
    history(history_, &event, H_ENTER, line.c_str());
  }
  return {std::move(line), false};
}

LineEditor& LineEditor::Of(EditLine* editor) {
  void* self = nullptr;
  el_get(editor, EL_CLIENTDATA, &self);
  return *static_cast<LineEditor*>(self);
}

char* LineEditor::Prompt(EditLine* editor) { return Of(editor).prompt_.data(); }

// One character, decoded by the locale (UTF-8 on every terminal we start on).
int LineEditor::ReadKey(EditLine*, wchar_t* key) {
  std::mbstate_t state{};
  for (;;) {
    const std::optional<char> byte = ReadByte();
    if (!byte) {
      return 0;
    }
    const size_t used = std::mbrtowc(key, &*byte, 1, &state);
    if (used == static_cast<size_t>(-2)) {
      continue;  // more bytes to come
    }
    if (used == static_cast<size_t>(-1)) {
      *key = static_cast<unsigned char>(*byte);  // not text in this locale: as it came
    }
    return 1;
  }
}

unsigned char LineEditor::CompleteKey(EditLine* editor, int) { return Of(editor).Complete(); }

unsigned char LineEditor::Complete() {
  const LineInfo* info = el_line(editor_);
  const std::string before(info->buffer, info->cursor);
  Completion completion = completer_ ? completer_(before) : Completion{before.size(), {}};
  const std::string typed = before.substr(std::min(completion.from, before.size()));
  std::vector<std::string> matches;
  for (std::string& choice : completion.choices) {
    if (StartsWith(choice, typed) &&
        std::find(matches.begin(), matches.end(), choice) == matches.end()) {
      matches.push_back(std::move(choice));
    }
  }
  if (matches.empty()) {
    return CC_REFRESH_BEEP;
  }
  const std::string replacement =
      matches.size() == 1 ? matches.front() + " " : SharedStart(matches);
  if (replacement.size() > typed.size() || (matches.size() == 1 && replacement != typed)) {
    el_deletestr(editor_, static_cast<int>(CharacterCount(typed)));
    el_insertstr(editor_, replacement.c_str());
    return CC_REFRESH;
  }
  ListChoices(matches);
  return CC_REDISPLAY;
}

// The choices in columns under the line; the editor then shows the line again.
void LineEditor::ListChoices(const std::vector<std::string>& choices) const {
  size_t widest = 0;
  for (const std::string& choice : choices) {
    widest = std::max(widest, DisplayWidth(choice));
  }
  const size_t per_line = std::max<size_t>(1, TerminalColumns() / (widest + 2));
  std::string text = "\n";
  for (size_t i = 0; i < choices.size(); ++i) {
    const bool last_in_line = (i + 1) % per_line == 0 || i + 1 == choices.size();
    text += last_in_line ? choices[i] + "\n" : PadRight(choices[i], widest + 2);
  }
  std::fputs(text.c_str(), stdout);
  std::fflush(stdout);
}

}  // namespace varnel::app
