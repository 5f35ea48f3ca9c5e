// The console's moving, editing and selecting commands.
#include <algorithm>

#include "command_words.h"
#include "console.h"
#include "field_hints.h"
#include "form_view.h"
#include "texts.h"

namespace varnel::app {
namespace {

constexpr int64_t kLargestRow = 2147483647;

// A value typed after the field: quotes around it are taken off; nothing at
// all empties the field; the yes/no words of both languages fill a yes/no field.
Variant TypedValue(const ClsFields& field, const std::string& text) {
  std::string value = Trim(text);
  if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
      value.back() == value.front()) {
    value = value.substr(1, value.size() - 2);
  }
  if (value.empty()) {
    return Variant::Null();
  }
  if (field.FieldType == F_Boolean) {
    if (const std::optional<bool> yes = YesNo(value)) {
      return Variant(*yes);
    }
  }
  return Variant(value);
}

}  // namespace

// A move saves a pending edit first; when that save is refused the move does
// not happen and the edit stays, which the person is told.
void Console::Move(bool failed) {
  if (failed && Pending()) {
    NotSaved();
  }
  Form();
}

void Console::First(const std::string&) { Move(rs_.MoveFirst()); }

void Console::Previous(const std::string&) { Move(rs_.MovePrevious()); }

void Console::Next(const std::string&) { Move(rs_.MoveNext()); }

void Console::Last(const std::string&) { Move(rs_.MoveLast()); }

void Console::Goto(const std::string& argument) {
  const std::optional<int64_t> row = NumberIn(argument, 1, kLargestRow);
  if (!row) {
    Usage("goto <n>   (1 .. " + std::to_string(std::max(rs_.Rows(), 1)) + ")");
    return;
  }
  if (*row > rs_.Rows()) {
    Fail(app::Say(Text::NoSuchRow, fmt::arg("row", *row)));
    return;
  }
  const bool pending = Pending();
  rs_.AbsolutePosition(static_cast<int32_t>(*row));
  Move(pending && rs_.AbsolutePosition() != *row);
}

// The field named by the longest run of leading words of Text (a name or a
// display name, in any case); Rest receives what follows it. Only as many
// words as the longest name has are tried, so a long value costs one pass.
std::shared_ptr<ClsFields> Console::FindField(const std::string& text, std::string& rest) const {
  size_t longest = 1;
  for (const auto& field : rs_) {
    for (const std::string& name : {field->Name, ShownName(*field)}) {
      longest = std::max(longest, SplitWords(name).size());
    }
  }
  const std::vector<Word> words = SplitWords(text.substr(0, std::min(text.size(), 4096ul)));
  for (size_t count = std::min(words.size(), longest); count > 0; --count) {
    const Word& last = words[count - 1];
    const size_t end = last.begin + last.text.size();
    const std::string name = text.substr(0, end);
    for (const auto& field : rs_) {
      if (Same(field->Name, name) || Same(ShownName(*field), name)) {
        rest = text.substr(end);
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
    Fail(app::Say(Text::UnknownField, fmt::arg("field", SplitWords(argument)[0].text)));
    return;
  }
  if (rs_.EditStatus() == E_Query) {
    SetCriterion(*field, Trim(rest));
    return;
  }
  if (rs_.Modify(Variant(field->Name), TypedValue(*field, rest)) || LastError().Kind != K_None) {
    failed_ = true;
    // The forms a field accepts help only when its value was the one refused
    // (not, say, the save of another row that the change had to make first).
    if (LastError().Field == field->Name) {
      if (const std::string hint = ValueHint(*field); !hint.empty()) {
        Say(hint);
      }
    }
  }
  Form();
}

void Console::New(const std::string&) { Refused(rs_.NewRecord(), "new"); }

void Console::Copy(const std::string&) { Refused(rs_.CopyRecord(), "copy"); }

void Console::Delete(const std::string&) {
  if (settings_.interactive && !settings_.assume_yes && ask_ && rs_.Rows() > 0 &&
      (rs_.EditStatus() == E_Default || rs_.EditStatus() == E_Modify)) {
    const std::optional<bool> yes =
        ask_(app::Say(Text::ConfirmDelete, fmt::arg("row", rs_.AbsolutePosition())));
    if (yes != true) {
      Say(Tr(Text::NotDeleted));
      return;
    }
  }
  Refused(rs_.DeleteRecord(), "delete");
}

void Console::Save(const std::string&) {
  if (!Pending()) {
    Say(Tr(Text::NothingToSave));
    return;
  }
  SavePending();
  Form();
}

void Console::Undo(const std::string&) {
  if (!Pending()) {
    Say(Tr(Text::NothingToUndo));
    return;
  }
  rs_.UndoRecord();
  Form();
}

void Console::Select(const std::string& argument) {
  const std::vector<Word> words = SplitWords(argument);
  const std::string what = words.empty() ? "" : words[0].text;
  const std::optional<int64_t> number =
      words.empty() ? std::nullopt : NumberIn(words.back().text, 1, rs_.Rows());
  const auto row = static_cast<int32_t>(number.value_or(0));
  if (words.size() == 1 && Same(what, "all")) {
    rs_.SelectAllRows();
  } else if (words.size() == 1 && Same(what, "invert")) {
    rs_.InvertSelectRows();
  } else if (words.size() == 1 && Same(what, "none")) {
    rs_.ClearSelectRows();
  } else if (words.size() == 1 && number) {
    // A plain select is a click on the row: the row becomes current, then the
    // only one selected (and the anchor of a later shift).
    rs_.AbsolutePosition(row);
    if (rs_.AbsolutePosition() == row) {
      rs_.SysSetMutliSelectRows(true, row, None);
    }
  } else if (words.size() == 2 && Same(what, "shift") && number) {
    rs_.SysSetMutliSelectRows(true, row, Shift);
  } else if (words.size() == 2 && Same(what, "ctrl") && number) {
    rs_.SysSetMutliSelectRows(!(rs_.SelectState() == S_Multi && rs_.GetSelectRow(row)), row, Ctrl);
  } else {
    Usage("select <n> | select shift <n> | select ctrl <n> | select all | invert | none");
    return;
  }
  Form();
}

}  // namespace varnel::app
