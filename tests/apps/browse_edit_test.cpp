// Scripted sessions of the real program on the sample database: browsing,
// editing and saving, inserting, copying, deleting, undoing and selecting,
// checked on the screen and in the database file afterwards.
#include <string>

#include "app_fixture.h"

namespace varnel::testing {
namespace {

constexpr auto npos = std::string::npos;

std::string Script(const std::vector<std::string>& lines) {
  std::string script;
  for (const std::string& line : lines) {
    script += line + "\n";
  }
  return script;
}

TEST_F(AppSession, BrowsesTheOrdersInDateOrder) {
  const AppRun run = Run(Script({"next", "last", "next", "goto 150", "list 5", "sql", "quit"}));
  ASSERT_EQ(run.exit_code, 0) << run.output;
  const std::string& out = run.output;
  EXPECT_NE(out.find("Varnel: Orders, 300 rows."), npos);
  EXPECT_EQ(Statuses(out).front(), "Browse");
  EXPECT_NE(out.find("Row 2 of 300 | Browse"), npos);
  EXPECT_NE(out.find("Row 300 of 300 | Browse"), npos);
  EXPECT_NE(out.find("[Error] Error:2103 No current record."), npos);
  EXPECT_NE(out.find("Select * From Orders Order By OrderDate Asc,OrderId Asc"), npos);
  // The list shows rows 148..152 with the current one marked.
  const int32_t id = Scalar(
                         "SELECT OrderId FROM Orders ORDER BY OrderDate, OrderId LIMIT 1"
                         " OFFSET 149")
                         .ToLong();
  EXPECT_EQ(FieldValue(out, "Order No."), std::to_string(id));
  EXPECT_EQ(LinesStartingWith(out, ">"), 1);
}

TEST_F(AppSession, EditedValueIsSavedToItsRow) {
  const int32_t id = FirstOrderWhere("Locked = 0 AND Qty <> 7");
  const Rows before = Query("SELECT * FROM Orders ORDER BY OrderId");
  const AppRun run =
      Run(Script({"goto " + std::to_string(PositionOf(id)), "set Quantity 7", "save", "quit"}));
  EXPECT_NE(run.output.find("Saved."), npos) << run.output;
  EXPECT_EQ((std::vector<std::string>{"Browse", "Browse", "Modified", "Browse"}),
            Statuses(run.output));
  Rows expected = before;
  expected[static_cast<size_t>(id - 1)][3] = Variant(int32_t{7});
  EXPECT_EQ(Query("SELECT * FROM Orders ORDER BY OrderId"), expected);
}

TEST_F(AppSession, NewRowIsInsertedAndShowsItsGeneratedNumber) {
  const AppRun run = Run(Script({"new", "set Customer Test Shop", "set Product Stapler",
                                 "set Unit price 12.5", "save", "quit"}));
  EXPECT_NE(run.output.find("Saved."), npos) << run.output;
  EXPECT_EQ(FieldValue(run.output, "Order No."), "301");
  EXPECT_EQ(FieldValue(run.output, "Amount"), "12.50 $");
  // Quantity, currency, paid and lock take their defaults; the date is today's.
  EXPECT_EQ(Query("SELECT Customer, Product, Qty, Price, Currency, Paid, Locked,"
                  " date(OrderDate) = date('now', 'localtime') FROM Orders WHERE OrderId = 301"),
            (Rows{{Variant("Test Shop"), Variant("Stapler"), Variant(int32_t{1}),
                   Variant(Currency{125000}), Variant("$"), Variant(false), Variant(int32_t{0}),
                   Variant(int32_t{1})}}));
}

TEST_F(AppSession, CopiedRowIsInsertedUnderANewNumber) {
  const int32_t id = FirstOrderWhere("Locked = 0");
  const AppRun run = Run(
      Script({"goto " + std::to_string(PositionOf(id)), "copy", "set Quantity 3", "save", "quit"}));
  EXPECT_NE(run.output.find("Saved."), npos) << run.output;
  EXPECT_EQ(Statuses(run.output)[2], "Copied");
  const std::string same = "Customer, Product, Price, Currency, OrderDate";
  EXPECT_EQ(Query("SELECT " + same + " FROM Orders WHERE OrderId = 301"),
            Query("SELECT " + same + " FROM Orders WHERE OrderId = " + std::to_string(id)));
  EXPECT_EQ(Query("SELECT Qty, Paid FROM Orders WHERE OrderId = 301"),
            (Rows{{Variant(int32_t{3}), Variant(false)}}));
}

TEST_F(AppSession, DeletedRowIsRemovedFromTheDatabase) {
  const int32_t id = FirstOrderWhere("Locked = 0");
  const AppRun run =
      Run(Script({"goto " + std::to_string(PositionOf(id)), "delete", "save", "quit"}));
  EXPECT_NE(run.output.find("of 299 | Deleted"), npos);
  EXPECT_EQ(Statuses(run.output)[2], "Deleted");
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM Orders"), Variant(int32_t{299}));
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM Orders WHERE OrderId = " + std::to_string(id)),
            Variant(int32_t{0}));
}

TEST_F(AppSession, UndoTakesBackOneLayerAtATime) {
  const int32_t id = FirstOrderWhere("Locked = 0 AND Qty <> 9");
  const Variant qty = Scalar("SELECT Qty FROM Orders WHERE OrderId = " + std::to_string(id));
  const AppRun run =
      Run(Script({"goto " + std::to_string(PositionOf(id)), "set Quantity 9", "delete", "undo",
                  "show", "undo", "show", "save", "new", "undo", "quit"}));
  EXPECT_EQ((std::vector<std::string>{"Browse", "Browse", "Modified", "Modified, deleted",
                                      "Modified", "Modified", "Browse", "Browse", "New", "Browse"}),
            Statuses(run.output));
  EXPECT_NE(run.output.find("Nothing to save."), npos);
  EXPECT_NE(run.output.find("Row 301 of 301 | New"), npos);
  const std::string before_save = run.output.substr(0, run.output.find("varnel> save"));
  EXPECT_EQ(FieldValue(before_save, "Quantity"), CStr(qty));
  EXPECT_EQ(Scalar("SELECT Qty FROM Orders WHERE OrderId = " + std::to_string(id)), qty);
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM Orders"), Variant(int32_t{300}));
}

TEST_F(AppSession, RejectedValuesAreReportedAndNotStored) {
  const int32_t id = FirstOrderWhere("Locked = 0");
  const Variant qty = Scalar("SELECT Qty FROM Orders WHERE OrderId = " + std::to_string(id));
  const AppRun run = Run(Script({"goto " + std::to_string(PositionOf(id)), "set Quantity 5000",
                                 "set Quantity many", "save", "quit"}));
  EXPECT_EQ(CountLines(run.output, "[Error]") + CountLines(run.output, "[Information]"), 2)
      << run.output;
  EXPECT_NE(run.output.find("[Error] Error:13 Type Mismatch."), npos);
  EXPECT_NE(run.output.find("Nothing to save."), npos);
  EXPECT_EQ(FieldValue(run.output, "Quantity"), CStr(qty));
  EXPECT_EQ(Scalar("SELECT Qty FROM Orders WHERE OrderId = " + std::to_string(id)), qty);
}

TEST_F(AppSession, RequiredFieldLeftEmptyKeepsTheNewRowUnsaved) {
  const AppRun run = Run(Script({"new", "set Product Stapler", "set Unit price 5",
                                 "set Order date 2024-12-31", "save", "quit", "quit"}));
  EXPECT_NE(run.output.find("[Error] Error:94 Please enter value 'Customer' can not be null."),
            npos)
      << run.output;
  EXPECT_NE(run.output.find("Not saved: correct the row and save again."), npos);
  EXPECT_EQ(Statuses(run.output).back(), "New");
  EXPECT_NE(run.output.find("quit again to leave"), npos);
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM Orders"), Variant(int32_t{300}));
}

TEST_F(AppSession, LockedRowRefusesChangesAndDeletion) {
  const int32_t id = FirstOrderWhere("Locked <> 0");
  const Rows before = Query("SELECT * FROM Orders ORDER BY OrderId");
  const AppRun run = Run(Script(
      {"goto " + std::to_string(PositionOf(id)), "set Quantity 2", "delete", "save", "quit"}));
  EXPECT_EQ(CountLines(run.output, "[Information] You can not update the read only field."), 2)
      << run.output;
  EXPECT_NE(StatusLines(run.output).back().find("| Browse | read-only row"), npos);
  EXPECT_NE(run.output.find("Nothing to save."), npos);
  EXPECT_EQ(Query("SELECT * FROM Orders ORDER BY OrderId"), before);
}

TEST_F(AppSession, SelectionCommandsMarkRows) {
  const AppRun run = Run(Script({"select 2", "select shift 5", "select ctrl 3", "list 6",
                                 "select invert", "select none", "quit"}));
  const std::vector<std::string> status = StatusLines(run.output);
  ASSERT_EQ(status.size(), 7u) << run.output;
  EXPECT_EQ(status[1].find("Selected"), npos);  // one row: the current one
  EXPECT_NE(status[2].find("Selected: 4"), npos);
  EXPECT_NE(status[3].find("Selected: 3"), npos);
  EXPECT_EQ(LinesStartingWith(run.output, ">+"), 1);  // row 2, the current one
  EXPECT_EQ(LinesStartingWith(run.output, " +"), 2);  // rows 4 and 5
  EXPECT_NE(status[5].find("Selected: 297"), npos);
  EXPECT_EQ(status[6].find("Selected"), npos);
}

}  // namespace
}  // namespace varnel::testing
