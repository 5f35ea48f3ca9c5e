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

struct OpenFailure {
  std::string connection;
  int32_t number;
  std::vector<std::string> says;  // parts of the description
};

TEST(ConnectionOpen, CreatesTheFileReportsTheStateAndSaysWhyAConnectionCannotBeMade) {
  TempDir dir;
  db::Connection opened;
  EXPECT_EQ(opened.State(), 0);
  opened.Open(dir.SqliteConnection("new.db"));
  EXPECT_EQ(opened.State(), 1);
  EXPECT_TRUE(std::filesystem::exists(dir.path() / "new.db"));
  EXPECT_EQ(ErrorOf([&] { opened.Open(dir.SqliteConnection("new.db")); }).Number(), 3705);
  opened.Close();
  EXPECT_EQ(opened.State(), 0);
  EXPECT_EQ(ErrorOf([&] { opened.Close(); }).Number(), 3704);
  EXPECT_EQ(ErrorOf([&] { opened.Execute("SELECT 1"); }).Number(), 3704);
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
      EXPECT_TRUE(Holds(error.Description(), part));
    }
    EXPECT_EQ(cn.State(), 0);
  }
  EXPECT_FALSE(std::filesystem::exists(absent));  // a mistyped path never becomes a database
}

class Connection : public DbTest {
 protected:
  void SetUp() override { cn()->Execute("CREATE TABLE T (Id INTEGER)"); }
  int32_t Rows() { return Query("T")->RecordCount(); }
};

TEST_P(Connection, ExecuteReturnsRowsAffectedBindsEveryStatementAndReportsBadSql) {
  EXPECT_EQ(ErrorOf([&] { cn()->Execute("INSERT INTO T VALUES (?)"); }).Number(), kProviderError);
  EXPECT_EQ(ErrorOf([&] {
              cn()->Execute("INSERT INTO T VALUES (?)", {Variant(int32_t{1}), Variant(int32_t{2})});
            }).Number(),
            kProviderError);
  const VbError error = ErrorOf([&] { cn()->Execute("INSERT INTO Nowhere VALUES (1)"); });
  EXPECT_EQ(error.Number(), kProviderError);
  EXPECT_TRUE(Holds(error.Description(),
                    Says("no such table: Nowhere", "relation \"nowhere\" does not exist")));
  EXPECT_TRUE(Holds(error.Description(), "INSERT INTO Nowhere"));
  EXPECT_EQ(Rows(), 0);
  EXPECT_EQ(cn()->Execute("CREATE TABLE N (Id INTEGER, Name TEXT); INSERT INTO N VALUES (?, ?);"
                          "INSERT INTO N VALUES (?, ?);",
                          {Variant(int32_t{1}), Variant("a'b"), Variant(int32_t{2}), Variant("c")}),
            2);
  EXPECT_EQ(
      cn()->Execute("UPDATE N SET Name = ? WHERE Id > ?", {Variant("z"), Variant(int32_t{0})}), 2);
  EXPECT_EQ(cn()->Execute("DELETE FROM N WHERE Name = ?", {Variant("nothing")}), 0);
  EXPECT_EQ(Query("SELECT Name FROM N WHERE Id = 1")->Fields()[0].Value(), Variant("z"));
}

TEST_P(Connection, MisplacedTransactionCallsFailAFailedStatementUndoesOnlyItselfAndCloseRollsBack) {
  EXPECT_TRUE(Holds(ErrorOf([&] { cn()->CommitTrans(); }).Description(), "no transaction"));
  EXPECT_EQ(ErrorOf([&] { cn()->RollbackTrans(); }).Number(), kProviderError);
  cn()->BeginTrans();
  EXPECT_TRUE(Holds(ErrorOf([&] { cn()->BeginTrans(); }).Description(), "already open"));
  cn()->Execute("INSERT INTO T VALUES (1)");
  EXPECT_EQ(ErrorOf([&] { cn()->Execute("INSERT INTO Nowhere VALUES (2)"); }).Number(),
            kProviderError);
  EXPECT_EQ(ErrorOf([&] { Query("SELECT Missing FROM T"); }).Number(), kProviderError);
  cn()->Execute("INSERT INTO T VALUES (3)");
  cn()->CommitTrans();
  EXPECT_EQ(Rows(), 2);
  cn()->BeginTrans();
  cn()->Execute("INSERT INTO T VALUES (4)");
  EXPECT_EQ(Rows(), 3);
  cn()->RollbackTrans();
  EXPECT_EQ(Rows(), 2);
  cn()->BeginTrans();
  cn()->Execute("INSERT INTO T VALUES (5)");
  cn()->CommitTrans();
  auto other = std::make_shared<db::Recordset>();
  other->Open("T", Connect());
  EXPECT_EQ(other->RecordCount(), 3) << "committed rows are seen by another connection";
  cn()->BeginTrans();
  cn()->Execute("INSERT INTO T VALUES (6)");
  cn()->Close();
  cn()->Open(ConnectionString());
  EXPECT_EQ(Rows(), 3) << "closing rolls back an open transaction";
}

TEST_P(Connection, BusySqliteDatabaseFailsClearlyAfterAShortWait) {
  if (OnPostgres()) {
    GTEST_SKIP() << "a PostgreSQL insert waits for no other writer";
  }
  auto writer = Connect();
  writer->BeginTrans();
  writer->Execute("INSERT INTO T VALUES (1)");
  const auto start = std::chrono::steady_clock::now();
  const VbError error = ErrorOf([&] { cn()->Execute("INSERT INTO T VALUES (2)"); });
  const auto waited = std::chrono::steady_clock::now() - start;
  EXPECT_EQ(error.Number(), kProviderError);
  EXPECT_TRUE(Holds(error.Description(), "database is locked"));
  EXPECT_TRUE(Holds(error.Description(), "another connection"));
  EXPECT_GE(waited, std::chrono::milliseconds(1500));
  EXPECT_LT(waited, std::chrono::seconds(5));
  EXPECT_EQ(ErrorOf([&] { cn()->BeginTrans(); }).Number(), kProviderError);
  writer->RollbackTrans();
  EXPECT_EQ(cn()->Execute("INSERT INTO T VALUES (2)"), 1);
}

VARNEL_ON_EVERY_PROVIDER(Connection);

}  // namespace
}  // namespace varnel::testing
