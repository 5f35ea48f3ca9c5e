// Scripted sessions of the real program on the sample database: browsing,
// editing and saving, inserting, copying, deleting, undoing and selecting,
// checked on the screen and in the database file afterwards.
#include <string>

#include "app_fixture.h"

namespace varnel::testing {
namespace {

constexpr auto npos = std::string::npos;

TEST_F(AppSession, BrowsesTheOrdersInDateOrder) {
  const AppRun run = Run({"next", "last", "next", "goto 150", "list 5", "sql", "quit"});
  ASSERT_EQ(run.exit_code, 1) << run.output;  // the move past the last row failed
  const std::string& out = run.output;
  EXPECT_NE(out.find("Varnel: Orders, 300 rows."), npos);
  EXPECT_EQ(Statuses(out).front(), "Browse");
  ExpectShown(out, {"Row 2 of 300 | Browse", "Row 300 of 300 | Browse",
                    "[Error] Error:2103 No current record.",
                    "Select * From Orders Order By OrderDate Asc,OrderId Asc"});
  // The list shows rows 148..152 with the current one marked.
  EXPECT_EQ(
      FieldValue(out, "Order No."),
      CStr(Scalar("SELECT OrderId FROM Orders ORDER BY OrderDate, OrderId LIMIT 1 OFFSET 149")));
  EXPECT_EQ(CountLines(out, ">", true), 1);
}

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
  ExpectShown(out, {"[Information] Please enter value 'Quantity' >= 1 AND <= 1000 .",
                    "[Error] Error:13 Type Mismatch."});
  EXPECT_EQ(CountLines(out, "Nothing to save."), 2);
  EXPECT_EQ(FieldValue(out.substr(0, out.find("varnel> new")), "Quantity"),
            CStr(before[static_cast<size_t>(id - 1)][3]));
  // The first quit tries to save the new row and is refused again.
  EXPECT_EQ(CountLines(out, "[Error] Error:94 Please enter value 'Customer' can not be null."), 2);
  EXPECT_NE(out.find("Not saved; your changes are kept. Do what the message says, then save again."), npos);
  EXPECT_EQ(Statuses(out).back(), "New");
  EXPECT_NE(out.find("quit again to leave"), npos);
  EXPECT_EQ(run.exit_code, 1);
  EXPECT_EQ(Query("SELECT * FROM Orders ORDER BY OrderId"), before);
}

TEST_F(AppSession, SelectionCommandsMarkRows) {
  const AppRun run = Run({"select 2", "select shift 5", "select ctrl 3", "list 6", "select invert",
                          "select none", "quit"});
  const std::vector<std::string> status = StatusLines(run.output);
  ASSERT_EQ(status.size(), 7u) << run.output;
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
  EXPECT_EQ(CountLines(run.output, ">+", true), 1);  // row 2, the current one
  EXPECT_EQ(CountLines(run.output, " +", true), 2);  // rows 4 and 5
  EXPECT_NE(status[5].find("Selected: 297"), npos);
  EXPECT_EQ(status[6].find("Selected"), npos);
}

}  // namespace
}  // namespace varnel::testing
