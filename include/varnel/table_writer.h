// TableWriter: writes a recordset's pending row back to its table. Attach one
// to a recordset and every UpdateRecord that reaches the client
// (UserUpdateRecord) becomes an INSERT, UPDATE or DELETE in one transaction.
//
//   varnel::ClsRecordset rs;                    // configured and loaded
//   varnel::TableWriter writer(rs);             // keys: the table's primary key
//   rs.Modify("Qty", int32_t{4});
//   rs.UpdateRecord();  // UPDATE [Orders] SET [Qty]=? WHERE [OrderId]=? AND [Qty]=? ...
//
// What is written: the fields whose IsData and SaveToDB are both true, values
// bound as parameters. An UPDATE or DELETE finds its row by the key columns and
// by every written column's value from before the edit (GetModifyValue,
// GetDeleteValue), so a row that someone else changed or deleted meanwhile
// matches nothing. After an INSERT, key columns that were left blank receive
// the values the database generated.
//
// A save that does not go through keeps the edit: the transaction is rolled
// back, the user is told in plain words what happened and what to do (naming
// the field when the database says which), and the answer is E_Defeat, so the
// recordset keeps its pending status and every typed value and the next save
// tries again. That holds for a refused statement (NOT NULL, unique, check,
// foreign key), a busy, locked, read-only or full database, a lost connection,
// and a row someone else changed or deleted (a conflict, which the client
// resolves with ResolveKeepMine or ResolveTakeTheirs):
//
//   if (rs.UpdateRecord() == varnel::E_Defeat) {
//     if (auto conflict = writer.PendingConflict()) {
//       // show conflict->Fields: Database beside Typed; then one of
//       writer.ResolveKeepMine();     // write what the user typed over theirs
//       writer.ResolveTakeTheirs();   // drop the edit, show the row as stored
//     }
//   }
//
// When the connection is lost while committing, whether the row was written is
// unknown: the next save first looks the row up by its key, so a retry never
// writes it twice.
//
// A table without a key identifies a row by all its written values. A save
// that finds no row holding the loaded values is a conflict (PendingConflict,
// KeyLess and RowDeleted set, Database unknown), since a changed row cannot be
// told from a deleted one. ResolveTakeTheirs drops the edit and the row leaves
// the recordset (a refresh shows the table as it is now); ResolveKeepMine
// completes a deletion but refuses a modification, as writing it as a new row
// could leave both versions. After an unknown commit the next save counts the
// rows holding the written values, counted also before writing, so a retry
// never writes twice.
//
// The writer is an event sink: it must outlive its attachment and is detached
// from the recordset when destroyed. It must be destroyed before the recordset.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "varnel/db.h"
#include "varnel/enums.h"
#include "varnel/events.h"
#include "varnel/variant.h"
#include "varnel/export.h"

VARNEL_API_BEGIN

namespace varnel {

class ClsRecordset;
VARNEL_API_END  // engine types: declared here, never exported
namespace internal {
class TableWriterEngine;
}
VARNEL_API_BEGIN

/// One written field of a row in conflict, its three values side by side.
struct ConflictField {
  /// The field's Name: the column it is written to.
  std::string Name;
  /// The field's DisplayName, or its Name when it has none.
  std::string DisplayName;
  /// The value when the row was loaded (before the edit).
  Variant Loaded;
  /// The value the user typed: the value pending in the recordset (for a
  /// deletion, the loaded value).
  Variant Typed;
  /// The value the database holds now; Empty when the row was deleted.
  Variant Database;
  /// True when someone else changed this field: Database differs from Loaded.
  bool ChangedByOthers = false;
};

/// A save that met someone else's change to the same row: what the database
/// holds now beside what the user typed. The edit is still pending.
struct SaveConflict {
  /// The pending edit: E_Modify, E_Delete or E_ModifyDelete.
  Enum_EditStatus EditStatus = E_Modify;
  /// The recordset row the edit is on; 0 for a deletion (the row is not shown).
  int32_t Row = 0;
  /// True when someone else deleted the row: Database is Empty in every field.
  bool RowDeleted = false;
  /// True when the table has no key: no row holds the loaded values, so a row
  /// changed cannot be told from one deleted; RowDeleted is then true as well.
  bool KeyLess = false;
  /// Every written field, in the recordset's field order.
  std::vector<ConflictField> Fields;
};

/// Writes a recordset's pending row to its table (see the file comment).
class TableWriter : public ClsRecordsetEvents {
 public:
  /// Attaches to Recordset. KeyColumns name the columns that identify a row;
  /// empty: the table's primary key when the database reports one, otherwise
  /// every written column.
  explicit TableWriter(ClsRecordset& Recordset, std::vector<std::string> KeyColumns = {});
  /// Detaches from the recordset.
  ~TableWriter() override;
  TableWriter(const TableWriter&) = delete;
  TableWriter& operator=(const TableWriter&) = delete;

  /// The table written to; "" means the recordset's TableName.
  std::string TableName;
  /// The connection written through; nullptr means the recordset's SFConnection
  /// when it is open, else a connection of the writer's own, opened from the
  /// recordset's ConnectString on first use and kept.
  std::shared_ptr<db::Connection> Connection;

  /// The key columns in use (named, or discovered from the database); empty
  /// when rows are identified by all their written columns. Never throws.
  std::vector<std::string> KeyColumns();

  /// Writes the recordset's pending change now, as UserUpdateRecord does.
  /// Returns E_Succeed, or E_Defeat after rolling back and telling the user.
  Enum_EditRecord WritePendingRow();

  /// The statements of the last write, in the order they ran (for display).
  const std::vector<std::string>& LastStatements() const;

  /// The conflict the last save met, while that edit is still pending;
  /// nullopt when there is none (saved, undone, or another edit begun).
  std::optional<SaveConflict> PendingConflict() const;

  /// Resolves the pending conflict with the user's version: saves the edit
  /// (UpdateRecord) finding the row by its key alone, so the typed values
  /// replace theirs; a deleted row is inserted again, a deletion deletes the
  /// row as it is now. Returns UpdateRecord's answer (E_Succeed when written);
  /// E_Defeat, reported, when there is no conflict or the save fails again.
  Enum_EditRecord ResolveKeepMine();

  /// Resolves the pending conflict with their version: the edit is taken back
  /// (UndoRecord) and the row shows what the database holds now; a row they
  /// deleted leaves the recordset. Returns E_Succeed; E_Defeat, reported, when
  /// there is no conflict or the row cannot be read again.
  Enum_EditRecord ResolveTakeTheirs();

  /// The recordset's request: writes the pending row unless an earlier sink
  /// already answered something other than E_Succeed.
  void UserUpdateRecord(Enum_EditRecord& Update_Succeed) override;

 private:
  ClsRecordset& recordset_;
  int32_t cookie_ = 0;
  std::unique_ptr<internal::TableWriterEngine> engine_;
};

}  // namespace varnel

VARNEL_API_END
