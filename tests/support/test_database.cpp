#include "support/test_database.h"

#include <unistd.h>

#include <cctype>
#include <cstdlib>
#include <stdexcept>

#include "varnel/db.h"

namespace varnel::testing {
namespace {

// A schema name unique to this process and this database.
std::string NewSchemaName(const std::string& name) {
  static int counter = 0;
  std::string schema = "t" + std::to_string(getpid()) + "_" + std::to_string(++counter) + "_";
  for (char c : name) {
    const unsigned char byte = static_cast<unsigned char>(c);
    schema += std::isalnum(byte) ? static_cast<char>(std::tolower(byte)) : '_';
  }
  return schema;
}

void OnServer(const std::string& server, const std::string& sql) {
  db::Connection connection;
  connection.Open(server);
  connection.Execute("SET lock_timeout = '5s'");
  connection.Execute(sql);
}

}  // namespace

std::vector<TestProvider> AllTestProviders() {
  return {TestProvider::kSqlite, TestProvider::kPostgres};
}

void PrintTo(TestProvider provider, std::ostream* out) {
  *out << (provider == TestProvider::kSqlite ? "SQLite" : "PostgreSQL");
}

std::string TestProviderName(const ::testing::TestParamInfo<TestProvider>& info) {
  return info.param == TestProvider::kSqlite ? "SQLite" : "PostgreSQL";
}

std::string TestPostgresServer() {
  const char* server = std::getenv("VARNEL_TEST_PG");
  if (server == nullptr || *server == '\0') {
    throw std::runtime_error(
        "VARNEL_TEST_PG is not set: the PostgreSQL tests need a server. Run them through "
        "scripts/test.sh, which starts one, or set VARNEL_TEST_PG to the connection string "
        "of a server (\"Provider=PostgreSQL;Host=...;Port=...;Database=...;User ID=...\").");
  }
  return server;
}

TestDatabase::TestDatabase(TestProvider provider) : provider_(provider) {
  if (provider_ == TestProvider::kPostgres) {
    server_ = TestPostgresServer();
  }
}

TestDatabase::~TestDatabase() {
  for (const auto& [name, schema] : schemas_) {
    try {
      OnServer(server_, "DROP SCHEMA IF EXISTS \"" + schema + "\" CASCADE");
    } catch (const std::exception&) {
      // The server throws its schemas away with itself at the end of the run.
    }
  }
}

std::string TestDatabase::ConnectionString(const std::string& name) {
  if (provider_ == TestProvider::kSqlite) {
    return dir_.SqliteConnection(name);
  }
  auto [slot, made] = schemas_.try_emplace(name);
  if (made) {
    slot->second = NewSchemaName(name);
    OnServer(server_, "CREATE SCHEMA \"" + slot->second + "\"");
  }
  return server_ + ";Schema=" + slot->second;
}

}  // namespace varnel::testing
