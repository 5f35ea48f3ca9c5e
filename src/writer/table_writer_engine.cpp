#include "writer/table_writer_engine.h"

#include <strings.h>

#include <utility>

#include "db/driver.h"
#include "messages/error_trap.h"
#include "recordset/recordset_state.h"
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
  const RecordsetState& rs = RecordsetAccess::State(recordset_);
  WriteLayout layout;
  layout.table = table;
  for (size_t i = 0; i < rs.fields.size(); ++i) {
    const ClsFields& field = *rs.fields[i];
    if (field.IsData && field.SaveToDB) {
      layout.written.push_back({i, field.Name, DatePrecisionOf(field)});
    }
  }
  for (const std::string& key : keys) {
    size_t i = 0;
    while (i < rs.fields.size() && !(rs.fields[i]->IsData && SameName(rs.fields[i]->Name, key))) {
      ++i;
    }
    if (i == rs.fields.size()) {
      throw VbError(kItemNotFoundError, WriterMessage(WriterText::KeyNotField, key));
    }
    layout.keys.push_back({i, rs.fields[i]->Name, DatePrecisionOf(*rs.fields[i])});
  }
  return layout;
}

Enum_EditRecord TableWriterEngine::Write(const std::string& table,
                                         const std::shared_ptr<db::Connection>& connection) {
  last_statements_.clear();
  const std::vector<RowChange> changes = PendingChanges(RecordsetAccess::State(recordset_));
  if (changes.empty()) {
    return E_Succeed;
  }
  try {
    const std::string name = TableOf(table);
    Target target{ConnectionOf(connection), nullptr, {}};
    target.catalog = &CatalogOf(target.connection);
    target.layout = LayoutOf(name, KeyColumns(name, target.connection));
    MarkDayOnlyColumns(target.layout, *target.catalog);
    std::vector<GeneratedValue> generated;
    {
      TransactionScope transaction(*target.connection);
      WriteChanges(target, changes, generated);
      transaction.Commit();
    }
    ShowGenerated(generated);
    return E_Succeed;
  } catch (...) {
    ReportCurrentException(recordset_.SysErrState);
    return E_OtherErr;
  }
}

void TableWriterEngine::WriteChanges(const Target& target, const std::vector<RowChange>& changes,
                                     std::vector<GeneratedValue>& generated) {
  for (const RowChange& change : changes) {
    switch (change.kind) {
      case ChangeKind::Insert:
        RunInsert(target, change, generated);
        break;
      case ChangeKind::Update:
        if (auto statement =
                UpdateStatement(target.layout, *target.catalog, change.before, change.after)) {
          RunIdentified(target, *statement);
        }
        break;
      case ChangeKind::Delete:
        RunIdentified(target, DeleteStatement(target.layout, *target.catalog, change.before));
        break;
    }
  }
}

// An UPDATE or DELETE must find exactly the one row it was built from.
void TableWriterEngine::RunIdentified(const Target& target, const Statement& statement) {
  last_statements_.push_back(statement.sql);
  const int32_t affected = target.connection->Execute(statement.sql, statement.params);
  if (affected == 0) {
    throw VbError(kRowNotLocatedError, WriterMessage(WriterText::RowChanged));
  }
  if (affected > 1) {
    throw VbError(kRowNotLocatedError,
                  WriterMessage(WriterText::RowNotUnique, std::to_string(affected)));
  }
}

void TableWriterEngine::RunInsert(const Target& target, const RowChange& change,
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
  if (blank_keys.empty()) {
    return;
  }
  const auto values = target.catalog->InsertedRowKey(target.layout.table, quoted);
  for (size_t i = 0; values && i < blank_keys.size(); ++i) {
    generated.push_back({change.row, blank_keys[i]->field, (*values)[i]});
  }
}

// After the commit: the screen shows the keys the database chose at once.
void TableWriterEngine::ShowGenerated(const std::vector<GeneratedValue>& generated) {
  const RecordsetState& rs = RecordsetAccess::State(recordset_);
  for (const GeneratedValue& value : generated) {
    if (value.field < rs.fields.size()) {
      rs.fields[value.field]->SetValue(value.value, value.row);
    }
  }
}

}  // namespace varnel::internal
