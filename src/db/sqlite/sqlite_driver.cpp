#include "db/sqlite/sqlite_driver.h"

#include <strings.h>

#include <cassert>
#include <filesystem>
#include <string>

#include "db/db_errors.h"
#include "db/sql_quote.h"
#include "db/sql_scanner.h"
#include "db/sqlite/sqlite_error.h"
#include "db/sqlite/sqlite_statement.h"
#include "db/sqlite/sqlite_table_catalog.h"
#include "db/sqlite/sqlite_values.h"

namespace varnel::db::internal {
namespace {

// Finalizes a statement of Execute on every path.
struct FinalizeGuard {
  sqlite3_stmt* statement = nullptr;
  ~FinalizeGuard() { sqlite3_finalize(statement); }
};

// SQLite reads [names] itself but has no escape for a "]" inside them: a
// name written [a]]b] is sent as `a]b` (never "a]b", which SQLite would take
// for text when no such column exists).
class SqliteTranslator final : public SqlTranslator {
 public:
  std::string ToDatabaseSql(std::string_view sql) override {
    if (sql.find("]]") == std::string_view::npos) {
      return std::string(sql);
    }
    std::string out;
    out.reserve(sql.size());
    for (const SqlToken& token : ScanSql(sql, SqlLexicon::kSqlite)) {
      const bool escaped_name = token.kind == SqlTokenKind::kBracketName &&
                                token.text.find("]]") != std::string_view::npos;
      out += escaped_name ? QuoteNameWith(UnquoteName(token.text), '`') : std::string(token.text);
    }
    return out;
  }
};

class SqliteDriver final : public Driver {
 public:
  explicit SqliteDriver(SqliteHandle handle) : handle_(std::move(handle)), catalog_(*this) {}

  int64_t Execute(std::string_view sql, const std::vector<Variant>& params) override;
  std::unique_ptr<Statement> Prepare(std::string_view sql) override {
    return std::make_unique<SqliteStatement>(handle_, sql);
  }
  std::unique_ptr<Statement> PrepareBound(std::string_view sql,
                                          const std::vector<Variant>& params) override {
    return std::make_unique<SqliteStatement>(handle_, sql, params);
  }
  void BeginTransaction() override {
    assert(!InTransaction());
    RunPlain("BEGIN IMMEDIATE", "beginning a transaction");
  }
  void CommitTransaction() override {
    assert(InTransaction());
    RunPlain("COMMIT", "committing the transaction");
  }
  void RollbackTransaction() override {
    assert(InTransaction());
    RunPlain("ROLLBACK", "rolling back the transaction");
  }
  bool InTransaction() const override { return sqlite3_get_autocommit(handle_.get()) == 0; }
  Dialect GetDialect() const override { return SqliteDialect(); }
  TableCatalog& Catalog() override { return catalog_; }
  SqlTranslator* Translator() override { return &translator_; }

 private:
  void RunPlain(const char* sql, std::string_view doing) {
    const int rc = sqlite3_exec(handle_.get(), sql, nullptr, nullptr, nullptr);
    if (rc != SQLITE_OK) {
      RaiseSqliteError(handle_.get(), rc, doing);
    }
  }
  size_t BindParams(sqlite3_stmt* statement, const std::vector<Variant>& params, size_t first,
                    bool last, std::string_view sql);
  int64_t RunToEnd(sqlite3_stmt* statement, std::string_view sql);

  SqliteHandle handle_;
  SqliteTableCatalog catalog_;
  SqliteTranslator translator_;
};

// Binds the statement's placeholders to Params from First on; returns how many
// it used. The last statement of the text must use up every parameter.
size_t SqliteDriver::BindParams(sqlite3_stmt* statement, const std::vector<Variant>& params,
                                size_t first, bool last, std::string_view sql) {
  const size_t wanted = static_cast<size_t>(sqlite3_bind_parameter_count(statement));
  const size_t left = params.size() - first;
  if (wanted > left || (last && wanted != left)) {
    RaiseProviderError("The statement has " + std::to_string(first + wanted) +
                       " placeholders but " + std::to_string(params.size()) +
                       " parameters were given while " + DescribeSql("executing", sql));
  }
  for (size_t i = 0; i < wanted; ++i) {
    const int rc = BindVariant(statement, static_cast<int>(i + 1), params[first + i]);
    if (rc != SQLITE_OK) {
      RaiseSqliteError(handle_.get(), rc, DescribeSql("binding the parameters of", sql));
    }
  }
  return wanted;
}

// Steps one statement to its end; returns the rows it inserted, changed or deleted.
int64_t SqliteDriver::RunToEnd(sqlite3_stmt* statement, std::string_view sql) {
  sqlite3* db = handle_.get();
  const int64_t before = sqlite3_total_changes64(db);
  int rc = SQLITE_ROW;
  while (rc == SQLITE_ROW) {
    rc = sqlite3_step(statement);
  }
  if (rc != SQLITE_DONE) {
    RaiseSqliteError(db, rc, DescribeSql("executing", sql));
  }
  // sqlite3_changes keeps the count of the last INSERT/UPDATE/DELETE, so a
  // statement that changed nothing (DDL, a SELECT) is told apart by the total.
  return sqlite3_total_changes64(db) == before ? 0 : sqlite3_changes64(db);
}

int64_t SqliteDriver::Execute(std::string_view sql, const std::vector<Variant>& params) {
  const std::string text(sql);
  const char* next = text.c_str();
  size_t used = 0;
  int64_t affected = 0;
  while (next != nullptr && *next != '\0') {
    FinalizeGuard guard;
    const char* tail = nullptr;
    const int rc = sqlite3_prepare_v2(handle_.get(), next, -1, &guard.statement, &tail);
    if (rc != SQLITE_OK) {
      RaiseSqliteError(handle_.get(), rc, DescribeSql("preparing", text));
    }
    if (guard.statement != nullptr) {
      used += BindParams(guard.statement, params, used, OnlyBlanksLeft(tail), text);
      affected += RunToEnd(guard.statement, text);
    }
    next = tail;
  }
  if (used != params.size()) {
    RaiseProviderError(std::to_string(params.size()) + " parameters were given but only " +
                       std::to_string(used) + " placeholders found while " +
                       DescribeSql("executing", text));
  }
  return affected;
}

// The Create key: whether a missing file is made a new, empty database.
bool AsksToCreate(const ConnectionSettings& settings) {
  const std::string value = settings.GetOr("create", "false");
  for (const char* yes : {"true", "yes", "1"}) {
    if (strcasecmp(value.c_str(), yes) == 0) {
      return true;
    }
  }
  for (const char* no : {"false", "no", "0"}) {
    if (strcasecmp(value.c_str(), no) == 0) {
      return false;
    }
  }
  RaiseProviderError("The connection string's Create='" + value +
                     "' is not understood: write Create=True or Create=False.");
}

SqliteHandle OpenHandle(const std::string& path, bool create) {
  sqlite3* raw = nullptr;
  const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | (create ? SQLITE_OPEN_CREATE : 0);
  const int rc = sqlite3_open_v2(path.c_str(), &raw, flags, nullptr);
  SqliteHandle handle(raw, &sqlite3_close_v2);
  const std::string doing = "opening the database '" + path + "'";
  if (rc == SQLITE_CANTOPEN && !create && !std::filesystem::exists(path)) {
    RaiseProviderError("The SQLite database file '" + path +
                       "' does not exist. Check the Data Source, or add Create=True to the "
                       "connection string to create a new, empty database there.");
  }
  if (rc != SQLITE_OK) {
    RaiseSqliteError(raw, rc, doing);
  }
  sqlite3_busy_timeout(raw, kSqliteBusyTimeoutMs);
  // Reading the schema now tells a file that is not a database at Open.
  const int check =
      sqlite3_exec(raw, "SELECT count(*) FROM sqlite_master", nullptr, nullptr, nullptr);
  if (check != SQLITE_OK) {
    RaiseSqliteError(raw, check, doing);
  }
  return handle;
}

}  // namespace

Dialect SqliteDialect() { return Dialect{.iso_dates = true, .dates_as_text = true}; }

std::unique_ptr<Driver> OpenSqliteDriver(const ConnectionSettings& settings,
                                         std::string_view /*user*/, std::string_view /*password*/) {
  const std::string path = settings.GetOr("data source");
  if (path.empty()) {
    RaiseProviderError("The connection string gives no Data Source (the SQLite database file).");
  }
  return std::make_unique<SqliteDriver>(OpenHandle(path, AsksToCreate(settings)));
}

}  // namespace varnel::db::internal
