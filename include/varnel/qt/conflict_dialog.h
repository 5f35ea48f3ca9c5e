// The dialog for a save that met someone else's change to the same row: per
// field, what the user typed beside what the database holds now, and three
// ways on: write mine, take theirs, keep editing.
//
//   if (rs.UpdateRecord() == varnel::E_Defeat && writer.PendingConflict()) {
//     varnel::qt::ConflictDialog::Resolve(writer, &window);
//   }
#pragma once

#include <QDialog>

#include "varnel/export.h"
#include "varnel/varnel.h"

class QLabel;
class QPushButton;
class QTableWidget;

VARNEL_API_BEGIN

namespace varnel::qt {

/// Shows TableWriter's pending conflict and resolves it as the user chooses.
class ConflictDialog : public QDialog {
  Q_OBJECT

 public:
  /// What the user chose.
  enum Choice { kKeepEditing, kWriteMine, kTakeTheirs };

  /// A dialog over Conflict (object name "ConflictDialog"; buttons "WriteMine",
  /// "TakeTheirs", "KeepEditing"; the table "ConflictFields").
  ConflictDialog(const SaveConflict& Conflict, QWidget* Parent = nullptr);
  /// The button pressed; kKeepEditing when the dialog was closed.
  Choice Chosen() const { return chosen_; }

  /// Shows Writer's pending conflict, when there is one, and applies the
  /// choice: ResolveKeepMine, ResolveTakeTheirs, or nothing (the edit stays
  /// pending). Returns the resolution's answer; E_Defeat when kept or when there
  /// was no conflict.
  static Enum_EditRecord Resolve(TableWriter& Writer, QWidget* Parent = nullptr);

 private:
  QPushButton* Button(const char* name, const QString& text, Choice choice);
  Choice chosen_ = kKeepEditing;
};

}  // namespace varnel::qt

VARNEL_API_END
