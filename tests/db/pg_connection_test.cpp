// PostgreSQL connections: what the connection string and Open's arguments
// mean, and the messages of a connection that cannot be made.
#include <gtest/gtest.h>
#include <unistd.h>

#include "db/db_fixture.h"
#include "support/capture_ui.h"
#include "varnel/varnel.h"

namespace varnel::testing {
namespace {

constexpr const char* kPassword = "Pa55-never-shown";

// The test server's connection string with Key's value replaced by Value
// (the key added when absent).
std::string WithKey(const std::string& key, const std::string& value) {
  std::string text = TestPostgresServer();
  const size_t at = text.find(key + "=");
  if (at == std::string::npos) {
    return text + ";" + key + "=" + value;
  }
  const size_t end = text.find(';', at);
  return text.replace(at, (end == std::string::npos ? text.size() : end) - at, key + "=" + value);
}

struct RefusedCase {
  std::string connection;
  std::string password_argument;
  const char* says;
};

TEST(PostgresConnection, RefusedConnectionsSayWhyAndNeverShowThePassword) {
  const RefusedCase cases[] = {
      {"Provider=PostgreSQL;Host=127.0.0.1;Port=1;Database=shop;User ID=clerk;Password=" +
           std::string(kPassword),
       "", "Cannot connect to the PostgreSQL server at 127.0.0.1:1, database shop, user clerk: "},
      {"Provider=PostgreSQL;Host=127.0.0.1;Port=1;Database=shop", kPassword, "refused"},
      {WithKey("Database", "no_such_db") + kPassword, "", "database \"no_such_db\" does not exist"},
      {WithKey("Host", "host.invalid"), kPassword, "host.invalid"},
  };
  for (const RefusedCase& c : cases) {
    db::Connection cn;
    const VbError error = ErrorOf([&] { cn.Open(c.connection, "", c.password_argument); });
    EXPECT_EQ(error.Number(), -2147467259);
    EXPECT_NE(error.Description().find(c.says), std::string::npos) << error.Description();
    EXPECT_EQ(error.Description().find(kPassword), std::string::npos) << error.Description();
    EXPECT_EQ(cn.State(), 0);
  }
}

TEST(PostgresConnection, OpenArgumentsTakeThePlaceOfTheStringsUserAndSchemaPicksTheTables) {
  TestDatabase database(TestProvider::kPostgres);
  const std::string schema_string = database.ConnectionString("schema");
  const std::string schema = schema_string.substr(schema_string.rfind("Schema=") + 7);
  {
    db::Connection admin;
    admin.Open(schema_string);
    admin.Execute("CREATE TABLE Only_Here (x INTEGER)");
  }
  const std::string server = TestPostgresServer();
  const size_t user = server.find("User ID=") + 8;
  const std::string login = server.substr(user, server.find(';', user) - user);
  auto cn = std::make_shared<db::Connection>();
  cn->Open(WithKey("User ID", "nobody") + ";Schema=" + schema, login);
  db::Recordset rs;
  rs.Open("SELECT current_user, current_schema()", cn);
  EXPECT_EQ(rs.Fields()[0].Value(), Variant(login));
  EXPECT_EQ(rs.Fields()[1].Value(), Variant(schema));
  EXPECT_EQ(cn->Execute("INSERT INTO [only_here] VALUES (1)"), 1);
}

// A database whose default reads backslashes in '...' as escapes (the old
// PostgreSQL way): typed text must still never leave its quotes.
TEST(PostgresConnection, TypedTextNeverLeavesItsQuotesWhenTheDatabaseReadsBackslashEscapes) {
  const std::string name = "escapes_" + std::to_string(::getpid());
  db::Connection admin;
  admin.Open(TestPostgresServer());
  admin.Execute("DROP DATABASE IF EXISTS " + name + "; CREATE DATABASE " + name);
  admin.Execute("ALTER DATABASE " + name + " SET standard_conforming_strings = off");
  {
    auto cn = std::make_shared<db::Connection>();
    cn->Open(WithKey("Database", name));
    cn->Execute(
        "CREATE TABLE items (name TEXT); CREATE TABLE secrets (secret TEXT);"
        " INSERT INTO items VALUES ('a'); INSERT INTO secrets VALUES ('hunter2')");
    for (const char* client_sql : {"SELECT 1", "SET standard_conforming_strings = off"}) {
      cn->Execute(client_sql);  // a client's own SET does not outlast the next call
      ClsRecordset rs;
      rs.SFConnection = cn;
      rs.TableName = "items";
      auto field = rs.Add("name");
      field->IsData = true;
      field->FieldType = F_Text;
      field->QueryValue = "\\') UNION SELECT secret FROM secrets --";
      CaptureScope capture;
      EXPECT_FALSE(rs.InitDataSource()) << capture.LastText();
      EXPECT_EQ(rs.Rows(), 0) << client_sql;
    }
  }
  admin.Execute("DROP DATABASE " + name);
}

}  // namespace
}  // namespace varnel::testing
