#include "console.h"

#include <utility>

#include "command_words.h"
#include "form_view.h"
#include "texts.h"

namespace varnel::app {

const Console::Command Console::kCommands[] = {
    {"first", nullptr, &Console::First},
    {"prev", "previous", &Console::Previous},
    {"next", nullptr, &Console::Next},
    {"last", nullptr, &Console::Last},
    {"goto", nullptr, &Console::Goto},
    {"set", nullptr, &Console::Set},
    {"new", nullptr, &Console::New},
    {"copy", nullptr, &Console::Copy},
    {"delete", nullptr, &Console::Delete},
    {"save", nullptr, &Console::Save},
    {"undo", nullptr, &Console::Undo},
    {"query", nullptr, &Console::Query},
    {"refine", nullptr, &Console::Refine},
    {"run", nullptr, &Console::Run},
    {"cancel", nullptr, &Console::Cancel},
    {"clear", nullptr, &Console::Clear},
    {"select", nullptr, &Console::Select},
    {"list", nullptr, &Console::List},
    {"export", nullptr, &Console::Export},
    {"show", nullptr, &Console::Show},
    {"sql", nullptr, &Console::Sql},
    {"details", nullptr, &Console::Details},
    {"lang", nullptr, &Console::Lang},
    {"refresh", nullptr, &Console::Refresh},
    {"conflict", nullptr, &Console::Conflict},
    {"keep-mine", nullptr, &Console::KeepMine},
    {"take-theirs", nullptr, &Console::TakeTheirs},
    {"help", "?", &Console::Help},
};

Console::Console(ClsRecordset& recordset, TableWriter& writer, ConsoleUi& ui, std::ostream& out,
                 ConsoleSettings settings, AskYesNo ask)
    : rs_(recordset),
      writer_(writer),
      ui_(ui),
      out_(out),
      settings_(std::move(settings)),
      ask_(std::move(ask)),
      notices_(recordset),
      notices_cookie_(recordset.Advise(&notices_)) {}

Console::~Console() { rs_.Unadvise(notices_cookie_); }

void Console::Start() {
  out_ << app::Say(Text::Banner, fmt::arg("table", rs_.TableName), fmt::arg("rows", rs_.Rows()))
       << "\n";
  Form();
}

bool Console::Execute(const std::string& line) {
  const std::string text = Trim(line);
  if (text.empty() || text[0] == '#') {
    last_failed_ = false;
    return true;
  }
  const size_t space = text.find_first_of(" \t");
  const std::string word = text.substr(0, space);
  const std::string argument = space == std::string::npos ? "" : Trim(text.substr(space));
  const int shown = ui_.Shown();
  failed_ = false;
  told_not_saved_ = false;
  bool stay = true;
  try {
    if (Same(word, "quit") || Same(word, "exit")) {
      stay = Pending() && !quit_warned_ && !SavePending();
      if (stay) {
        quit_warned_ = true;
        Fail(Tr(Text::QuitPending));
      }
    } else {
      quit_warned_ = false;
      Dispatch(word, argument);
    }
  } catch (const VbError& error) {
    Fail("[" + std::string(LoadResString(101)) + "] " + error.Description());
  } catch (const std::exception& error) {
    Fail("[" + std::string(LoadResString(101)) + "] " + error.what());
  }
  AnnounceSave();
  last_failed_ = failed_ || ui_.Shown() != shown;
  failures_ += last_failed_ ? 1 : 0;
  return stay;
}

void Console::Dispatch(const std::string& word, const std::string& argument) {
  for (const Command& command : kCommands) {
    if (Same(word, command.name) || (command.alias != nullptr && Same(word, command.alias))) {
      (this->*command.run)(argument);
      return;
    }
  }
  Fail(app::Say(Text::UnknownCommand, fmt::arg("command", word)));
}

// A save made by the command (asked for, or on the user's behalf by a move,
// a query or quit) is told; a refused one counts as a failure.
void Console::AnnounceSave() {
  if (const auto notice = notices_.Take()) {
    if (notice->saved) {
      out_ << notice->text << "\n";
    }
    failed_ = failed_ || !notice->saved;
    if (!notice->saved && Pending()) {
      NotSaved();
    }
  }
}

// The form, after the announcement of any save that led to it.
void Console::Form() {
  AnnounceSave();
  WriteForm(rs_, out_);
}

// What to do about an edit whose save was refused and is still pending.
void Console::NotSaved() {
  if (std::exchange(told_not_saved_, true)) {
    return;
  }
  Fail(Tr(writer_.PendingConflict() ? Text::ConflictHint : Text::NotSavedKept));
}

bool Console::EndOfInput() {
  if (!Pending()) {
    return true;
  }
  if (settings_.interactive && ask_) {
    // Ctrl-D at the question too means the person has gone: keep the work.
    const std::optional<bool> save = ask_(Tr(Text::AskSavePending));
    if (save == false) {
      out_ << Tr(Text::Discarded) << "\n";
      return true;
    }
  }
  const bool saved = SavePending();
  AnnounceSave();
  if (!saved) {
    out_ << Tr(Text::Discarded) << "\n";
  }
  return saved;
}

// Saves the pending edit as quit and a move do; true when it was saved.
bool Console::SavePending() {
  const Enum_EditRecord result = rs_.UpdateRecord();
  if (result == E_Succeed) {
    return true;
  }
  if (result == E_Defeat) {
    NotSaved();
  } else {
    Fail(Tr(Text::NotSavedTakenBack));
  }
  return false;
}

bool Console::Pending() const {
  const Enum_EditStatus status = rs_.EditStatus();
  return status != E_Default && status != E_Query && status != E_Nothing;
}

void Console::Refused(bool refused, const std::string& command) {
  if (refused) {
    Fail(app::Say(Text::Refused, fmt::arg("command", command)));
  }
  Form();
}

void Console::Usage(const std::string& usage) {
  Fail(app::Say(Text::Usage, fmt::arg("usage", usage)));
}

void Console::Say(const std::string& text) { out_ << text << "\n"; }

void Console::Fail(const std::string& text) {
  failed_ = true;
  out_ << text << "\n";
}

Completion Console::Completions(const std::string& line) const {
  const std::vector<Word> words = SplitWords(line);
  const bool new_word =
      words.empty() || words.back().begin + words.back().text.size() < line.size();
  const size_t before = new_word ? words.size() : words.size() - 1;  // words already complete
  Completion completion{new_word ? line.size() : words.back().begin, {}};
  std::vector<std::string>& choices = completion.choices;
  if (before == 0) {
    for (const Command& command : kCommands) {
      choices.emplace_back(command.name);
    }
    choices.insert(choices.end(), {"quit", "exit"});
  } else if (Same(words[0].text, "set")) {
    // A shown name may hold blanks: all that follows "set" is the name so far.
    completion.from = words.size() > 1 ? words[1].begin : line.size();
    for (const auto& field : rs_) {
      choices.push_back(ShownName(*field));
    }
  } else if (before == 1 && Same(words[0].text, "select")) {
    choices = {"all", "invert", "none", "shift", "ctrl"};
  } else if (before == 1 && Same(words[0].text, "lang")) {
    choices = {"en", "zh"};
  } else if (before == 1 && Same(words[0].text, "list")) {
    choices = {"--csv"};
  }
  return completion;
}

}  // namespace varnel::app
