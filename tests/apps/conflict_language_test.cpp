// A change made by someone else in the meantime is reported on save and
// nothing is overwritten until the person chooses.
#include <string>

#include "app_fixture.h"

namespace varnel::testing {
namespace {

constexpr auto npos = std::string::npos;
constexpr const char* kConflict = "Someone else changed this row: type conflict to compare";

// Each conflict is met on save with the edit kept, then resolved: the
// deletion of a row someone changed is dropped (take-theirs), the edit of a
// row someone changed is written over theirs (keep-mine).
TEST_F(AppSession, ChangesBySecondConnectionAreResolvedEitherWay) {
  const int32_t edited = FirstOrderWhere("Locked = 0 AND Qty <> 8");
  const int32_t deleted = FirstOrderWhere("Locked = 0 AND OrderId <> " + std::to_string(edited));
  const std::string where = " WHERE OrderId = " + std::to_string(edited);
  AppProcess app(Args());
  app.ReadUntil("Type help for the commands.");
  Database()->Execute("UPDATE Orders SET Note = 'changed elsewhere'" + where);
  Database()->Execute("UPDATE Orders SET Qty = Qty + 1 WHERE OrderId = " + std::to_string(deleted));
  app.Send(Goto(deleted) + "\ndelete\nsave\nconflict\ntake-theirs\n" + Goto(edited) +
           "\nset Quantity 8\nnext\nconflict\nkeep-mine\nkeep-mine\nquit\n");
  const AppRun run = app.Finish();
  EXPECT_EQ(CountLines(run.output, kConflict), 2) << run.output;
  ExpectShown(run.output,
              {"Someone else changed this row after it was read", "  ! Note",
               "Saved row " + Goto(edited).substr(5) + ".", "There is no conflict to resolve."});
  EXPECT_EQ(Scalar("SELECT Qty FROM Orders" + where), Variant(int32_t{8}));
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM Orders WHERE OrderId = " + std::to_string(deleted)),
            Variant(int32_t{1}));
  EXPECT_EQ(run.exit_code, 1);  // the two refused saves and the extra keep-mine
}

}  // namespace
}  // namespace varnel::testing
