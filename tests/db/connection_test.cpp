#include <gtest/gtest.h>

#include <chrono>
#include <fstream>

#include "db/connection_string.h"
#include "db/db_fixture.h"
#include "db/dialect.h"

namespace varnel::testing {
namespace {

constexpr int32_t kProviderError = -2147467259;

TEST(ConnectionString, KeysIgnoreCaseValuesAreTrimmedAndTheProviderPicksTheDialect) {
  const auto s = db::internal::ConnectionSettings::Parse(
      " provider = SQLite ;DATA SOURCE= /tmp/a b.db ; ;Mode=\"x;y\"\"z\";User ID='';");
  EXPECT_EQ(s.Get("Provider"), "SQLite");
  EXPECT_EQ(s.Get("data source"), "/tmp/a b.db");
  EXPECT_EQ(s.Get("mode"), "x;y\"z");
  EXPECT_EQ(s.Get("user id"), "");
  EXPECT_EQ(s.Get("password"), std::nullopt);
  EXPECT_TRUE(db::internal::DialectOf("Provider=sqlite;Data Source=x").iso_dates);
  EXPECT_TRUE(db::internal::DialectOf("Provider=PostgreSQL;Host=x").iso_dates);
  EXPECT_FALSE(db::internal::DialectOf("Provider=Other;Data Source=x").iso_dates);
  EXPECT_FALSE(db::internal::DialectOf("garbage").iso_dates);
}

TEST(ConnectionOpen, CreatesTheFileAndReportsTheState) {
  TempDir dir;
  db::Connection cn;
  EXPECT_EQ(cn.State(), 0);
  cn.Open(dir.SqliteConnection("new.db"));
  EXPECT_EQ(cn.State(), 1);
  EXPECT_TRUE(std::filesystem::exists(dir.path() / "new.db"));
  EXPECT_EQ(ErrorOf([&] { cn.Open(dir.SqliteConnection("new.db")); }).Number(), 3705);
  cn.Close();
  EXPECT_EQ(cn.State(), 0);
  EXPECT_EQ(ErrorOf([&] { cn.Close(); }).Number(), 3704);
  EXPECT_EQ(ErrorOf([&] { cn.Execute("SELECT 1"); }).Number(), 3704);
}

struct OpenFailure {
  std::string connection;
  int32_t number;
  std::vector<std::string> says;  // parts of the description
};

TEST(ConnectionOpen, ConnectionsThatCannotBeMadeSayWhy) {
  TempDir dir;
  std::ofstream(dir.path() / "notes.db") << std::string(4096, 'x');
  const std::string missing = (dir.path() / "no-such-dir" / "a.db").string();
  const std::string absent = (dir.path() / "mistyped.db").string();
  const std::string not_found = "Provider cannot be found. It may not be properly installed.";
  const OpenFailure cases[] = {
      {"Provider=Nope;Data Source=x.db", 3706, {not_found}},
      {"Data Source=x.db", 3706, {not_found}},
      {"Provider=SQLite;Create=True;Data Source=" + missing,
       kProviderError,
       {"unable to open database file", missing}},
      {"Provider=SQLite;Data Source=" + absent,
       kProviderError,
       {absent, "does not exist", "Create=True"}},
      {"Provider=SQLite;Create=maybe;Data Source=" + absent, kProviderError, {"Create='maybe'"}},
      {dir.SqliteConnection("notes.db"), kProviderError, {"not a database"}},
      {"Provider=SQLite", kProviderError, {"no Data Source"}},
      {"Provider=SQLite;oops", kProviderError, {"'oops'"}},
      {"Provider=SQLite;Data Source='a.db", kProviderError, {"unterminated"}},
  };
  for (const OpenFailure& c : cases) {
    db::Connection cn;
    const VbError error = ErrorOf([&] { cn.Open(c.connection); });
    EXPECT_EQ(error.Number(), c.number) << c.connection;
    for (const std::string& part : c.says) {
      EXPECT_NE(error.Description().find(part), std::string::npos) << error.Description();
    }
    EXPECT_EQ(cn.State(), 0);
  }
  EXPECT_FALSE(std::filesystem::exists(absent));  // a mistyped path never becomes a database
}

class ConnectionExecute : public DbTest {};

TEST_P(ConnectionExecute, ReturnsRowsAffectedAndBindsPlaceholdersInEveryStatement) {
  EXPECT_EQ(cn()->Execute("CREATE TABLE T (Id INTEGER, Name TEXT); INSERT INTO T VALUES (?, ?);"
                          "INSERT INTO T VALUES (?, ?);",
                          {Variant(int32_t{1}), Variant("a'b"), Variant(int32_t{2}), Variant("c")}),
            2);
  EXPECT_EQ(
      cn()->Execute("UPDATE T SET Name = ? WHERE Id > ?", {Variant("z"), Variant(int32_t{0})}), 2);
  EXPECT_EQ(cn()->Execute("DELETE FROM T WHERE Name = ?", {Variant("nothing")}), 0);
  EXPECT_EQ(Query("SELECT Name FROM T WHERE Id = 1")->Fields()[0].Value(), Variant("z"));
}

TEST_P(ConnectionExecute, WrongParameterCountOrBadSqlIsAProviderError) {
  cn()->Execute("CREATE TABLE T (Id INTEGER)");
  EXPECT_EQ(ErrorOf([&] { cn()->Execute("INSERT INTO T VALUES (?)"); }).Number(), kProviderError);
  EXPECT_EQ(ErrorOf([&] {
              cn()->Execute("INSERT INTO T VALUES (?)", {Variant(int32_t{1}), Variant(int32_t{2})});
            }).Number(),
            kProviderError);
  const VbError error = ErrorOf([&] { cn()->Execute("INSERT INTO Nowhere VALUES (1)"); });
  EXPECT_EQ(error.Number(), kProviderError);
  EXPECT_NE(error.Description().find(
                Says("no such table: Nowhere", "relation \"nowhere\" does not exist")),
            std::string::npos)
      << error.Description();
  EXPECT_NE(error.Description().find("INSERT INTO Nowhere"), std::string::npos);
  EXPECT_EQ(Query("T")->RecordCount(), 0);
}

VARNEL_ON_EVERY_PROVIDER(ConnectionExecute);

template <class Base>
class TransactionsOn : public Base {
 protected:
  void SetUp() override { this->cn()->Execute("CREATE TABLE T (Id INTEGER)"); }
  int32_t Rows() { return this->Query("T")->RecordCount(); }
};
class ConnectionTransactions : public TransactionsOn<DbTest> {};
class SqliteTransactions : public TransactionsOn<SqliteDbTest> {};

TEST_P(ConnectionTransactions, RollbackAndCloseDiscardAndCommitKeeps) {
  cn()->BeginTrans();
  cn()->Execute("INSERT INTO T VALUES (1)");
  EXPECT_EQ(Rows(), 1);
  cn()->RollbackTrans();
  EXPECT_EQ(Rows(), 0);
  cn()->BeginTrans();
  cn()->Execute("INSERT INTO T VALUES (2)");
  cn()->CommitTrans();
  auto other = std::make_shared<db::Recordset>();
  other->Open("T", Connect());
  EXPECT_EQ(other->RecordCount(), 1) << "committed rows are seen by another connection";
  cn()->BeginTrans();
  cn()->Execute("INSERT INTO T VALUES (3)");
  cn()->Close();
  cn()->Open(ConnectionString());
  EXPECT_EQ(Rows(), 1) << "closing rolls back an open transaction";
}

TEST_P(ConnectionTransactions, MisplacedCallsAreErrorsAndAFailedStatementUndoesOnlyItself) {
  EXPECT_NE(ErrorOf([&] { cn()->CommitTrans(); }).Description().find("no transaction"),
            std::string::npos);
  EXPECT_EQ(ErrorOf([&] { cn()->RollbackTrans(); }).Number(), kProviderError);
  cn()->BeginTrans();
  EXPECT_NE(ErrorOf([&] { cn()->BeginTrans(); }).Description().find("already open"),
            std::string::npos);
  cn()->Execute("INSERT INTO T VALUES (1)");
  EXPECT_EQ(ErrorOf([&] { cn()->Execute("INSERT INTO Nowhere VALUES (2)"); }).Number(),
            kProviderError);
  EXPECT_EQ(ErrorOf([&] { Query("SELECT Missing FROM T"); }).Number(), kProviderError);
  cn()->Execute("INSERT INTO T VALUES (3)");
  cn()->CommitTrans();
  EXPECT_EQ(Rows(), 2);
}

VARNEL_ON_EVERY_PROVIDER(ConnectionTransactions);

TEST_F(SqliteTransactions, BusyDatabaseFailsClearlyAfterAShortWait) {
  auto writer = Connect();
  writer->BeginTrans();
  writer->Execute("INSERT INTO T VALUES (1)");
  const auto start = std::chrono::steady_clock::now();
  const VbError error = ErrorOf([&] { cn()->Execute("INSERT INTO T VALUES (2)"); });
  const auto waited = std::chrono::steady_clock::now() - start;
  EXPECT_EQ(error.Number(), kProviderError);
  EXPECT_NE(error.Description().find("database is locked"), std::string::npos);
  EXPECT_NE(error.Description().find("another connection"), std::string::npos);
  EXPECT_GE(waited, std::chrono::milliseconds(1500));
  EXPECT_LT(waited, std::chrono::seconds(5));
  EXPECT_EQ(ErrorOf([&] { cn()->BeginTrans(); }).Number(), kProviderError);
  writer->RollbackTrans();
  EXPECT_EQ(cn()->Execute("INSERT INTO T VALUES (2)"), 1);
}

}  // namespace
}  // namespace varnel::testing
