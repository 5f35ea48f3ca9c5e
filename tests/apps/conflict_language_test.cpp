// What a person is told: a change made by someone else in the meantime is
// reported on save and nothing is overwritten; messages and the screen follow
// the environment's language unless --lang says otherwise.
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
  EXPECT_NE(run.output.find("Someone else changed this row after it was read"), npos);
  EXPECT_NE(run.output.find("  ! Note"), npos);
  EXPECT_NE(run.output.find("Saved row " + Goto(edited).substr(5) + "."), npos);
  EXPECT_NE(run.output.find("There is no conflict to resolve."), npos);
  EXPECT_EQ(Scalar("SELECT Qty FROM Orders" + where), Variant(int32_t{8}));
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM Orders WHERE OrderId = " + std::to_string(deleted)),
            Variant(int32_t{1}));
  EXPECT_EQ(run.exit_code, 1);  // the two refused saves and the extra keep-mine
}

TEST_F(AppSession, ChineseEnvironmentGetsChineseScreenAndMessages) {
  const int32_t id = FirstOrderWhere("Locked = 0");
  const std::string script = Goto(id) + "\nset 数量 many\nnew\nsave\nundo\nquit\n";
  const AppRun run =
      RunApp({"--data-dir", dir_.path().string()}, script, {{"LANG", "zh_CN.UTF-8"}});
  EXPECT_NE(run.output.find("第 1 行，共 300 行 | 浏览"), npos) << run.output;
  EXPECT_NE(run.output.find("[错误] 错误：13 数据类型不匹配！"), npos);
  EXPECT_NE(run.output.find("[错误] 错误：94 请输入 '客户'  不能为空！"), npos);
  EXPECT_NE(run.output.find("未保存：请修改后再保存。"), npos);
  EXPECT_NE(FieldValue(run.output, "订单日期"), "");
}

TEST_F(AppSession, LangOptionOverridesTheEnvironment) {
  const AppRun english = RunApp({"--data-dir", dir_.path().string(), "--lang", "en"}, "quit\n",
                                {{"LANG", "zh_CN.UTF-8"}});
  EXPECT_NE(english.output.find("Row 1 of 300 | Browse"), npos) << english.output;
  const AppRun chinese =
      RunApp({"--data-dir", dir_.path().string(), "--lang", "zh"}, "quit\n", {{"LANG", "C"}});
  EXPECT_NE(chinese.output.find("第 1 行，共 300 行"), npos) << chinese.output;
  EXPECT_NE(chinese.output.find("  * 客户"), npos);
}

}  // namespace
}  // namespace varnel::testing
