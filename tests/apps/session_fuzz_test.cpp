// Random sessions: bounded runs of random command lines, with hostile values,
// over the sample screen and over a table with odd names and types, on every
// provider. Whatever is typed, the program answers every line and ends by
// itself with status 0 or 1 (under the sanitizers too: their reports exit 86).
#include <random>
#include <string>
#include <vector>

#include "app_fixture.h"
#include "support/test_database.h"

namespace varnel::testing {
namespace {

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

std::string RandomScript(std::mt19937& random, const std::vector<std::string>& fields,
                         const std::string& export_path) {
  std::string script;
  for (int i = 0; i < kCommandsPerSession; ++i) {
    const std::string word = Pick(random, kWords);
    if (word == "set") {
      script += "set " + Pick(random, fields) + " " + Pick(random, kValues);
    } else if (word == "export") {
      script += "export " + export_path;
    } else {
      script += word + " " + Pick(random, kValues);
    }
    script += "\n";
  }
  return script;
}

// Every line read is echoed after the prompt and answered before the next.
void ExpectEveryLineAnswered(const AppRun& run, int lines) {
  ASSERT_TRUE(run.exit_code == 0 || run.exit_code == 1) << run.exit_code << "\n" << run.output;
  EXPECT_EQ(run.output.find("runtime error"), std::string::npos) << run.output;
  int prompts = 0;
  for (size_t at = run.output.find("varnel> "); at != std::string::npos;
       at = run.output.find("varnel> ", at + 1)) {
    ++prompts;
    const size_t line_end = run.output.find('\n', at);
    ASSERT_NE(line_end, std::string::npos);
    const bool quit = run.output.compare(at, 12, "varnel> quit") == 0;
    EXPECT_TRUE(quit || run.output.compare(line_end + 1, 8, "varnel> ") != 0)
        << "no answer to: " << run.output.substr(at, line_end - at);
  }
  EXPECT_LE(prompts, lines);
}

const std::map<std::string, std::string> kSanitizerExits = {
    {"ASAN_OPTIONS", "exitcode=86"}, {"UBSAN_OPTIONS", "halt_on_error=1:exitcode=86"}};

// Bounded random sessions of the program with Args over Fields.
void RunRandomSessions(unsigned seed, const std::vector<std::string>& args,
                       const std::vector<std::string>& fields, const std::string& export_path) {
  std::mt19937 random(seed);
  for (int session = 0; session < kSessions; ++session) {
    const std::string script = RandomScript(random, fields, export_path);
    SCOPED_TRACE(script);
    ExpectEveryLineAnswered(RunApp(args, script, kSanitizerExits), kCommandsPerSession);
  }
}

TEST_F(AppSession, RandomSessionsOnTheSampleAreAllAnswered) {
  RunRandomSessions(20261123, Args(),
                    {"Customer", "Quantity", "Unit price", "Currency", "Order date", "Paid", "Note",
                     "Amount", "Locked", "Order No.", "Line", "nothing"},
                    (dir_.path() / "out.csv").string());
}

class AppOnOddTable : public ::testing::TestWithParam<TestProvider> {
 protected:
  TempDir dir_;
  TestDatabase db_{GetParam()};
};

TEST_P(AppOnOddTable, RandomSessionsAreAllAnswered) {
  auto cn = std::make_shared<db::Connection>();
  cn->Open(db_.ConnectionString("odd.db"));
  cn->Execute(
      "CREATE TABLE odd_things (\"Id\" INTEGER PRIMARY KEY, \"Name with space\" VARCHAR(10),"
      " \"select\" INTEGER, \"Ünïcode 名\" TEXT, \"Amount$\" NUMERIC(12,2), \"When\" DATE,"
      " \"Flag\" BOOLEAN, \"Big\" BIGINT, \"Ratio\" DOUBLE PRECISION)");
  cn->Execute(
      "INSERT INTO odd_things VALUES (1, 'a\x1b[31mred', 1, '名字', 12.5, '2024-02-29',"
      " TRUE, 9007199254740993, -0.5), (2, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL),"
      " (3, '''quoted''', -2147483648, '', -99999.99, '1900-01-01', FALSE, -1, 1e300)");
  cn->Close();
  RunRandomSessions(
      GetParam() == TestProvider::kSqlite ? 1 : 2,
      {"--data-dir", dir_.path().string(), "--lang", "en", "--connect",
       db_.ConnectionString("odd.db"), "--table", "odd_things"},
      {"Id", "Name with space", "select", "Ünïcode 名", "Amount$", "When", "Flag", "Big", "Ratio"},
      (dir_.path() / "odd.csv").string());
}

VARNEL_ON_EVERY_PROVIDER(AppOnOddTable);

}  // namespace
}  // namespace varnel::testing
