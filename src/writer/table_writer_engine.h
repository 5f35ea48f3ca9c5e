// The engine behind varnel::TableWriter: turns a recordset's pending edit into
// statements and runs them in one transaction on the chosen connection. A
// save that fails keeps the edit (E_Defeat); one that met someone else's
// change keeps what it found for the client to resolve.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "db/table_catalog.h"
#include "varnel/db.h"
#include "varnel/enums.h"
#include "varnel/recordset.h"
#include "varnel/table_writer.h"
#include "writer/pending_change.h"
#include "writer/row_statements.h"
#include "writer/save_failure.h"

namespace varnel::internal {

class TableWriterEngine {
 public:
  TableWriterEngine(ClsRecordset& recordset, std::vector<std::string> key_columns);

  // Writes the pending change to `table` ("" = the recordset's TableName)
  // through `connection` (nullptr = the recordset's, else the engine's own).
  // E_Succeed, or E_Defeat after rolling back and telling the user.
  Enum_EditRecord Write(const std::string& table,
                        const std::shared_ptr<db::Connection>& connection);

  // The named key columns, or the table's primary key. Raises VbError when
  // the database cannot be reached.
  std::vector<std::string> KeyColumns(const std::string& table,
                                      const std::shared_ptr<db::Connection>& connection);

  const std::vector<std::string>& last_statements() const { return last_statements_; }

  // The conflict of the last save while its edit is still the pending one.
  std::optional<SaveConflict> PendingConflict() const;
  // Saves the pending edit over someone else's change (UpdateRecord, rows
  // found by key alone).
  Enum_EditRecord KeepMine();
  // Drops the pending edit and shows the row as the database holds it now.
  Enum_EditRecord TakeTheirs(const std::string& table,
                             const std::shared_ptr<db::Connection>& connection);

 private:
  struct Target {
    std::shared_ptr<db::Connection> connection;
    db::internal::TableCatalog* catalog;
    WriteLayout layout;
  };
  // A key value the database generated for an inserted row.
  struct GeneratedValue {
    int32_t row;
    size_t field;
    Variant value;
  };
  // How the next Write treats the pending edit.
  enum class Mode {
    kNormal,      // rows found by their values from before the edit
    kKeepMine,    // rows found by key alone, a row deleted meanwhile inserted again
    kTakeTheirs,  // nothing written: the database already holds what is wanted
  };
  // Sets a mode for one UpdateRecord, and back to kNormal on every way out.
  class ModeScope {
   public:
    ModeScope(Mode& mode, Mode value) : mode_(mode) { mode_ = value; }
    ~ModeScope() { mode_ = Mode::kNormal; }
    ModeScope(const ModeScope&) = delete;
    ModeScope& operator=(const ModeScope&) = delete;

   private:
    Mode& mode_;
  };
  struct Conflict {
    SaveConflict shown;
    RowChange change;  // the change that found no row
  };

  std::string TableOf(const std::string& table) const;
  std::shared_ptr<db::Connection> ConnectionOf(const std::shared_ptr<db::Connection>& given);
  // The catalog of Connection's database (its driver's); the primary keys read
  // through another connection are forgotten.
  db::internal::TableCatalog& CatalogOf(const std::shared_ptr<db::Connection>& connection);
  WriteLayout LayoutOf(const std::string& table, const std::vector<std::string>& keys) const;
  Target TargetOf(const std::string& table, const std::shared_ptr<db::Connection>& connection);

  void CheckValues(const Target& target, const std::vector<RowChange>& changes) const;
  // Runs the changes; returns them as written (inserts with their generated keys).
  std::vector<RowChange> WriteChanges(const Target& target, const std::vector<RowChange>& changes,
                                      std::vector<GeneratedValue>& generated);
  void RunIdentified(const Target& target, const Statement& statement);
  RowChange RunInsert(const Target& target, const RowChange& change,
                      std::vector<GeneratedValue>& generated);
  void ShowGenerated(const std::vector<GeneratedValue>& generated);
  Enum_EditRecord Refuse(const Target* target, const std::vector<RowChange>& changes,
                         SaveStage stage, std::vector<RowChange> written);

  // writer_conflicts.cpp
  std::optional<std::vector<Variant>> ReadRow(const Target& target,
                                              const std::vector<Variant>& values);
  void NoteConflict(const Target& target, const std::vector<RowChange>& changes);
  std::vector<RowChange> OverTheirs(const Target& target, const std::vector<RowChange>& changes);
  bool MatchesPending(const std::vector<RowChange>& known,
                      const std::vector<RowChange>& changes) const;
  std::vector<RowChange> SettleUnknownOutcome(const Target& target,
                                              const std::vector<RowChange>& changes,
                                              std::vector<GeneratedValue>& generated);
  bool WasWritten(const Target& target, const RowChange& written);
  // The number of rows that hold Values, found as an UPDATE finds its row.
  int64_t CountRows(const Target& target, const std::vector<Variant>& values);
  void ShowDatabaseRow(const Target& target, int32_t row, const std::vector<Variant>& values);

  ClsRecordset& recordset_;
  std::vector<std::string> named_keys_;
  std::shared_ptr<db::Connection> own_connection_;
  std::weak_ptr<db::Connection> keys_connection_;                 // where primary_keys_ were read
  std::map<std::string, std::vector<std::string>> primary_keys_;  // by table
  std::vector<std::string> last_statements_;
  Mode mode_ = Mode::kNormal;
  std::optional<Conflict> conflict_;
  // What earlier saves of the pending edit left in the database after a
  // COMMIT whose outcome was unknown. Kept until the edit is saved.
  struct Unsettled {
    std::vector<RowChange> known;  // in the database for certain: written over
    std::vector<RowChange> maybe;  // committed or not: looked up by key first
  };
  std::optional<Unsettled> unsettled_;
};

}  // namespace varnel::internal
