// The console's own words, in English and Chinese side by side, chosen by the
// thread's UI language (the same choice as the library's messages).
//
//   out << Say(Text::RowOf, fmt::arg("row", 3), fmt::arg("rows", 300));
#pragma once

#include <fmt/format.h>

#include <string>
#include <utility>

namespace varnel::app {

enum class Text {
  Banner,
  RowOf,
  NoRows,
  Selected,
  ReadOnlyRow,
  Sum,
  SelectedSum,
  SumItem,
  Saved,
  NothingToSave,
  NotSavedKept,
  NotSavedTakenBack,
  NothingToUndo,
  UnknownCommand,
  UnknownField,
  Usage,
  NoSuchRow,
  Refused,
  QueryHint,
  RowsFound,
  QuitPending,
  Discarded,
  SampleCreated,
  Loading,
  CannotOpen,
  NoQueryMode,
  Help,
  CriteriaHeading,
  SavedRow,
  SavedNewRow,
  DeletedRow,
  DatabaseRefusedChange,
  DatabaseRefusedLoad,
  DetailsHint,
  NoDetails,
  ConfirmDelete,
  NotDeleted,
  AskSavePending,
  QueryFailed,
  Exported,
  CannotWrite,
  CommandsFailed,
  Bailed,
  PasswordPrompt,
  Language,
  AnswerYesNo,
  NoConflict,
  ConflictHint,
  ConflictChanged,
  ConflictDeleted,
  ConflictKeyless,
  ConflictColumns,
  ConflictChoices,
  // Edit statuses, in the order of Enum_EditStatus (E_Nothing last).
  StatusDefault,
  StatusQuery,
  StatusModify,
  StatusDelete,
  StatusAddNew,
  StatusCopy,
  StatusModifyDelete,
  StatusAddNewDelete,
  StatusCopyDelete,
  StatusNothing,
  Count,
};

// The text in the thread's UI language.
const char* Tr(Text id);

// The text with its {name} placeholders filled from fmt::arg(...) arguments.
template <class... Args>
std::string Say(Text id, Args&&... args) {
  return fmt::format(fmt::runtime(Tr(id)), std::forward<Args>(args)...);
}

}  // namespace varnel::app
