// The writer's answers to a save that met someone else's change or lost its
// connection while committing: the conflict shown to the client, the two ways
// of resolving it, and finding out, by key, whether a commit went through.
#include <utility>

#include "db/driver.h"
#include "editing/pending_edit.h"
#include "fields/value_formats.h"
#include "messages/error_trap.h"
#include "varnel/messages.h"
#include "writer/table_writer_engine.h"
#include "writer/writer_texts.h"

namespace varnel::internal {
namespace {

bool SameValue(const Variant& a, const Variant& b) {
  return a.IsBlank() ? b.IsBlank() : !b.IsBlank() && ValuesEqual(a, b);
}

// The row a conflict's edit is on: the modified row, or the deleted one's
// former place.
int32_t EditedRow(const PendingEdit& rs, Enum_EditStatus status) {
  return status == E_Modify ? rs.SavedRow() : rs.DeletedRow();
}

}  // namespace

// The written columns of the row whose keys hold those of Values, in the
// layout's order; nullopt when there is no such row, and always for a table
// without a key: its row is known only by values it no longer holds.
std::optional<std::vector<Variant>> TableWriterEngine::ReadRow(const Target& target,
                                                               const std::vector<Variant>& values) {
  if (target.layout.keys.empty()) {
    return std::nullopt;
  }
  const Statement select = SelectByKey(target.layout, *target.catalog, values);
  db::internal::Driver& driver = target.connection->Driver();
  const auto statement = driver.PrepareBound(driver.DatabaseSql(select.sql), select.params);
  if (!statement->Step()) {
    return std::nullopt;
  }
  std::vector<Variant> row;
  for (size_t i = 0; i < target.layout.written.size(); ++i) {
    row.push_back(statement->Value(static_cast<int32_t>(i)));
  }
  statement->Rewind();  // let the database go
  return row;
}

void TableWriterEngine::NoteConflict(const Target& target, const std::vector<RowChange>& changes) {
  conflict_.reset();
  const PendingEdit rs(recordset_);
  if (changes.empty() || changes[0].kind == ChangeKind::Insert) {
    return;
  }
  const RowChange& change = changes[0];
  const auto now = Quiet(std::optional<std::vector<Variant>>(), [&] {
    return std::optional<std::vector<Variant>>(ReadRow(target, change.before));
  });
  Conflict conflict{{rs.Status(),
                     change.kind == ChangeKind::Update ? change.row : 0,
                     !now,
                     target.layout.keys.empty(),
                     {}},
                    change};
  for (size_t i = 0; i < target.layout.written.size(); ++i) {
    const ColumnRef& column = target.layout.written[i];
    ConflictField field;
    field.Name = column.name;
    field.DisplayName = FieldLabel(rs, column.name);
    field.Loaded = change.before[column.field];
    field.Typed = change.kind == ChangeKind::Update ? change.after[column.field] : field.Loaded;
    // as a load shows it, so a day field's stored time is no change by others
    field.Database = now ? AsLoaded(*rs.Fields()[column.field], (*now)[i]) : Variant();
    field.ChangedByOthers = now && !SameValue(field.Loaded, field.Database);
    conflict.shown.Fields.push_back(std::move(field));
  }
  conflict_ = std::move(conflict);
}

std::optional<SaveConflict> TableWriterEngine::PendingConflict() const {
  const PendingEdit rs(recordset_);
  if (!conflict_ || rs.Status() != conflict_->shown.EditStatus ||
      (rs.Status() == E_Modify && rs.SavedRow() != conflict_->shown.Row)) {
    return std::nullopt;
  }
  return conflict_->shown;
}

// Mine over theirs: each row is found by its key alone as it is now; a row
// deleted meanwhile is inserted again, a deletion of it is already done.
std::vector<RowChange> TableWriterEngine::OverTheirs(const Target& target,
                                                     const std::vector<RowChange>& changes) {
  std::vector<RowChange> over;
  for (const RowChange& change : changes) {
    if (change.kind == ChangeKind::Insert) {
      over.push_back(change);
      continue;
    }
    if (target.layout.keys.empty() && change.kind == ChangeKind::Update) {
      // Their version cannot be found: writing ours as a new row could leave both.
      throw VbError(kRowNotLocatedError, WriterMessage(WriterText::KeylessKeepMine));
    }
    const auto now = ReadRow(target, change.before);
    if (!now) {
      if (change.kind == ChangeKind::Update) {
        over.push_back(RowChange{ChangeKind::Insert, change.row, {}, change.after});
      }
      continue;
    }
    RowChange found = change;
    for (size_t i = 0; i < target.layout.written.size(); ++i) {
      found.before[target.layout.written[i].field] = (*now)[i];
    }
    over.push_back(std::move(found));
  }
  return over;
}

// The changes known in the database are those of the pending edit: the same
// rows, deleted or not alike.
bool TableWriterEngine::MatchesPending(const std::vector<RowChange>& known,
                                       const std::vector<RowChange>& changes) const {
  if (known.size() != changes.size()) {
    return false;
  }
  for (size_t i = 0; i < known.size(); ++i) {
    const bool deleted = changes[i].kind == ChangeKind::Delete;
    if (deleted != (known[i].kind == ChangeKind::Delete) ||
        (!deleted && known[i].row != changes[i].row)) {
      return false;
    }
  }
  return true;
}

// An earlier commit's outcome was unknown: a change found written then is not
// written again; what the user changed since is written over it.
std::vector<RowChange> TableWriterEngine::SettleUnknownOutcome(
    const Target& target, const std::vector<RowChange>& changes,
    std::vector<GeneratedValue>& generated) {
  Unsettled& unsettled = *unsettled_;
  if (!unsettled.maybe.empty() &&
      WasWritten(target, unsettled.maybe[0])) {  // one transaction: all of it, or none
    unsettled.known = unsettled.maybe;
  }
  unsettled.maybe.clear();
  if (!MatchesPending(unsettled.known, changes)) {
    unsettled_.reset();  // without a key it cannot be told; another edit is pending
    return changes;
  }
  std::vector<RowChange> rest;
  for (size_t i = 0; i < changes.size(); ++i) {
    if (changes[i].kind == ChangeKind::Delete) {
      continue;
    }
    RowChange change{ChangeKind::Update, changes[i].row, unsettled.known[i].after,
                     changes[i].after};
    for (const ColumnRef& key : target.layout.keys) {
      if (change.after[key.field].IsBlank() && !change.before[key.field].IsBlank()) {
        change.after[key.field] = change.before[key.field];
        generated.push_back({change.row, key.field, change.before[key.field]});
      }
    }
    rest.push_back(std::move(change));
  }
  return rest;
}

int64_t TableWriterEngine::CountRows(const Target& target, const std::vector<Variant>& values) {
  const Statement count = CountMatching(target.layout, *target.catalog, values);
  db::internal::Driver& driver = target.connection->Driver();
  const auto statement = driver.PrepareBound(driver.DatabaseSql(count.sql), count.params);
  const int64_t rows = statement->Step() ? statement->Value(0).ToLongLong() : 0;
  statement->Rewind();
  return rows;
}

// A row of a table without a key is known by its values alone: the change was
// written when the number of rows holding them moved as it would.
bool TableWriterEngine::WasWritten(const Target& target, const RowChange& written) {
  if (target.layout.keys.empty()) {
    const bool removes = written.kind == ChangeKind::Delete;
    const int64_t now = CountRows(target, removes ? written.before : written.after);
    return removes ? now < written.matching : now > written.matching;
  }
  switch (written.kind) {
    case ChangeKind::Insert:
      return ReadRow(target, written.after).has_value();
    case ChangeKind::Delete:
      return !ReadRow(target, written.before).has_value();
    case ChangeKind::Update:
      break;
  }
  return CountRows(target, written.after) == 1;
}

Enum_EditRecord TableWriterEngine::KeepMine() {
  if (!PendingConflict()) {
    MdlProcess::ShowErr(LoadResString(101), kRowNotLocatedError,
                        WriterMessage(WriterText::NoConflict),
                        PendingEdit(recordset_).ErrorState());
    return E_Defeat;
  }
  const ModeScope scope(mode_, Mode::kKeepMine);
  return recordset_.UpdateRecord();
}

void TableWriterEngine::ShowDatabaseRow(const Target& target, int32_t row,
                                        const std::vector<Variant>& values) {
  const PendingEdit rs(recordset_);
  for (size_t i = 0; i < target.layout.written.size(); ++i) {
    ClsFields& field = *rs.Fields()[target.layout.written[i].field];
    if (field.SetValue(AsLoaded(field, values[i]), row)) {
      throw VbError(kRowNotLocatedError, WriterMessage(WriterText::Refused));
    }
  }
}

// Theirs: the edit is taken back layer by layer (UndoRecord); the row then
// shows what the database holds, or leaves the recordset as a deletion that
// is already done (UpdateRecord writes nothing for it).
Enum_EditRecord TableWriterEngine::TakeTheirs(const std::string& table,
                                              const std::shared_ptr<db::Connection>& connection) {
  const PendingEdit rs(recordset_);
  if (!PendingConflict()) {
    MdlProcess::ShowErr(LoadResString(101), kRowNotLocatedError,
                        WriterMessage(WriterText::NoConflict), rs.ErrorState());
    return E_Defeat;
  }
  const Conflict conflict = *conflict_;
  try {
    const Target target = TargetOf(table, connection);
    const auto now = ReadRow(target, conflict.change.before);
    const int32_t row = EditedRow(rs, conflict.shown.EditStatus);
    for (int layers = 0; rs.ChangesLoadedRow() && (now || rs.Status() == E_Modify); ++layers) {
      if (layers == 2 || recordset_.UndoRecord()) {
        return E_Defeat;  // a client refused the undo; it was told why
      }
    }
    if (now) {
      ShowDatabaseRow(target, row, *now);
    } else {
      if (rs.Status() == E_Default) {  // the modification is undone: the row goes too
        recordset_.AbsolutePosition(row);
        if (recordset_.DeleteRecord()) {
          return E_Defeat;
        }
      }
      const ModeScope scope(mode_, Mode::kTakeTheirs);
      const Enum_EditRecord answer = recordset_.UpdateRecord();
      if (answer != E_Succeed) {
        return answer;
      }
    }
    conflict_.reset();
    return E_Succeed;
  } catch (...) {
    ReportCurrentException(rs.ErrorState());
    return E_Defeat;
  }
}

}  // namespace varnel::internal
