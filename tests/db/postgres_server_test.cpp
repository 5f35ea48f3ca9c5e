// PostgreSQL connections: what the connection string and Open's arguments
// mean, and the messages of a connection that cannot be made. Then the server
// dies in the middle of a session (on a server of the test's own): the next
// call fails saying so, without the password, and the one after says the
// server cannot be reached; a transaction open then is lost and must be rolled
// back; what was committed before survives; the connection comes back by
// itself once the server does; and a recordset keeps working on its rows in
// memory meanwhile.
#include <gtest/gtest.h>
#include <unistd.h>

#include "db/db_fixture.h"
#include "support/capture_ui.h"
#include "support/pg_own_server.h"
#include "varnel/table_writer.h"
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
    EXPECT_TRUE(Holds(error.Description(), c.says));
    EXPECT_FALSE(Holds(error.Description(), kPassword));
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

class PostgresServerLoss : public ::testing::Test {
 protected:
  PostgresServerLoss() {
    const std::string base = server_.ConnectionString();
    connection_string_ = base.substr(0, base.rfind("Password=")) + "Password=" + kPassword;
    cn_->Open(connection_string_);
    cn_->Execute(
        "CREATE TABLE Items (\"Id\" INTEGER PRIMARY KEY, \"Name\" VARCHAR(20), \"Qty\" INTEGER);"
        "INSERT INTO Items VALUES (1, 'Bolt', 10), (2, 'Nut', 20), (3, 'Washer', 30)");
  }

  // The Qty of every row, read on a new connection.
  std::vector<Variant> StoredQty() {
    auto fresh = std::make_shared<db::Connection>();
    fresh->Open(connection_string_);
    auto rs = std::make_shared<db::Recordset>();
    rs->Open("SELECT [Qty] FROM Items ORDER BY [Id]", fresh);
    return rs->GetRows()[0];
  }

  PgOwnServer server_;
  std::string connection_string_;
  std::shared_ptr<db::Connection> cn_ = std::make_shared<db::Connection>();
};

TEST_F(PostgresServerLoss, AnOpenTransactionIsLostWhileARecordsetKeepsItsRowsAndPendingEdit) {
  cn_->Execute("UPDATE Items SET [Qty] = 11 WHERE [Id] = 1");
  cn_->BeginTrans();
  cn_->Execute("UPDATE Items SET [Qty] = 99");
  server_.Kill();
  const VbError lost = ErrorOf([&] { cn_->Execute("DELETE FROM Items"); });
  EXPECT_TRUE(Holds(lost.Description(), "The transaction that was open is lost"));
  server_.Restart();
  EXPECT_TRUE(
      Holds(ErrorOf([&] { cn_->Execute("DELETE FROM Items"); }).Description(), "Roll it back"))
      << "nothing runs outside the transaction the client believes open";
  EXPECT_TRUE(Holds(ErrorOf([&] { cn_->CommitTrans(); }).Description(), "Nothing of it was kept"));
  EXPECT_EQ(StoredQty(), Longs({11, 20, 30}));
  cn_->BeginTrans();
  cn_->Execute("UPDATE Items SET [Qty] = 33 WHERE [Id] = 3");
  server_.Kill();
  const VbError dropped =
      ErrorOf([&] { cn_->Execute("DELETE FROM [Items] WHERE [Qty] > ?", {Variant(int32_t{0})}); });
  EXPECT_EQ(dropped.Number(), -2147467259);
  EXPECT_TRUE(Holds(dropped.Description(),
                    "The connection to the PostgreSQL server was lost while executing "
                    "'DELETE FROM \"items\" WHERE \"Qty\" > ?'"));
  EXPECT_FALSE(Holds(dropped.Description(), kPassword));
  cn_->RollbackTrans();
  server_.Restart();
  EXPECT_EQ(StoredQty(), Longs({11, 20, 30}));
  cn_->Close();

  // A recordset saving through a TableWriter on its own connection: the user
  // is told in plain words, then in the connection's own, which never show
  // the password; the rows stay in memory and the edit waits for the server.
  CaptureScope ui;
  ClsRecordset rs;
  rs.ConnectString = connection_string_;
  ASSERT_FALSE(rs.ReadTableFields("Items")) << ui.LastText();
  rs.DefaultOrderBy = "[Id]";
  ASSERT_FALSE(rs.InitDataSource());
  TableWriter writer(rs);
  ASSERT_FALSE(rs.Modify("Qty", Variant(int32_t{12})));
  ASSERT_EQ(rs.UpdateRecord(), E_Succeed) << ui.LastText();

  server_.Kill();
  ASSERT_FALSE(rs.MoveNext());
  ASSERT_FALSE(rs.Modify("Qty", Variant(int32_t{22})));
  EXPECT_EQ(rs.UpdateRecord(), E_Defeat);
  EXPECT_EQ(ui.LastText().rfind("The database cannot be reached", 0), 0u) << ui.LastText();
  EXPECT_TRUE(Holds(ui.LastText(), "The connection to the PostgreSQL server was lost while "));
  EXPECT_FALSE(Holds(ui.LastText(), kPassword));
  EXPECT_EQ(rs.UpdateRecord(), E_Defeat);
  EXPECT_TRUE(Holds(ui.LastText(), "Cannot connect to the PostgreSQL server at 127.0.0.1:"))
      << "the next call tries to connect again";
  EXPECT_TRUE(Holds(ui.LastText(), "could not be opened again for beginning a transaction"));
  EXPECT_FALSE(Holds(ui.LastText(), kPassword));
  EXPECT_EQ(rs.SFConnection->State(), 1) << "the connection stays open until the client closes it";
  EXPECT_EQ(rs.EditStatus(), E_Modify) << "the edit waits to be saved again";
  EXPECT_EQ(rs.Rows(), 3);
  EXPECT_EQ(rs.Item("Qty")->GetValue(1), Variant(int32_t{12}));
  EXPECT_EQ(rs.Item("Qty")->GetValue(2), Variant(int32_t{22}));
  EXPECT_EQ(rs.Item("Name")->GetValue(3), Variant("Washer"));

  server_.Restart();
  EXPECT_EQ(rs.UpdateRecord(), E_Succeed) << ui.LastText();
  EXPECT_EQ(rs.EditStatus(), E_Default);
  EXPECT_EQ(StoredQty(), Longs({12, 22, 30}));
  EXPECT_FALSE(rs.RefreshDataSource());
  EXPECT_EQ(rs.Rows(), 3);
}

}  // namespace
}  // namespace varnel::testing
