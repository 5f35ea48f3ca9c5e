// Resolving a save that met someone else's change: conflict shows their
// values beside the typed ones, keep-mine writes the typed row over theirs,
// take-theirs drops the edit and shows the row as it is now.
#include "console.h"
#include "form_view.h"
#include "text_width.h"
#include "texts.h"
#include "value_text.h"

namespace varnel::app {
namespace {

std::string Shown(ClsRecordset& rs, const ConflictField& field, const Variant& value) {
  const std::shared_ptr<ClsFields> definition = rs.Item(Variant(field.Name));
  return definition ? ValueText(*definition, value) : (value.IsBlank() ? "" : CStr(value));
}

}  // namespace

void Console::Conflict(const std::string&) {
  const std::optional<SaveConflict> conflict = writer_.PendingConflict();
  if (!conflict) {
    Fail(Tr(Text::NoConflict));
    return;
  }
  Say(Tr(conflict->KeyLess      ? Text::ConflictKeyless
         : conflict->RowDeleted ? Text::ConflictDeleted
                                : Text::ConflictChanged));
  size_t width = 0;
  for (const ConflictField& field : conflict->Fields) {
    width = std::max(width, DisplayWidth(field.DisplayName));
  }
  Say("    " + PadRight("", width) + "  " + Tr(Text::ConflictColumns));
  for (const ConflictField& field : conflict->Fields) {
    Say(std::string(field.ChangedByOthers ? "  ! " : "    ") + PadRight(field.DisplayName, width) +
        "  " + Shown(rs_, field, field.Typed) + "  |  " + Shown(rs_, field, field.Database));
  }
  Say(Tr(Text::ConflictChoices));
}

void Console::KeepMine(const std::string&) {
  if (!writer_.PendingConflict()) {
    Fail(Tr(Text::NoConflict));
    return;
  }
  writer_.ResolveKeepMine();
  Form();
}

void Console::TakeTheirs(const std::string&) {
  if (!writer_.PendingConflict()) {
    Fail(Tr(Text::NoConflict));
    return;
  }
  if (writer_.ResolveTakeTheirs() != E_Succeed) {
    failed_ = true;
  }
  Form();
}

}  // namespace varnel::app
