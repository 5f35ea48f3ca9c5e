// Query by form in the real program: criteria typed into the fields of the
// sample screen find the rows that the same condition finds in SQL.
#include <map>
#include <regex>
#include <string>

#include "app_fixture.h"

namespace varnel::testing {
namespace {

// The counts of every "N rows found." line, in order.
std::vector<int32_t> FoundCounts(const std::string& output) {
  std::vector<int32_t> counts;
  const std::regex found("(\\d+) rows found\\.");
  for (auto it = std::sregex_iterator(output.begin(), output.end(), found);
       it != std::sregex_iterator(); ++it) {
    counts.push_back(std::stoi((*it)[1]));
  }
  return counts;
}

// Criteria of every kind find the rows that the same condition finds in SQL,
// and every criterion that help shows runs through the real translator on a
// field of its kind without an error.
TEST_F(AppSession, CriteriaOfEveryKindFindTheRowsSqlFinds) {
  const struct {
    const char* field;      // as the screen shows it
    const char* criterion;  // as a user types it
    const char* where;      // the same rows in SQL
  } criteria[] = {
      {"Customer", "Harbor", "Customer LIKE '%Harbor%'"},
      {"Customer", "not Harbor", "NOT Customer LIKE '%Harbor%'"},
      {"Note", "null", "Note IS NULL OR Note = ''"},
      {"Quantity", ">=30", "Qty >= 30"},
      {"Quantity", ">=10 AND <20", "Qty >= 10 AND Qty < 20"},
      {"Unit price", ">100", "Price > 100"},
      {"Unit price", "<=5", "Price <= 5"},
      {"Order date", ">=2024-12-01", "OrderDate >= '2024-12-01'"},
      {"Order date", "2024-03-15", "date(OrderDate) = '2024-03-15'"},
      {"Paid", "1", "Paid <> 0"},
      {"Paid", "0", "Paid = 0"},
      {"Paid", "yes", "Paid <> 0"},
      {"Paid", "否", "Paid = 0"},
      {"Amount", ">=1000 AND <2000", "Qty * Price >= 1000 AND Qty * Price < 2000"},
      {"Amount", "<50 OR >5000", "Qty * Price < 50 OR Qty * Price > 5000"},
  };
  std::string script;
  std::vector<int32_t> expected;
  for (const auto& c : criteria) {
    script += "query\nset " + std::string(c.field) + " " + c.criterion + "\nrun\n";
    expected.push_back(
        Scalar("SELECT COUNT(*) FROM Orders WHERE " + std::string(c.where)).ToLong());
  }
  const std::map<std::string, std::string> field_of_kind = {{"number", "Quantity"},
                                                            {"amount", "Amount"},
                                                            {"date", "Order date"},
                                                            {"text", "Customer"},
                                                            {"yes/no", "Paid"}};
  const std::string help = Run("help\n").output;
  size_t examples = 0;
  const std::regex kind_line("  ([a-z/]+):  (.*)");
  for (auto it = std::sregex_iterator(help.begin(), help.end(), kind_line);
       it != std::sregex_iterator(); ++it) {
    const std::string field = field_of_kind.at((*it)[1]);
    const std::string list = (*it)[2];
    for (size_t at = 0; at <= list.size(); ++examples) {
      const size_t bar = std::min(list.find(" | ", at), list.size());
      script += "query\nset " + field + " " + list.substr(at, bar - at) + "\nrun\n";
      at = bar + 3;
    }
  }
  EXPECT_GT(examples, 20u) << help;
  const AppRun run = Run(script + "quit\n");
  const std::vector<int32_t> found = FoundCounts(run.output);
  ASSERT_EQ(found.size(), expected.size() + examples) << run.output;
  EXPECT_EQ(std::vector<int32_t>(found.begin(), found.begin() + expected.size()), expected);
  EXPECT_EQ(CountLines(run.output, "[Error]"), 0) << run.output;
  EXPECT_EQ(run.exit_code, 0);
}

TEST_F(AppSession, RefineStartsFromTheLastCriteriaAndAnEmptyConditionIsReported) {
  const AppRun run =
      Run("query\nset Customer Harbor\nset Quantity >=10\nsql\nrun\nrefine\nset Quantity\nrun\n"
          "query\nset Quantity >=30\ncancel\nlist\nclear\nrefresh\n"
          "query\nset Quantity >=\nrun\ncancel\nquit\n");
  const std::string where = "SELECT COUNT(*) FROM Orders WHERE Customer LIKE '%Harbor%'";
  // The unreadable criterion is refused when typed: run then finds every row.
  EXPECT_EQ(FoundCounts(run.output),
            (std::vector<int32_t>{Scalar(where + " AND Qty >= 10").ToLong(), Scalar(where).ToLong(),
                                  300}))
      << run.output;
  ExpectShown(run.output, {"Select * From Orders Where ", "Query mode: type criteria",
                           "[Error] Error:94 'Quantity' can not be null."});
  // Cancel keeps the rows of the last run; clear and refresh bring all back.
  EXPECT_NE(StatusLines(run.output).back().find("of 300 | Browse"), std::string::npos);
}

}  // namespace
}  // namespace varnel::testing
