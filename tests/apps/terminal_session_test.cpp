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

// The deletion asked about is answered no; the completed commands then run.
TEST_F(AppAtTerminal, TabCompletesCtrlCCancelsTheLineAndCtrlDAsksToSaveThePendingEdit) {
  const int32_t id = FirstOrderWhere("Locked = 0");
  const Variant qty = Scalar("SELECT Qty FROM Orders WHERE OrderId = " + std::to_string(id));
  AppProcess app(AppArgs(dir_), {}, true);
  app.ReadUntil(kPrompt);
  app.Type(Goto(id) + "\r");
  app.Type("delete\r", "(yes/no)");
  app.Type("no\r");
  app.Type("se\t", "select");  // two commands start so: both are listed
  app.Type("l\tnone\r");
  app.Type("set unit\t12.5\r");  // the name on the screen, blank and all
  app.Type("set Note typed at a terminal, 终端 ¥\r");
  app.Send("set Quantity 9");
  app.Type("\x03", "^C\r\n" + std::string(kPrompt));
  app.Type("lang z\t\r");
  app.Type("\x04", "(是/否)");
  app.Send("是\r");
  const AppRun run = app.Finish();
  EXPECT_EQ(run.exit_code, 0) << run.output;
  ExpectShown(run.output, {"Not deleted.", "set     select", "!Unknown command",
                           "Unit price  12.50 $", "语言：中文。"});
  EXPECT_EQ(Query("SELECT Note, Qty, Price FROM Orders WHERE OrderId = " + std::to_string(id)),
            (Rows{{Variant("typed at a terminal, 终端 ¥"), qty, Variant(Currency{125000})}}));
}

// With --yes a deletion is not asked about; the password is read without echo.
TEST_F(AppAtTerminal, PasswordIsAskedWithoutEchoAndYesDeletesWithoutAsking) {
  const std::string row = Goto(FirstOrderWhere("Locked = 0"));
  AppProcess app(AppArgs(dir_, {"--password", "--yes"}), {}, true);
  app.ReadUntil("Password: ");
  app.Send("s3cret-word\r");
  app.ReadUntil(kPrompt);
  app.Type(row + "\r");
  app.Type("delete\r");
  app.Send("quit\r");
  const AppRun run = app.Finish();
  EXPECT_EQ(run.exit_code, 0);
  ExpectShown(run.output, {"Varnel: Orders, 300 rows.", "!s3cret-word", "!(yes/no)",
                           "Deleted row " + row.substr(5) + " from the database."});
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM Orders"), Variant(int32_t{299}));
}

}  // namespace
}  // namespace varnel::testing
