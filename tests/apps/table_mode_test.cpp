// The program on databases other than the sample: any table (a field per
// column, saved by its primary key) on every provider and what it does with
// a bad command line; and random sessions, bounded runs of random command
// lines with hostile values over the sample screen and over a table with odd
// names and types. Whatever is typed, the program answers every line and
// ends by itself with status 0 or 1 (under the sanitizers too: their reports
// exit 86).
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "app_fixture.h"
#include "db/sql_quote.h"
#include "support/test_database.h"

namespace varnel::testing {
namespace {

constexpr auto npos = std::string::npos;

constexpr int kSessions = 6;
constexpr int kCommandsPerSession = 30;

const std::vector<std::string> kWords = {
    "first",   "prev",     "next",      "last",        "goto", "set",   "set",     "set",
    "new",     "copy",     "delete",    "save",        "undo", "query", "refine",  "run",
    "cancel",  "clear",    "select",    "list",        "show", "sql",   "details", "lang",
    "refresh", "conflict", "keep-mine", "take-theirs", "help", "jump",  "export",  "quit"};

// Hostile values, and one longer than any field takes.
const std::vector<std::string> kValues = [] {
  // clang-format off
  std::vector<std::string> values = {
      "", "0", "1", "-1", "2", "300", "2147483647", "2147483648", "99999999999999999999", "1e309",
      "abc", "'", "\"\"", "%", "*", "\x1b[2J\x1b]52;c;aGk=\x07", "\x01\x7f", "null", "notnull",
      "not", ">=", "5..10", "1 AND", ">=1000 AND <2000", "today", "TODAY()-3", "是", "否", "12.5",
      "-0.0001", "2024-02-30", "6/1/2024", "(", "all", "shift 3", "ctrl 2", "none", "invert",
      "en", "zh", "--csv", "€", "名字 with space"};
  // clang-format on
  values.emplace_back(300, 'x');
  return values;
}();

std::string Pick(std::mt19937& random, const std::vector<std::string>& from) {
  return from[std::uniform_int_distribution<size_t>(0, from.size() - 1)(random)];
}

// Bounded random sessions of the program with Args over Fields. Every line
// read is echoed after the prompt and answered before the next.
void RunRandomSessions(unsigned seed, const std::vector<std::string>& args,
                       const std::vector<std::string>& fields, const std::string& export_path) {
  std::mt19937 random(seed);
  for (int session = 0; session < kSessions; ++session) {
    std::string script;
    for (int i = 0; i < kCommandsPerSession; ++i) {
      const std::string word = Pick(random, kWords);
      const std::string field = word == "set" ? " " + Pick(random, fields) : "";
      script +=
          word + field + " " + (word == "export" ? export_path : Pick(random, kValues)) + "\n";
    }
    SCOPED_TRACE(script);
    const AppRun run =
        RunApp(args, script,
               {{"ASAN_OPTIONS", "exitcode=86"}, {"UBSAN_OPTIONS", "halt_on_error=1:exitcode=86"}});
    ASSERT_TRUE(run.exit_code == 0 || run.exit_code == 1) << run.exit_code << "\n" << run.output;
    EXPECT_EQ(run.output.find("runtime error"), npos) << run.output;
    int prompts = 0;
    for (size_t at = run.output.find("varnel> "); at != npos;
         at = run.output.find("varnel> ", at + 1), ++prompts) {
      const size_t line_end = run.output.find('\n', at);
      ASSERT_NE(line_end, npos);
      const bool quit = run.output.compare(at, 12, "varnel> quit") == 0;
      EXPECT_TRUE(quit || run.output.compare(line_end + 1, 8, "varnel> ") != 0)
          << "no answer to: " << run.output.substr(at, line_end - at);
    }
    EXPECT_LE(prompts, kCommandsPerSession);
  }
}

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

  // --data-dir, --lang en and --connect to the test database, then Extra.
  std::vector<std::string> Args(std::vector<std::string> extra) {
    extra.insert(extra.begin(), {"--connect", db_.ConnectionString("people.db")});
    return AppArgs(dir_, extra);
  }
  Variant Value(const std::string& sql) { return QueryRows(database_, sql).at(0).at(0); }

  TempDir dir_;
  TestDatabase db_{GetParam()};
  std::shared_ptr<db::Connection> database_;
};

TEST_P(AppOnTable, AnyTableOpensWithAFieldPerColumnAndSavesByItsKey) {
  const AppRun run = RunApp(Args({"--table", "People"}),
                            "jump\nset Nothing 1\ngoto 99\nlast\nset Score 7.25\nsave\nnew\n"
                            "set Name Grace\nset Born 1906-12-09\nsave\nsql\nquit\n");
  ASSERT_EQ(run.exit_code, 1) << run.output;  // jump, Nothing and 99 failed
  // A scripted session shows no prompts or progress: only the commands, echoed (that it
  // writes no control character is checked over the sessions on the sample).
  ExpectShown(run.output,
              {"Varnel: People, 2 rows.", "Unknown command 'jump'", "There is no field 'Nothing'.",
               "There is no row 99.", "Saved row 2.", "Saved new row 3.", "!Loading",
               "Select * From People Order By [Id] Asc"});
  EXPECT_EQ(FieldValue(run.output, "Id"), "3");
  EXPECT_EQ(FieldValue(run.output, "Born"), "1906-12-09");
  EXPECT_EQ(CountLines(run.output, "varnel> ", true), 12);
  EXPECT_EQ(Value("SELECT [Score] FROM People WHERE [Id] = 2"), Variant(7.25));
  EXPECT_EQ(Value("SELECT [Name] FROM People WHERE [Id] = 3"), Variant("Grace"));
  EXPECT_EQ(Value("SELECT [Born] FROM People WHERE [Id] = 3"), CDate(Variant("1906-12-09")));
}

// A named key column identifies the rows and orders them, whatever its name
// (a plain name is the easy case of the same quoting).
TEST_P(AppOnTable, NamedKeyColumnIdentifiesAndOrdersRowsWithoutAPrimaryKey) {
  const std::string key = "Size [cm]";
  database_->Execute("CREATE TABLE Tags (\"" + key + "\" VARCHAR(8), \"Label\" VARCHAR(20))");
  database_->Execute("INSERT INTO Tags VALUES ('b', 'second'), ('a', 'first'), ('c', 'third')");
  const AppRun run =
      RunApp(Args({"--table", "Tags", "--key", key}), "next\nset Label renamed\nsave\nquit\n");
  EXPECT_NE(run.output.find("Saved row 2."), npos) << run.output;
  EXPECT_EQ(Value("SELECT [Label] FROM Tags WHERE " + db::internal::BracketName(key) + " = 'b'"),
            Variant("renamed"));
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
    const AppRun run = RunApp(AppArgs(dir_, c.args), "quit\n", c.env);
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
    AppProcess app(Args({"--table", "People"}));
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

// Random command lines over a table with odd names and types.
TEST_P(AppOnTable, RandomSessionsOnAnOddTableAreAllAnswered) {
  database_->Execute(
      "CREATE TABLE odd_things (\"Id\" INTEGER PRIMARY KEY, \"Name with space\" VARCHAR(10),"
      " \"select\" INTEGER, \"Ünïcode 名\" TEXT, \"Amount$\" NUMERIC(12,2), \"When\" DATE,"
      " \"Flag\" BOOLEAN, \"Big\" BIGINT, \"Ratio\" DOUBLE PRECISION)");
  database_->Execute(
      "INSERT INTO odd_things VALUES (1, 'a\x1b[31mred', 1, '名字', 12.5, '2024-02-29',"
      " TRUE, 9007199254740993, -0.5), (2, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL),"
      " (3, '''quoted''', -2147483648, '', -99999.99, '1900-01-01', FALSE, -1, 1e300)");
  RunRandomSessions(
      GetParam() == TestProvider::kSqlite ? 1 : 2, Args({"--table", "odd_things"}),
      {"Id", "Name with space", "select", "Ünïcode 名", "Amount$", "When", "Flag", "Big", "Ratio"},
      (dir_.path() / "odd.csv").string());
}

TEST_F(AppSession, RandomSessionsOnTheSampleAreAllAnswered) {
  RunRandomSessions(20261123, AppArgs(dir_),
                    {"Customer", "Quantity", "Unit price", "Currency", "Order date", "Paid", "Note",
                     "Amount", "Locked", "Order No.", "Line", "nothing"},
                    (dir_.path() / "out.csv").string());
}

VARNEL_ON_EVERY_PROVIDER(AppOnTable);

}  // namespace
}  // namespace varnel::testing
