// The program on databases other than the sample: any table (a field per
// column, saved by its primary key) on every provider, a screen read from a
// field-information table, and what it does with a bad command line.
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include "app_fixture.h"
#include "db/sql_quote.h"
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

  Variant Value(const std::string& sql) {
    db::Recordset check;
    check.Open(sql, database_);
    return check.Fields().Item(0).Value();
  }

  TempDir dir_;
  TestDatabase db_{GetParam()};
  std::shared_ptr<db::Connection> database_;
};

TEST_P(AppOnTable, AnyTableOpensWithAFieldPerColumnAndSavesByItsKey) {
  const AppRun run =
      Run("jump\nset Nothing 1\ngoto 99\nlast\nset Score 7.25\nsave\nnew\nset Name Grace\n"
          "set Born 1906-12-09\nsave\nsql\nquit\n",
          {"--table", "People"});
  ASSERT_EQ(run.exit_code, 1) << run.output;  // jump, Nothing and 99 failed
  ExpectShown(run.output,
              {"Varnel: People, 2 rows.", "Unknown command 'jump'", "There is no field 'Nothing'.",
               "There is no row 99.", "Saved row 2.", "Saved new row 3."});
  EXPECT_EQ(FieldValue(run.output, "Id"), "3");
  EXPECT_EQ(FieldValue(run.output, "Born"), "1906-12-09");
  EXPECT_NE(run.output.find("Select * From People Order By [Id] Asc"), npos);
  // A scripted session shows no prompts, colours or progress: only the commands, echoed.
  EXPECT_EQ(run.output.find_first_of("\033\r"), npos);
  EXPECT_EQ(run.output.find("Loading"), npos);
  EXPECT_EQ(CountLines(run.output, "varnel> ", true), 12);
  EXPECT_EQ(Value("SELECT [Score] FROM People WHERE [Id] = 2"), Variant(7.25));
  EXPECT_EQ(Value("SELECT [Name] FROM People WHERE [Id] = 3"), Variant("Grace"));
  EXPECT_EQ(Value("SELECT [Born] FROM People WHERE [Id] = 3"), CDate(Variant("1906-12-09")));
}

// A named key column identifies the rows and orders them, whatever its name.
TEST_P(AppOnTable, NamedKeyColumnIdentifiesAndOrdersRowsWithoutAPrimaryKey) {
  for (const std::string key : {"Code", "Size [cm]"}) {
    SCOPED_TRACE(key);
    database_->Execute("CREATE TABLE Tags (\"" + key + "\" VARCHAR(8), \"Label\" VARCHAR(20))");
    database_->Execute("INSERT INTO Tags VALUES ('b', 'second'), ('a', 'first'), ('c', 'third')");
    const AppRun run =
        Run("next\nset Label renamed\nsave\nquit\n", {"--table", "Tags", "--key", key});
    EXPECT_NE(run.output.find("Saved row 2."), npos) << run.output;
    EXPECT_EQ(Value("SELECT [Label] FROM Tags WHERE " + db::internal::BracketName(key) + " = 'b'"),
              Variant("renamed"));
    database_->Execute("DROP TABLE Tags");
  }
}

// A bad command line or connection ends with a failure and echoes nothing of
// the connection string. A password need not be on the command line either:
// libpq's environment gives it, from PGPASSWORD or a PGPASSFILE file (the test
// server, scripts/pg-server.sh, trusts every user but varnel_pw, which must
// give its password "varnel-pw-secret").
TEST_P(AppOnTable, ConnectionsOpenOrFailWithoutEchoingSecrets) {
  const std::string people = db_.ConnectionString("people.db");
  struct Case {
    std::vector<std::string> args;
    std::map<std::string, std::string> env;
    int exit_code;
    std::vector<std::string> shown;  // "!...": not shown
  };
  std::vector<Case> cases = {
      {{"--connect", people}, {}, 2, {}},  // neither --table nor --view
      {{"--connect", "Provider=Nowhere", "--table", "T"}, {}, 1, {"Provider cannot be found"}},
      {{"--connect", people + ";Password=Sup3r;Secret Pw", "--table", "People"},
       {},
       1,
       {"!Sup3r", "!Secret Pw"}},
  };
  if (GetParam() == TestProvider::kPostgres &&
      Value("SELECT COUNT(*) FROM pg_roles WHERE rolname = 'varnel_pw'").ToLong() == 1) {
    database_->Execute("GRANT USAGE ON SCHEMA \"" + people.substr(people.rfind('=') + 1) +
                       "\" TO varnel_pw");
    database_->Execute("GRANT SELECT ON People TO varnel_pw");
    const std::string pass_file = (dir_.path() / "pgpass").string();
    std::ofstream(pass_file) << "*:*:*:varnel_pw:varnel-pw-secret\n";
    std::filesystem::permissions(pass_file, std::filesystem::perms::owner_read);
    const std::string nowhere = (dir_.path() / "no-pgpass").string();
    std::string as_role = people;
    as_role.replace(as_role.find("User ID=varnel;"), 15, "User ID=varnel_pw;");
    const std::vector<std::string> args = {"--connect", as_role, "--table", "People"};
    cases.push_back({args,
                     {{"PGPASSWORD", "varnel-pw-secret"}, {"PGPASSFILE", nowhere}},
                     0,
                     {"Varnel: People, 2 rows.", "!password"}});
    cases.push_back({args, {{"PGPASSFILE", pass_file}}, 0, {"Varnel: People, 2 rows."}});
    cases.push_back({args,
                     {{"PGPASSWORD", "wrong-pw-guess"}, {"PGPASSFILE", nowhere}},
                     1,
                     {"password authentication failed", "!wrong-pw-guess"}});
    cases.push_back({args, {{"PGPASSFILE", nowhere}}, 1, {"no password supplied"}});
  }
  for (const Case& c : cases) {
    SCOPED_TRACE(c.args[1]);
    std::vector<std::string> args = {"--data-dir", dir_.path().string(), "--lang", "en"};
    args.insert(args.end(), c.args.begin(), c.args.end());
    const AppRun run = RunApp(args, "quit\n", c.env);
    EXPECT_EQ(run.exit_code, c.exit_code) << run.output;
    ExpectShown(run.output, c.shown);
  }
}

// What the database refuses is told in plain words (the library's own for a
// refused save, the console's when it refused to read the rows); the
// statement and its words come with details. A refused query stays in query
// mode; a refused save keeps the edit.
TEST_P(AppOnTable, DatabaseRefusalsAreToldPlainlyWithDetailsOnRequest) {
  const struct {
    const char* script;
    const char* told;
    const char* statement;  // what details shows of the statement
    const char* status;     // the status after the refusal
  } cases[] = {
      {"query\nset Name Ada\nrun\ndetails\ncancel\nquit\n",
       "[Error] The database refused to read the rows. Type details", "From People Where", "Query"},
      {"set Score 1\nsave\ndetails\nundo\nquit\n",
       "Your changes are kept: correct the values or try again. Type details to see the "
       "database's own words",
       "People", "Modified"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.script);
    AppProcess app({"--data-dir", dir_.path().string(), "--lang", "en", "--connect",
                    db_.ConnectionString("people.db"), "--table", "People"});
    app.ReadUntil("Type help for the commands.");
    database_->Execute("ALTER TABLE People RENAME TO Persons");
    app.Send(c.script);
    const AppRun run = app.Finish();
    database_->Execute("ALTER TABLE Persons RENAME TO People");
    EXPECT_NE(run.output.find(c.told), npos) << run.output;
    const size_t details = run.output.find("varnel> details\n");
    ASSERT_NE(details, npos);
    EXPECT_NE(run.output.find(c.statement, details), npos);
    const std::vector<std::string> status = Statuses(run.output);
    ASSERT_GE(status.size(), 3u);
    EXPECT_EQ(status[status.size() - 2], c.status) << run.output;
    EXPECT_EQ(run.exit_code, 1);
  }
}

// The program's own sample database (SQLite) as a --connect database.
TEST_F(AppSession, ScreenFromAFieldInformationTable) {
  const AppRun run = Run("quit\n", {"--connect", "Provider=SQLite;Data Source=" + SamplePath(),
                                    "--view", "Orders", "--fields-table", "FieldsInformation"});
  ExpectShown(run.output, {"Varnel: Orders, 300 rows.", "  * Unit price"});
}

VARNEL_ON_EVERY_PROVIDER(AppOnTable);

}  // namespace
}  // namespace varnel::testing
