#include "writer/table_writer_engine.h"

#include <strings.h>

#include <utility>

#include "db/driver.h"
#include "editing/pending_edit.h"
#include "messages/error_trap.h"
#include "varnel/messages.h"
#include "writer/writer_texts.h"

namespace varnel::internal {
namespace {

using db::internal::DatePrecision;

// A date field is compared at what its DateType keeps of a date.
std::optional<DatePrecision> DatePrecisionOf(const ClsFields& field) {
  if (field.FieldType != F_Date) {
    return std::nullopt;
  }
  switch (field.DateType) {
    case D_YMDHN:
      return DatePrecision::kMinute;
    case D_YMD:
      return DatePrecision::kDay;
    case D_HNS:
      return DatePrecision::kTimeSecond;
    case D_HN:
      return DatePrecision::kTimeMinute;
    default:
      return DatePrecision::kSecond;
  }
}

bool SameName(const std::string& a, const std::string& b) {
  return strcasecmp(a.c_str(), b.c_str()) == 0;
}

// Rolls the transaction back unless Commit was called: every way out of a
// write that did not finish leaves the database as it was.
class TransactionScope {
 public:
  explicit TransactionScope(db::Connection& connection) : connection_(connection) {
    connection_.BeginTrans();
  }
  ~TransactionScope() {
    if (!committed_) {
      try {
        connection_.RollbackTrans();
      } catch (const std::exception&) {
        // The database already ended the transaction; nothing is left to undo.
      }
    }
  }
  TransactionScope(const TransactionScope&) = delete;
  TransactionScope& operator=(const TransactionScope&) = delete;
  void Commit() {
    connection_.CommitTrans();
    committed_ = true;
  }

 private:
  db::Connection& connection_;
  bool committed_ = false;
};

}  // namespace

TableWriterEngine::TableWriterEngine(ClsRecordset& recordset, std::vector<std::string> key_columns)
    : recordset_(recordset), named_keys_(std::move(key_columns)) {}

std::string TableWriterEngine::TableOf(const std::string& table) const {
  const std::string& name = table.empty() ? recordset_.TableName : table;
  if (name.find_first_not_of(' ') == std::string::npos) {
    throw VbError(kItemNotFoundError, WriterMessage(WriterText::NoTable));
  }
  return name;
}

std::shared_ptr<db::Connection> TableWriterEngine::ConnectionOf(
    const std::shared_ptr<db::Connection>& given) {
  if (given) {
    return given;
  }
  if (recordset_.SFConnection && recordset_.SFConnection->State() > 0) {
    return recordset_.SFConnection;
  }
  if (!own_connection_ || own_connection_->State() == 0) {
    if (recordset_.ConnectString.empty()) {
      throw VbError(kItemNotFoundError, WriterMessage(WriterText::NoConnection));
    }
    auto connection = std::make_shared<db::Connection>();
    connection->Open(recordset_.ConnectString);
    own_connection_ = std::move(connection);
  }
  return own_connection_;
}

db::internal::TableCatalog& TableWriterEngine::CatalogOf(
    const std::shared_ptr<db::Connection>& connection) {
  if (keys_connection_.lock() != connection) {
    keys_connection_ = connection;
    primary_keys_.clear();
  }
  return connection->Driver().Catalog();
}

std::vector<std::string> TableWriterEngine::KeyColumns(
    const std::string& table, const std::shared_ptr<db::Connection>& connection) {
  if (!named_keys_.empty()) {
    return named_keys_;
  }
  const std::string name = TableOf(table);
  const std::shared_ptr<db::Connection> cn = ConnectionOf(connection);
  db::internal::TableCatalog& catalog = CatalogOf(cn);
  auto found = primary_keys_.find(name);
  if (found == primary_keys_.end()) {
    found = primary_keys_.emplace(name, catalog.PrimaryKey(name)).first;
  }
  return found->second;
}

WriteLayout TableWriterEngine::LayoutOf(const std::string& table,
                                        const std::vector<std::string>& keys) const {
  const PendingEdit rs(recordset_);
  WriteLayout layout;
  layout.table = table;
  for (size_t i = 0; i < rs.Fields().size(); ++i) {
    const ClsFields& field = *rs.Fields()[i];
    if (field.IsData && field.SaveToDB) {
      layout.written.push_back({i, field.Name, DatePrecisionOf(field)});
    }
  }
  for (const std::string& key : keys) {
    size_t i = 0;
    while (i < rs.Fields().size() &&
           !(rs.Fields()[i]->IsData && SameName(rs.Fields()[i]->Name, key))) {
      ++i;
    }
    if (i == rs.Fields().size()) {
      throw VbError(kItemNotFoundError, WriterMessage(WriterText::KeyNotField, key));
    }
    layout.keys.push_back({i, rs.Fields()[i]->Name, DatePrecisionOf(*rs.Fields()[i])});
  }
  return layout;
}

TableWriterEngine::Target TableWriterEngine::TargetOf(
    const std::string& table, const std::shared_ptr<db::Connection>& connection) {
  const std::string name = TableOf(table);
  Target target{ConnectionOf(connection), nullptr, {}};
  target.catalog = &CatalogOf(target.connection);
  target.layout = LayoutOf(name, KeyColumns(name, target.connection));
  MarkDayOnlyColumns(target.layout, *target.catalog);
  return target;
}

Enum_EditRecord TableWriterEngine::Write(const std::string& table,
                                         const std::shared_ptr<db::Connection>& connection) {
  last_statements_.clear();
  std::vector<RowChange> changes = PendingChanges(PendingEdit(recordset_));
  if (changes.empty() || mode_ == Mode::kTakeTheirs) {
    return E_Succeed;
  }
  std::optional<Target> target;
  SaveStage stage = SaveStage::kWriting;
  std::vector<RowChange> written;
  try {
    target = TargetOf(table, connection);
    CheckValues(*target, changes);
    std::vector<GeneratedValue> generated;
    if (unsettled_) {
      changes = SettleUnknownOutcome(*target, changes, generated);
    }
    if (mode_ == Mode::kKeepMine) {
      changes = OverTheirs(*target, changes);
    }
    {
      TransactionScope transaction(*target->connection);
      written = WriteChanges(*target, changes, generated);
      stage = SaveStage::kCommitting;
      transaction.Commit();
    }
    unsettled_.reset();
    conflict_.reset();
    ShowGenerated(generated);
    return E_Succeed;
  } catch (...) {
    return Refuse(target ? &*target : nullptr, changes, stage, std::move(written));
  }
}

// Refuses what the database cannot store, before anything is written: text
// with a NUL would be cut short where the database's text cannot hold one.
void TableWriterEngine::CheckValues(const Target& target,
                                    const std::vector<RowChange>& changes) const {
  if (target.connection->Driver().TextHoldsNul()) {
    return;
  }
  const PendingEdit rs(recordset_);
  for (const RowChange& change : changes) {
    if (change.kind == ChangeKind::Delete) {
      continue;
    }
    for (const ColumnRef& column : target.layout.written) {
      const Variant& value = change.after[column.field];
      if (value.IsString() && value.ToString().find('\0') != std::string::npos) {
        throw VbError(kInvalidUseOfNull,
                      WriterMessage(WriterText::TextNul, FieldLabel(rs, column.name)));
      }
    }
  }
}

// The transaction has ended (rolled back, or its commit failed): what the user
// is told, and what the writer keeps for the next save.
Enum_EditRecord TableWriterEngine::Refuse(const Target* target,
                                          const std::vector<RowChange>& changes, SaveStage stage,
                                          std::vector<RowChange> written) {
  const PendingEdit rs(recordset_);
  const SaveFailure failure = DescribeSaveFailure(rs, stage);
  if (failure.outcome_unknown) {
    if (!unsettled_) {
      unsettled_.emplace();
    }
    unsettled_->maybe = std::move(written);
  } else if (unsettled_ && unsettled_->known.empty()) {
    unsettled_.reset();  // rolled back: nothing of the edit is in the database
  }
  std::string text = failure.text;
  if (failure.conflict && target != nullptr) {
    NoteConflict(*target, changes);
    if (conflict_ && conflict_->shown.KeyLess) {
      text = WriterMessage(WriterText::KeylessConflict);
    } else if (conflict_ && conflict_->shown.RowDeleted) {
      text = WriterMessage(WriterText::RowDeleted);
    }
  }
  MdlProcess::ShowErr(LoadResString(101), failure.number, text, rs.ErrorState());
  return E_Defeat;
}

std::vector<RowChange> TableWriterEngine::WriteChanges(const Target& target,
                                                       const std::vector<RowChange>& changes,
                                                       std::vector<GeneratedValue>& generated) {
  std::vector<RowChange> written;
  for (RowChange change : changes) {
    if (target.layout.keys.empty()) {
      // counted first, so that after an unknown commit the count tells whether it was written
      change.matching =
          CountRows(target, change.kind == ChangeKind::Delete ? change.before : change.after);
    }
    switch (change.kind) {
      case ChangeKind::Insert:
        written.push_back(RunInsert(target, change, generated));
        break;
      case ChangeKind::Update:
        if (auto statement =
                UpdateStatement(target.layout, *target.catalog, change.before, change.after)) {
          RunIdentified(target, *statement);
        }
        written.push_back(change);
        break;
      case ChangeKind::Delete:
        RunIdentified(target, DeleteStatement(target.layout, *target.catalog, change.before));
        written.push_back(change);
        break;
    }
  }
  return written;
}

// An UPDATE or DELETE must find exactly the one row it was built from.
void TableWriterEngine::RunIdentified(const Target& target, const Statement& statement) {
  last_statements_.push_back(statement.sql);
  const int32_t affected = target.connection->Execute(statement.sql, statement.params);
  if (affected == 0) {
    throw RowConflictError();
  }
  if (affected > 1) {
    throw VbError(kRowNotLocatedError,
                  WriterMessage(WriterText::RowNotUnique, std::to_string(affected)));
  }
}

// A key left blank must be filled by the database; one it leaves NULL (a
// SQLite key that is not the rowid) is refused, inside the transaction, so
// nothing is written.
RowChange TableWriterEngine::RunInsert(const Target& target, const RowChange& change,
                                       std::vector<GeneratedValue>& generated) {
  const Statement statement = InsertStatement(target.layout, change.after);
  last_statements_.push_back(statement.sql);
  target.connection->Execute(statement.sql, statement.params);

  std::vector<const ColumnRef*> blank_keys;
  std::vector<std::string> quoted;
  for (const ColumnRef& key : target.layout.keys) {
    if (change.after[key.field].IsBlank()) {
      blank_keys.push_back(&key);
      quoted.push_back(QuoteColumn(key.name));
    }
  }
  RowChange written = change;
  if (blank_keys.empty()) {
    return written;
  }
  const auto values = target.catalog->InsertedRowKey(target.layout.table, quoted);
  for (size_t i = 0; values && i < blank_keys.size(); ++i) {
    if ((*values)[i].IsBlank()) {
      throw VbError(kInvalidUseOfNull,
                    WriterMessage(WriterText::EmptyKey,
                                  FieldLabel(PendingEdit(recordset_), blank_keys[i]->name)));
    }
    generated.push_back({change.row, blank_keys[i]->field, (*values)[i]});
    written.after[blank_keys[i]->field] = (*values)[i];
  }
  return written;
}

// After the commit: the screen shows the keys the database chose at once.
void TableWriterEngine::ShowGenerated(const std::vector<GeneratedValue>& generated) {
  const PendingEdit rs(recordset_);
  for (const GeneratedValue& value : generated) {
    if (value.field < rs.Fields().size()) {
      rs.Fields()[value.field]->SetValue(value.value, value.row);
    }
  }
}

}  // namespace varnel::internal
