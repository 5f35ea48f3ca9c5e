#include "console.h"

#include <strings.h>

#include <charconv>
#include <optional>
#include <sstream>
#include <vector>

#include "form_view.h"
#include "grid_view.h"
#include "texts.h"

namespace varnel::app {
namespace {

std::string Trim(const std::string& text) {
  const size_t begin = text.find_first_not_of(" \t\r");
  if (begin == std::string::npos) {
    return "";
  }
  return text.substr(begin, text.find_last_not_of(" \t\r") - begin + 1);
}

std::vector<std::string> SplitWords(const std::string& text) {
  std::istringstream in(text);
  std::vector<std::string> words;
  for (std::string word; in >> word;) {
    words.push_back(word);
  }
  return words;
}

std::optional<int32_t> Number(const std::string& text) {
  int32_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) {
    return std::nullopt;
  }
  return value;
}

bool Same(const std::string& a, const std::string& b) {
  return strcasecmp(a.c_str(), b.c_str()) == 0;
}

// A value typed after the field: quotes around it are taken off; nothing at
// all empties the field.
Variant TypedValue(const std::string& text) {
  std::string value = Trim(text);
  if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
      value.back() == value.front()) {
    value = value.substr(1, value.size() - 2);
  }
  return value.empty() ? Variant::Null() : Variant(value);
}

}  // namespace

const Console::Command Console::kCommands[] = {
    {"first", nullptr, &Console::First},     {"prev", "previous", &Console::Previous},
    {"next", nullptr, &Console::Next},       {"last", nullptr, &Console::Last},
    {"goto", nullptr, &Console::Goto},       {"set", nullptr, &Console::Set},
    {"new", nullptr, &Console::New},         {"copy", nullptr, &Console::Copy},
    {"delete", nullptr, &Console::Delete},   {"save", nullptr, &Console::Save},
    {"undo", nullptr, &Console::Undo},       {"query", nullptr, &Console::Query},
    {"refine", nullptr, &Console::Refine},   {"run", nullptr, &Console::Run},
    {"cancel", nullptr, &Console::Cancel},   {"clear", nullptr, &Console::Clear},
    {"select", nullptr, &Console::Select},   {"list", nullptr, &Console::List},
    {"show", nullptr, &Console::Show},       {"sql", nullptr, &Console::Sql},
    {"refresh", nullptr, &Console::Refresh}, {"help", "?", &Console::Help},
};

void Console::Start() {
  out_ << Say(Text::Banner, fmt::arg("table", rs_.TableName), fmt::arg("rows", rs_.Rows())) << "\n";
  WriteForm(rs_, out_);
}

bool Console::Execute(const std::string& line) {
  const std::string text = Trim(line);
  if (text.empty() || text[0] == '#') {
    return true;
  }
  const size_t space = text.find_first_of(" \t");
  const std::string word = text.substr(0, space);
  const std::string argument = space == std::string::npos ? "" : Trim(text.substr(space));
  if (Same(word, "quit") || Same(word, "exit")) {
    if (!Pending() || quit_warned_ || rs_.UpdateRecord() == E_Succeed) {
      return false;
    }
    quit_warned_ = true;
    out_ << Tr(Text::QuitPending) << "\n";
    return true;
  }
  quit_warned_ = false;
  for (const Command& command : kCommands) {
    if (Same(word, command.name) || (command.alias != nullptr && Same(word, command.alias))) {
      (this->*command.run)(argument);
      return true;
    }
  }
  out_ << Say(Text::UnknownCommand, fmt::arg("command", word)) << "\n";
  return true;
}

std::vector<std::string> Console::Words() const {
  std::vector<std::string> words = {"quit", "exit", "shift", "ctrl", "all", "invert", "none"};
  for (const Command& command : kCommands) {
    words.emplace_back(command.name);
  }
  for (const auto& field : rs_) {
    words.push_back(field->Name);
  }
  return words;
}

void Console::Finish() {
  if (Pending()) {
    out_ << Tr(Text::Discarded) << "\n";
  }
}

bool Console::Pending() const {
  const Enum_EditStatus status = rs_.EditStatus();
  return status != E_Default && status != E_Query && status != E_Nothing;
}

void Console::Refused(bool refused, const std::string& command) {
  if (refused) {
    out_ << Say(Text::Refused, fmt::arg("command", command)) << "\n";
  }
  WriteForm(rs_, out_);
}

void Console::Usage(const std::string& usage) {
  out_ << Say(Text::Usage, fmt::arg("usage", usage)) << "\n";
}

void Console::First(const std::string&) {
  rs_.MoveFirst();
  WriteForm(rs_, out_);
}

void Console::Previous(const std::string&) {
  rs_.MovePrevious();
  WriteForm(rs_, out_);
}

void Console::Next(const std::string&) {
  rs_.MoveNext();
  WriteForm(rs_, out_);
}

void Console::Last(const std::string&) {
  rs_.MoveLast();
  WriteForm(rs_, out_);
}

void Console::Goto(const std::string& argument) {
  const std::optional<int32_t> row = Number(argument);
  if (!row) {
    Usage("goto <n>");
    return;
  }
  if (*row < 1 || *row > rs_.Rows()) {
    out_ << Say(Text::NoSuchRow, fmt::arg("row", *row)) << "\n";
    return;
  }
  rs_.AbsolutePosition(*row);
  WriteForm(rs_, out_);
}

// The field named by the longest run of leading words of Text (a name or a
// display name, in any case); Rest receives what follows it.
std::shared_ptr<ClsFields> Console::FindField(const std::string& text, std::string& rest) const {
  const std::vector<std::string> words = SplitWords(text);
  for (size_t count = words.size(); count > 0; --count) {
    std::string name = words[0];
    for (size_t i = 1; i < count; ++i) {
      name += " " + words[i];
    }
    for (const auto& field : rs_) {
      if (Same(field->Name, name) || Same(ShownName(*field), name)) {
        size_t at = 0;
        for (size_t i = 0; i < count; ++i) {
          at = text.find(words[i], at) + words[i].size();
        }
        rest = text.substr(at);
        return field;
      }
    }
  }
  return nullptr;
}

void Console::Set(const std::string& argument) {
  if (argument.empty()) {
    Usage("set <field> <value>");
    return;
  }
  std::string rest;
  const std::shared_ptr<ClsFields> field = FindField(argument, rest);
  if (!field) {
    out_ << Say(Text::UnknownField, fmt::arg("field", SplitWords(argument)[0])) << "\n";
    return;
  }
  rs_.Modify(Variant(field->Name), TypedValue(rest));
  WriteForm(rs_, out_);
}

void Console::New(const std::string&) { Refused(rs_.NewRecord(), "new"); }

void Console::Copy(const std::string&) { Refused(rs_.CopyRecord(), "copy"); }

void Console::Delete(const std::string&) { Refused(rs_.DeleteRecord(), "delete"); }

void Console::Save(const std::string&) {
  if (!Pending()) {
    out_ << Tr(Text::NothingToSave) << "\n";
    return;
  }
  switch (rs_.UpdateRecord()) {
    case E_Succeed:
      out_ << Tr(Text::Saved) << "\n";
      break;
    case E_Defeat:
      out_ << Tr(Text::NotSavedKept) << "\n";
      break;
    default:
      out_ << Tr(Text::NotSavedTakenBack) << "\n";
      break;
  }
  WriteForm(rs_, out_);
}

void Console::Undo(const std::string&) {
  if (!Pending()) {
    out_ << Tr(Text::NothingToUndo) << "\n";
    return;
  }
  rs_.UndoRecord();
  WriteForm(rs_, out_);
}

void Console::Query(const std::string&) {
  rs_.NewQuery();
  if (rs_.EditStatus() == E_Query) {
    out_ << Tr(Text::QueryHint) << "\n";
  }
  WriteForm(rs_, out_);
}

void Console::Refine(const std::string&) {
  rs_.RefineQuery();
  if (rs_.EditStatus() == E_Query) {
    out_ << Tr(Text::QueryHint) << "\n";
  }
  WriteForm(rs_, out_);
}

void Console::Run(const std::string&) {
  if (rs_.EditStatus() != E_Query) {
    out_ << Tr(Text::NoQueryMode) << "\n";
    return;
  }
  rs_.ExecuteQuery();
  if (rs_.EditStatus() != E_Query) {
    out_ << Say(Text::RowsFound, fmt::arg("rows", rs_.Rows())) << "\n";
  }
  WriteForm(rs_, out_);
}

void Console::Cancel(const std::string&) {
  if (rs_.EditStatus() != E_Query) {
    out_ << Tr(Text::NoQueryMode) << "\n";
    return;
  }
  rs_.CancelQuery();
  WriteForm(rs_, out_);
}

void Console::Clear(const std::string&) {
  rs_.ClearQuery();
  WriteForm(rs_, out_);
}

void Console::Select(const std::string& argument) {
  const std::vector<std::string> words = SplitWords(argument);
  const std::string what = words.empty() ? "" : words[0];
  const std::optional<int32_t> row = words.empty() ? std::nullopt : Number(words.back());
  const bool valid_row = row && *row >= 1 && *row <= rs_.Rows();
  if (words.size() == 1 && Same(what, "all")) {
    rs_.SelectAllRows();
  } else if (words.size() == 1 && Same(what, "invert")) {
    rs_.InvertSelectRows();
  } else if (words.size() == 1 && Same(what, "none")) {
    rs_.ClearSelectRows();
  } else if (words.size() == 1 && valid_row) {
    // A plain select is a click on the row: the row becomes current, then the
    // only one selected (and the anchor of a later shift).
    rs_.AbsolutePosition(*row);
    if (rs_.AbsolutePosition() == *row) {
      rs_.SysSetMutliSelectRows(true, *row, None);
    }
  } else if (words.size() == 2 && Same(what, "shift") && valid_row) {
    rs_.SysSetMutliSelectRows(true, *row, Shift);
  } else if (words.size() == 2 && Same(what, "ctrl") && valid_row) {
    rs_.SysSetMutliSelectRows(!(rs_.SelectState() == S_Multi && rs_.GetSelectRow(*row)), *row,
                              Ctrl);
  } else {
    Usage("select <n> | select shift <n> | select ctrl <n> | select all | invert | none");
    return;
  }
  WriteForm(rs_, out_);
}

void Console::List(const std::string& argument) {
  const std::optional<int32_t> count = argument.empty() ? 10 : Number(argument);
  if (!count || *count < 1) {
    Usage("list [<count>]");
    return;
  }
  if (rs_.EditStatus() == E_Query) {
    out_ << Tr(Text::QueryHint) << "\n";
    return;
  }
  WriteGrid(rs_, *count, out_);
}

void Console::Show(const std::string&) { WriteForm(rs_, out_); }

void Console::Sql(const std::string&) { out_ << ComposedSelect(rs_) << "\n"; }

void Console::Refresh(const std::string&) {
  rs_.RefreshDataSource();
  WriteForm(rs_, out_);
}

void Console::Help(const std::string&) { out_ << Tr(Text::Help) << "\n"; }

}  // namespace varnel::app
