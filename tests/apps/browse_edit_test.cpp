// Scripted sessions of the real program on the sample database: browsing,
// editing and saving, inserting, copying, deleting, undoing and selecting,
// a change made meanwhile by someone else, and query by form (criteria typed
// into the fields find the rows that the same condition finds in SQL),
// checked on the screen and in the database file afterwards.
#include <map>
#include <regex>
#include <string>

#include "app_fixture.h"

namespace varnel::testing {
namespace {

constexpr auto npos = std::string::npos;

TEST_F(AppSession, EditedValueIsSavedToItsRowAndUndoTakesBackOneLayerAtATime) {
  const int32_t id = FirstOrderWhere("Locked = 0 AND Qty <> 7");
  const int32_t undone =
      FirstOrderWhere("Locked = 0 AND Qty <> 9 AND OrderId <> " + std::to_string(id));
  const Rows before = Query("SELECT * FROM Orders ORDER BY OrderId");
  const AppRun run = Run({Goto(id), "set Quantity 7", "save", Goto(undone), "set Quantity 9",
                          "delete", "undo", "show", "undo", "show", "save", "new", "undo", "quit"});
  EXPECT_EQ((std::vector<std::string>{"Browse", "Browse", "Modified", "Browse", "Browse",
                                      "Modified", "Modified, deleted", "Modified", "Modified",
                                      "Browse", "Browse", "New", "Browse"}),
            Statuses(run.output))
      << run.output;
  ExpectShown(run.output, {"Saved row " + Goto(id).substr(5) + ".", "Nothing to save.",
                           "Row 301 of 301 | New"});
  const std::string before_save = run.output.substr(0, run.output.rfind("varnel> save"));
  EXPECT_EQ(FieldValue(before_save, "Quantity"), CStr(before[static_cast<size_t>(undone - 1)][3]));
  Rows expected = before;
  expected[static_cast<size_t>(id - 1)][3] = Variant(int32_t{7});
  EXPECT_EQ(Query("SELECT * FROM Orders ORDER BY OrderId"), expected);
}

TEST_F(AppSession, NewAndCopiedRowsAreInsertedUnderNewNumbersAndDeletedRowIsRemoved) {
  const int32_t id = FirstOrderWhere("Locked = 0");
  const std::string same = "SELECT Customer, Product, Price, Currency, OrderDate FROM Orders";
  const Rows original = Query(same + " WHERE OrderId = " + std::to_string(id));
  const std::string go = Goto(id);
  const AppRun run =
      Run({"new", "set Customer Test Shop", "set Product Stapler", "set Unit price 12.5", "save",
           "show", go, "copy", "set Quantity 3", "save", go, "delete", "save", "quit"});
  EXPECT_EQ(CountLines(run.output, "Saved new row 30"), 2) << run.output;
  EXPECT_EQ(CountLines(run.output, "Deleted row " + go.substr(5) + " from the database."), 1);
  const std::string inserted = run.output.substr(0, run.output.find("varnel> goto"));
  EXPECT_EQ(FieldValue(inserted, "Order No."), "301");
  EXPECT_EQ(FieldValue(inserted, "Amount"), "12.50 $");
  EXPECT_EQ(CountLines(run.output, "| Copied"), 2);
  EXPECT_NE(run.output.find("of 301 | Deleted"), npos);
  // Quantity, currency, paid and lock take their defaults; the date is today's.
  EXPECT_EQ(Query("SELECT Customer, Product, Qty, Price, Currency, Paid, Locked,"
                  " date(OrderDate) = date('now', 'localtime') FROM Orders WHERE OrderId = 301"),
            (Rows{{Variant("Test Shop"), Variant("Stapler"), Variant(int32_t{1}),
                   Variant(Currency{125000}), Variant("$"), Variant(false), Variant(int32_t{0}),
                   Variant(int32_t{1})}}));
  EXPECT_EQ(Query(same + " WHERE OrderId = 302"), original);
  EXPECT_EQ(Query("SELECT Qty, Paid FROM Orders WHERE OrderId = 302"),
            (Rows{{Variant(int32_t{3}), Variant(false)}}));
  EXPECT_EQ(Query("SELECT COUNT(*), SUM(OrderId = " + std::to_string(id) + ") FROM Orders"),
            (Rows{{Variant(int32_t{301}), Variant(int32_t{0})}}));
}

TEST_F(AppSession, RefusedChangesAreReportedAndNothingIsStored) {
  const int32_t locked = FirstOrderWhere("Locked <> 0");
  const int32_t id = FirstOrderWhere("Locked = 0");
  const Rows before = Query("SELECT * FROM Orders ORDER BY OrderId");
  const AppRun run =
      Run({Goto(locked), "set Quantity 2", "delete", "save", Goto(id), "set Quantity 5000",
           "set Quantity many", "save", "new", "set Product Stapler", "set Unit price 5",
           "set Order date 2024-12-31", "save", "quit", "quit"});
  const std::string& out = run.output;
  EXPECT_EQ(CountLines(out, "[Information] You can not update the read only field."), 2) << out;
  EXPECT_EQ(CountLines(out, "| Browse | read-only row"), 3);
  EXPECT_EQ(CountLines(out, "[Error]") + CountLines(out, "[Information]"), 6) << out;
  // The first quit tries to save the new row, is refused again and says so.
  ExpectShown(out,
              {"[Information] Please enter value 'Quantity' >= 1 AND <= 1000 .",
               "[Error] Error:13 Type Mismatch.", "quit again to leave",
               "Not saved; your changes are kept. Do what the message says, then save again."});
  EXPECT_EQ(CountLines(out, "Nothing to save."), 2);
  EXPECT_EQ(FieldValue(out.substr(0, out.find("varnel> new")), "Quantity"),
            CStr(before[static_cast<size_t>(id - 1)][3]));
  EXPECT_EQ(CountLines(out, "[Error] Error:94 Please enter value 'Customer' can not be null."), 2);
  EXPECT_EQ(Statuses(out).back(), "New");
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_EQ(Query("SELECT * FROM Orders ORDER BY OrderId"), before);
}

// Rows are marked first, then the list of the browsed rows shows none marked.
TEST_F(AppSession, SelectionCommandsMarkRowsAndBrowsingFollowsTheDateOrder) {
  const AppRun run =
      Run({"select 2", "select shift 5", "select ctrl 3", "list 6", "select invert", "select none",
           "next", "last", "next", "goto 150", "list 5", "sql", "quit"});
  ASSERT_EQ(run.exit_code, 1) << run.output;  // the move past the last row failed
  const std::string& out = run.output;
  const std::vector<std::string> status = StatusLines(out);
  ASSERT_GE(status.size(), 7u) << out;
  EXPECT_EQ(Statuses(out).front(), "Browse");
  EXPECT_EQ(status[1].find("Selected"), npos);  // one row: the current one
  EXPECT_NE(status[2].find("Selected: 4"), npos);
  // Beside the totals over all rows, the selected rows' own, per currency sign.
  EXPECT_NE(status[2].find("| Selected sum Quantity: " +
                           CStr(Scalar("SELECT SUM(Qty) FROM (SELECT Qty FROM Orders"
                                       " ORDER BY OrderDate, OrderId LIMIT 4 OFFSET 1)")) +
                           ", Amount: "),
            npos)
      << status[2];
  EXPECT_NE(status[0].find(" $ + "), npos) << status[0];
  EXPECT_NE(status[3].find("Selected: 3"), npos);
  EXPECT_EQ(CountLines(out, ">+", true), 1);  // row 2, the current one
  EXPECT_EQ(CountLines(out, " +", true), 2);  // rows 4 and 5
  EXPECT_NE(status[5].find("Selected: 297"), npos);
  EXPECT_EQ(status[6].find("Selected"), npos);
  ExpectShown(out, {"Varnel: Orders, 300 rows.", "Row 3 of 300 | Browse", "Row 300 of 300 | Browse",
                    "[Error] Error:2103 No current record.",
                    "Select * From Orders Order By OrderDate Asc,OrderId Asc"});
  // The second list shows rows 148..152 with the current one marked.
  EXPECT_EQ(
      FieldValue(out, "Order No."),
      CStr(Scalar("SELECT OrderId FROM Orders ORDER BY OrderDate, OrderId LIMIT 1 OFFSET 149")));
  EXPECT_EQ(CountLines(out, ">", true), 2);
}

// Each conflict is met on save with the edit kept, then resolved: the
// deletion of a row someone changed is dropped (take-theirs), the edit of a
// row someone changed is written over theirs (keep-mine).
TEST_F(AppSession, ChangesBySecondConnectionAreResolvedEitherWay) {
  const int32_t edited = FirstOrderWhere("Locked = 0 AND Qty <> 8");
  const int32_t deleted = FirstOrderWhere("Locked = 0 AND OrderId <> " + std::to_string(edited));
  const std::string where = " WHERE OrderId = " + std::to_string(edited);
  AppProcess app(AppArgs(dir_));
  app.ReadUntil("Type help for the commands.");
  Database()->Execute("UPDATE Orders SET Note = 'changed elsewhere'" + where);
  Database()->Execute("UPDATE Orders SET Qty = Qty + 1 WHERE OrderId = " + std::to_string(deleted));
  app.Send(Goto(deleted) + "\ndelete\nsave\nconflict\ntake-theirs\n" + Goto(edited) +
           "\nset Quantity 8\nnext\nconflict\nkeep-mine\nkeep-mine\nquit\n");
  const AppRun run = app.Finish();
  EXPECT_EQ(CountLines(run.output, "Someone else changed this row: type conflict to compare"), 2)
      << run.output;
  ExpectShown(run.output,
              {"Someone else changed this row after it was read", "  ! Note",
               "Saved row " + Goto(edited).substr(5) + ".", "There is no conflict to resolve."});
  EXPECT_EQ(Scalar("SELECT Qty FROM Orders" + where), Variant(int32_t{8}));
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM Orders WHERE OrderId = " + std::to_string(deleted)),
            Variant(int32_t{1}));
  EXPECT_EQ(run.exit_code, 1);  // the two refused saves and the extra keep-mine
}

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

// A criterion typed into each field of the sample (yes/no in the words of
// both languages) finds the rows that the same condition finds in SQL (each
// form of criterion runs on both databases in the query tests), and every
// criterion that help shows runs through the real translator on a field of its
// kind without an error. Then refine starts from the last criteria, cancel
// keeps the rows of the last run, clear and refresh bring all back, and an
// unreadable criterion is refused when typed: run finds every row.
TEST_F(AppSession, QueryByFormFindsTheRowsSqlFindsAndRefinesThem) {
  const struct {
    const char* field;      // as the screen shows it
    const char* criterion;  // as a user types it
    const char* where;      // the same rows in SQL
  } criteria[] = {
      {"Customer", "Harbor", "Customer LIKE '%Harbor%'"},
      {"Note", "null", "Note IS NULL OR Note = ''"},
      {"Quantity", ">=10 AND <20", "Qty >= 10 AND Qty < 20"},
      {"Unit price", ">100", "Price > 100"},
      {"Order date", "2024-03-15", "date(OrderDate) = '2024-03-15'"},
      {"Paid", "yes", "Paid <> 0"},
      {"Paid", "否", "Paid = 0"},
      {"Amount", ">=1000 AND <2000", "Qty * Price >= 1000 AND Qty * Price < 2000"},
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
  const std::string help = RunApp(AppArgs(dir_), "help\n").output;
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
  const std::string refine =
      "query\nset Customer Harbor\nset Quantity >=10\nsql\nrun\nrefine\nset Quantity\nrun\n"
      "query\nset Quantity >=30\ncancel\nlist\nclear\nrefresh\nquery\nset Quantity >=\nrun\n";
  const AppRun run = RunApp(AppArgs(dir_), script + refine + "quit\n");
  const std::string harbor = "SELECT COUNT(*) FROM Orders WHERE Customer LIKE '%Harbor%'";
  const std::vector<int32_t> found = FoundCounts(run.output);
  ASSERT_EQ(found.size(), expected.size() + examples + 3) << run.output;
  EXPECT_EQ(std::vector<int32_t>(found.begin(), found.begin() + expected.size()), expected);
  // Refine keeps the customer; the unreadable criterion leaves none: every row.
  EXPECT_EQ(std::vector<int32_t>(found.end() - 3, found.end()),
            (std::vector<int32_t>{Scalar(harbor + " AND Qty >= 10").ToLong(),
                                  Scalar(harbor).ToLong(), 300}));
  // The one failed command is the unreadable criterion.
  ExpectShown(run.output, {"Select * From Orders Where ", "Query mode: type criteria",
                           "[Error] Error:94 'Quantity' can not be null.", "1 command(s) failed."});
  EXPECT_EQ(CountLines(run.output, "[Error]"), 1) << run.output;
  EXPECT_NE(StatusLines(run.output).back().find("of 300 | Browse"), std::string::npos);
  EXPECT_EQ(run.exit_code, 1);
}

}  // namespace
}  // namespace varnel::testing
