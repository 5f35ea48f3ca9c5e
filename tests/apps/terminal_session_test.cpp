// The program at a terminal (a pseudo-terminal): Ctrl-C cancels only the line
// being typed, Ctrl-D with an edit pending asks before leaving, a deletion is
// confirmed unless --yes, Tab completes what is typed, and a password is
// read without echo.
#include <string>

#include "app_fixture.h"

namespace varnel::testing {
namespace {

constexpr auto npos = std::string::npos;
constexpr const char* kPrompt = "varnel> ";

using AppAtTerminal = AppSession;

TEST_F(AppAtTerminal, CtrlCCancelsTheLineAndCtrlDAsksToSaveThePendingEdit) {
  const int32_t id = FirstOrderWhere("Locked = 0");
  const Variant qty = Scalar("SELECT Qty FROM Orders WHERE OrderId = " + std::to_string(id));
  AppProcess app(Args(), {}, true);
  app.ReadUntil(kPrompt);
  app.Type(Goto(id) + "\r");
  app.Type("set Note typed at a terminal, 终端 ¥\r");
  app.Send("set Quantity 9");
  app.Type("\x03", "^C\r\n" + std::string(kPrompt));
  app.Type("\x04", "(yes/no)");
  app.Send("yes\r");
  const AppRun run = app.Finish();
  EXPECT_EQ(run.exit_code, 0) << run.output;
  EXPECT_NE(run.output.find("Saved row"), npos) << run.output;
  EXPECT_EQ(Query("SELECT Note, Qty FROM Orders WHERE OrderId = " + std::to_string(id)),
            (Rows{{Variant("typed at a terminal, 终端 ¥"), qty}}));
}

TEST_F(AppAtTerminal, DeletionIsConfirmedUnlessYesWasGiven) {
  const int32_t kept = FirstOrderWhere("Locked = 0");
  const int32_t gone = FirstOrderWhere("Locked = 0 AND OrderId <> " + std::to_string(kept));
  const std::string gone_row = Goto(gone);
  AppProcess asked(Args(), {}, true);
  asked.ReadUntil(kPrompt);
  asked.Type(Goto(kept) + "\r");
  asked.Type("delete\r", "(yes/no)");
  asked.Type("no\r");
  asked.Send("quit\r");
  const AppRun run = asked.Finish();
  EXPECT_NE(run.output.find("Not deleted."), npos) << run.output;

  AppProcess sure(Args({"--yes"}), {}, true);
  sure.ReadUntil(kPrompt);
  sure.Type(gone_row + "\r");
  sure.Type("delete\r");
  sure.Send("quit\r");
  const AppRun yes = sure.Finish();
  EXPECT_EQ(yes.output.find("(yes/no)"), npos) << yes.output;
  EXPECT_NE(yes.output.find("Deleted row " + gone_row.substr(5) + " from the database."), npos);
  EXPECT_EQ(Query("SELECT COUNT(*), SUM(OrderId = " + std::to_string(kept) + ") FROM Orders"),
            (Rows{{Variant(int32_t{299}), Variant(int32_t{1})}}));
}

TEST_F(AppAtTerminal, TabCompletesCommandsAndShownNames) {
  AppProcess app(Args(), {}, true);
  app.ReadUntil(kPrompt);
  app.Type("se\t", "select");  // two commands start so: both are listed
  app.Type("l\tnone\r");
  app.Type("set unit\t12.5\r");  // the name on the screen, blank and all
  app.Type("lang z\t\r");
  app.Send("undo\rquit\r");
  const AppRun run = app.Finish();
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_NE(run.output.find("set     select"), npos) << run.output;
  EXPECT_EQ(run.output.find("Unknown command"), npos) << run.output;
  EXPECT_NE(run.output.find("Unit price  12.50 $"), npos) << run.output;
  EXPECT_NE(run.output.find("语言：中文。"), npos) << run.output;
}

TEST_F(AppAtTerminal, PasswordIsAskedWithoutEcho) {
  AppProcess app(Args({"--password"}), {}, true);
  app.ReadUntil("Password: ");
  app.Send("s3cret-word\r");
  app.ReadUntil(kPrompt);
  app.Send("quit\r");
  const AppRun run = app.Finish();
  EXPECT_EQ(run.exit_code, 0);
  EXPECT_NE(run.output.find("Varnel: Orders, 300 rows."), npos) << run.output;
  EXPECT_EQ(run.output.find("s3cret-word"), npos);
}

}  // namespace
}  // namespace varnel::testing
