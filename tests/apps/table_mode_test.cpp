// The program on databases other than the sample: any table (a field per
// column, saved by its primary key) on every provider, a screen read from a
// field-information table, and what it does with a bad command line.
#include <string>

#include "app_fixture.h"
#include "support/test_database.h"

namespace varnel::testing {
namespace {

constexpr auto npos = std::string::npos;

class AppOnTable : public ::testing::TestWithParam<TestProvider> {
 protected:
  void SetUp() override {
    database_ = std::make_shared<db::Connection>();
    database_->Open(db_.ConnectionString("people.db"));
    // A key the database fills in: SQLite's rowid, PostgreSQL's sequence.
    const char* key =
        GetParam() == TestProvider::kSqlite ? "INTEGER PRIMARY KEY" : "SERIAL PRIMARY KEY";
    database_->Execute(std::string("CREATE TABLE People (\"Id\" ") + key +
                       ", \"Name\" VARCHAR(30), \"Born\" DATE, \"Active\" BOOLEAN,"
                       " \"Score\" DOUBLE PRECISION)");
    database_->Execute(
        "INSERT INTO People ([Name], [Born], [Active], [Score]) VALUES"
        " ('Ada', '1815-12-10', TRUE, 9.5), ('Alan', '1912-06-23', FALSE, 8)");
  }

  AppRun Run(const std::string& script, const std::vector<std::string>& extra = {}) {
    std::vector<std::string> args = {"--data-dir", dir_.path().string(),
                                     "--lang",     "en",
                                     "--connect",  db_.ConnectionString("people.db")};
    args.insert(args.end(), extra.begin(), extra.end());
    return RunApp(args, script);
  }

  TempDir dir_;
  TestDatabase db_{GetParam()};
  std::shared_ptr<db::Connection> database_;
};

TEST_P(AppOnTable, AnyTableOpensWithAFieldPerColumnAndSavesByItsKey) {
  const AppRun run =
      Run("last\nset Score 7.25\nsave\nnew\nset Name Grace\nset Born 1906-12-09\nsave\nsql\nquit\n",
          {"--table", "People"});
  ASSERT_EQ(run.exit_code, 0) << run.output;
  EXPECT_NE(run.output.find("Varnel: People, 2 rows."), npos);
  EXPECT_EQ(CountLines(run.output, "Saved."), 2);
  EXPECT_EQ(FieldValue(run.output, "Id"), "3");
  EXPECT_EQ(FieldValue(run.output, "Born"), "1906-12-09");
  EXPECT_NE(run.output.find("Select * From People Order By [Id] Asc"), npos);

  db::Recordset check;
  check.Open("SELECT [Score] FROM People WHERE [Id] = 2", database_);
  EXPECT_EQ(check.Fields().Item(0).Value(), Variant(7.25));
  check.Close();
  check.Open("SELECT [Name], [Born] FROM People WHERE [Id] = 3", database_);
  EXPECT_EQ(check.Fields().Item("Name").Value(), Variant("Grace"));
  EXPECT_EQ(check.Fields().Item("Born").Value(), Variant(CDate(Variant("1906-12-09"))));
}

TEST_P(AppOnTable, NamedKeyColumnIdentifiesRowsWithoutAPrimaryKey) {
  database_->Execute("CREATE TABLE Tags (\"Code\" VARCHAR(8), \"Label\" VARCHAR(20))");
  database_->Execute("INSERT INTO Tags VALUES ('a', 'first'), ('b', 'second')");
  const AppRun run =
      Run("next\nset Label renamed\nsave\nquit\n", {"--table", "Tags", "--key", "Code"});
  EXPECT_NE(run.output.find("Saved."), npos) << run.output;
  db::Recordset check;
  check.Open("SELECT [Label] FROM Tags WHERE [Code] = 'b'", database_);
  EXPECT_EQ(check.Fields().Item(0).Value(), Variant("renamed"));
}

// The program's own sample database (SQLite) as a --connect database.
class AppOnSample : public ::testing::Test {
 protected:
  TempDir dir_;
};

TEST_F(AppOnSample, ScreenFromAFieldInformationTable) {
  const AppRun first = RunApp({"--data-dir", dir_.path().string(), "--lang", "en"}, "quit\n");
  ASSERT_EQ(first.exit_code, 0) << first.output;
  const std::string sample = "Provider=SQLite;Data Source=" + (dir_.path() / "sample.db").string();
  const AppRun run = RunApp({"--data-dir", dir_.path().string(), "--lang", "en", "--connect",
                             sample, "--view", "Orders", "--fields-table", "FieldsInformation"},
                            "quit\n");
  EXPECT_NE(run.output.find("Varnel: Orders, 300 rows."), npos) << run.output;
  EXPECT_NE(run.output.find("  * Unit price"), npos);
}

TEST_P(AppOnTable, ScriptedSessionShowsNoPromptsColoursOrProgress) {
  const AppRun run = Run("next\nquit\n", {"--table", "People"});
  EXPECT_EQ(run.output.find('\033'), npos);
  EXPECT_EQ(run.output.find('\r'), npos);
  EXPECT_EQ(run.output.find("Loading"), npos);
  EXPECT_EQ(LinesStartingWith(run.output, "varnel> "), 2);  // the two commands, echoed
}

TEST_P(AppOnTable, BadCommandLinesAndDatabasesEndWithAFailure) {
  EXPECT_EQ(Run("", {}).exit_code, 2);  // --connect without --table or --view
  const AppRun bad_provider = RunApp(
      {"--data-dir", dir_.path().string(), "--connect", "Provider=Nowhere", "--table", "T"}, "");
  EXPECT_EQ(bad_provider.exit_code, 1);
  EXPECT_NE(bad_provider.output.find("Provider cannot be found"), npos) << bad_provider.output;
  const AppRun unknown = Run("jump\nset Nothing 1\ngoto 99\nquit\n", {"--table", "People"});
  EXPECT_NE(unknown.output.find("Unknown command 'jump'"), npos);
  EXPECT_NE(unknown.output.find("There is no field 'Nothing'."), npos);
  EXPECT_NE(unknown.output.find("There is no row 99."), npos);
}

VARNEL_ON_EVERY_PROVIDER(AppOnTable);

}  // namespace
}  // namespace varnel::testing
