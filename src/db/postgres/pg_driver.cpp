#include "db/postgres/pg_driver.h"

#include <cassert>
#include <cstdlib>
#include <initializer_list>
#include <optional>
#include <string>

#include "db/db_errors.h"
#include "db/postgres/pg_catalog.h"
#include "db/postgres/pg_error.h"
#include "db/postgres/pg_session.h"
#include "db/postgres/pg_statement.h"
#include "db/postgres/pg_table_catalog.h"
#include "db/postgres/pg_values.h"
#include "db/sql_scanner.h"

namespace varnel::db::internal {
namespace {

// One statement of a script with its placeholders numbered for the server.
struct NumberedStatement {
  std::string text;
  size_t placeholders = 0;
};

NumberedStatement NumberPlaceholders(std::string_view statement) {
  NumberedStatement numbered;
  for (const SqlToken& token : ScanSql(statement)) {
    if (token.kind == SqlTokenKind::kPlaceholder) {
      numbered.text += "$" + std::to_string(++numbered.placeholders);
    } else {
      numbered.text += token.text;
    }
  }
  return numbered;
}

// A statement that changes what tables and columns exist.
bool ChangesSchema(const PGresult* result) {
  const std::string_view status = PQcmdStatus(const_cast<PGresult*>(result));
  return status.starts_with("CREATE") || status.starts_with("ALTER") || status.starts_with("DROP");
}

class PgDriver final : public Driver {
 public:
  explicit PgDriver(std::shared_ptr<PgSession> session)
      : session_(std::move(session)), translator_(*session_), catalog_(*this) {}

  int64_t Execute(std::string_view sql, const std::vector<Variant>& params) override;
  std::unique_ptr<Statement> Prepare(std::string_view sql) override {
    return std::make_unique<PgStatement>(session_, std::string(sql));
  }
  std::unique_ptr<Statement> PrepareBound(std::string_view sql,
                                          const std::vector<Variant>& params) override;
  void BeginTransaction() override {
    assert(!InTransaction());
    session_->Begin();
  }
  void CommitTransaction() override {
    assert(InTransaction());
    session_->Commit();
  }
  void RollbackTransaction() override {
    assert(InTransaction());
    session_->Rollback();
  }
  bool InTransaction() const override { return session_->InTransaction(); }
  bool TextHoldsNul() const override { return false; }  // libpq sends C strings
  Dialect GetDialect() const override { return PostgresDialect(); }
  SqlTranslator* Translator() override { return &translator_; }
  TableCatalog& Catalog() override { return catalog_; }

 private:
  std::shared_ptr<PgSession> session_;
  PgTranslator translator_;
  PgTableCatalog catalog_;
};

int64_t PgDriver::Execute(std::string_view sql, const std::vector<Variant>& params) {
  const std::string doing = DescribeSql("executing", sql);
  std::vector<std::string> statements;
  std::vector<std::vector<std::optional<std::string>>> bound;
  size_t used = 0;
  for (std::string_view statement : SplitStatements(sql)) {
    NumberedStatement numbered = NumberPlaceholders(statement);
    if (numbered.placeholders > params.size() - used) {
      RaiseProviderError("The statement has more placeholders than the " +
                         std::to_string(params.size()) + " parameters given while " + doing + ".");
    }
    std::vector<std::optional<std::string>> texts;
    for (size_t i = 0; i < numbered.placeholders; ++i) {
      texts.push_back(PgParamText(params[used++]));
    }
    statements.push_back(std::move(numbered.text));
    bound.push_back(std::move(texts));
  }
  if (used != params.size()) {
    RaiseProviderError(std::to_string(params.size()) + " parameters were given but only " +
                       std::to_string(used) + " placeholders found while " + doing + ".");
  }
  int64_t affected = 0;
  for (const PgResult& result : session_->RunAll(statements, bound, doing)) {
    if (ChangesSchema(result.get())) {
      translator_.SchemaChanged();
    }
    const char* rows = PQcmdTuples(result.get());
    if (PQresultStatus(result.get()) == PGRES_COMMAND_OK && rows[0] != '\0') {
      affected += std::atoll(rows);
    }
  }
  return affected;
}

std::unique_ptr<Statement> PgDriver::PrepareBound(std::string_view sql,
                                                  const std::vector<Variant>& params) {
  NumberedStatement numbered = NumberPlaceholders(sql);
  if (numbered.placeholders != params.size()) {
    RaiseProviderError(std::to_string(params.size()) + " parameters were given for " +
                       DescribeSql("preparing", sql) + ".");
  }
  std::vector<std::optional<std::string>> texts;
  for (const Variant& param : params) {
    texts.push_back(PgParamText(param));
  }
  return std::make_unique<PgStatement>(session_, std::move(numbered.text), std::move(texts));
}

// libpq's options: each value's blanks and backslashes escaped by a backslash.
std::string OptionValue(std::string_view value) {
  std::string escaped;
  for (char c : value) {
    if (c == ' ' || c == '\\') {
      escaped += '\\';
    }
    escaped += c;
  }
  return escaped;
}

// The first of Keys that the connection string gives.
std::optional<std::string> FirstOf(const ConnectionSettings& settings,
                                   std::initializer_list<std::string_view> keys) {
  for (std::string_view key : keys) {
    if (std::optional<std::string> value = settings.Get(key)) {
      return value;
    }
  }
  return std::nullopt;
}

PgConnectParams ConnectParams(const ConnectionSettings& settings, std::string_view user,
                              std::string_view password) {
  PgConnectParams params;
  const auto add = [&](const char* keyword, std::optional<std::string> value) {
    if (value && !value->empty()) {
      params.keywords.emplace_back(keyword);
      params.values.push_back(std::move(*value));
    }
  };
  const std::optional<std::string> host = FirstOf(settings, {"host", "server"});
  const std::optional<std::string> port = settings.Get("port");
  const std::optional<std::string> database = FirstOf(settings, {"database", "initial catalog"});
  std::optional<std::string> login = FirstOf(settings, {"user id", "uid", "user"});
  if (!user.empty()) {
    login = std::string(user);
  }
  params.password = password.empty() ? FirstOf(settings, {"password", "pwd"}).value_or("")
                                     : std::string(password);
  add("host", host);
  add("port", port);
  add("dbname", database);
  add("user", login);
  add("password", params.password);
  add("connect_timeout", settings.Get("connect timeout").value_or("10"));
  add("sslmode", settings.Get("ssl mode"));
  add("client_encoding", std::string("UTF8"));
  add("application_name", std::string("varnel"));
  // Dates as ISO text (month first when ambiguous), money without a locale's
  // symbols, backslashes in '...' as themselves, and the schema the client names.
  std::string options =
      "-c DateStyle=ISO,MDY -c lc_monetary=C -c extra_float_digits=1"
      " -c standard_conforming_strings=on";
  if (std::optional<std::string> schema = settings.Get("schema"); schema && !schema->empty()) {
    options += " -c search_path=" + OptionValue(QuotePgName(*schema));
  }
  add("options", options);
  params.where = host.value_or("the local server") + (port ? ":" + *port : "") + ", database " +
                 database.value_or("(default)") + ", user " + login.value_or("(default)");
  return params;
}

}  // namespace

Dialect PostgresDialect() { return Dialect{.iso_dates = true}; }

std::unique_ptr<Driver> OpenPostgresDriver(const ConnectionSettings& settings,
                                           std::string_view user, std::string_view password) {
  return std::make_unique<PgDriver>(
      std::make_shared<PgSession>(ConnectParams(settings, user, password)));
}

}  // namespace varnel::db::internal
