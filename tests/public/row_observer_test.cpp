// Row notices through a scripted editing session: each step's notices, with the
// row count the observer saw at each, so that "about to" notices are known to
// come before the change and the others after it.
#include "varnel/row_observer.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "recordset/fixtures.h"

namespace varnel::testing {
namespace {

class RowNoticeLog : public RowObserver {
 public:
  explicit RowNoticeLog(ClsRecordset& rs) : rs_(rs) {}
  void RowsAboutToBeInserted(int32_t first, int32_t count) override { Add("+?", first, count); }
  void RowsInserted(int32_t first, int32_t count) override { Add("+", first, count); }
  void RowsAboutToBeRemoved(int32_t first, int32_t count) override { Add("-?", first, count); }
  void RowsRemoved(int32_t first, int32_t count) override { Add("-", first, count); }
  void RowsAboutToBeReset() override { Add("reset?", 0, 0); }
  void RowsReset() override { Add("reset", 0, 0); }
  void RowChanged(int32_t row) override { Add("~", row, 1); }

  std::string text;

 private:
  // "+?4x1@3": about to insert 1 row at 4 while the recordset had 3 rows.
  void Add(const char* kind, int32_t first, int32_t count) {
    text += (text.empty() ? "" : " ") + std::string(kind) +
            (first ? std::to_string(first) + "x" + std::to_string(count) : "") + "@" +
            std::to_string(rs_.Rows());
  }
  ClsRecordset& rs_;
};

class RowObserverTest : public OrderScreen {};

TEST_F(RowObserverTest, EachRowOperationAnnouncesItsRowsBeforeAndAfter) {
  RowNoticeLog notices(rs);
  const int32_t cookie = rs.AddRowObserver(&notices);
  struct Step {
    const char* what;
    std::function<void()> act;
    const char* expected;
  };
  const Step steps[] = {
      {"new", [&] { rs.NewRecord(); }, "+?4x1@3 +4x1@4"},
      {"undo new", [&] { rs.UndoRecord(); }, "-?4x1@4 -4x1@3"},
      {"copy", [&] { rs.MoveFirst(), rs.CopyRecord(); }, "+?4x1@3 +4x1@4"},
      {"save copy", [&] { rs.UpdateRecord(); }, ""},
      {"delete", [&] { rs.AbsolutePosition(2), rs.DeleteRecord(); }, "-?2x1@4 -2x1@3"},
      {"undo delete", [&] { rs.UndoRecord(); }, "+?2x1@3 +2x1@4"},
      {"modify", [&] { rs.Modify("Qty", int32_t{9}); }, ""},
      {"undo modify", [&] { rs.UndoRecord(); }, "~2x1@4"},
      {"rolled-back delete",
       [&] { client.answer = E_OtherErr, rs.DeleteRecord(), rs.UpdateRecord(); },
       "-?2x1@4 -2x1@3 +?2x1@3 +2x1@4"},
      {"rolled-back copy", [&] { rs.CopyRecord(), rs.UpdateRecord(); },
       "+?5x1@4 +5x1@5 -?5x1@5 -5x1@4"},
      {"rows let", [&] { rs.Rows(2); }, "reset?@4 reset@2"},
      {"close", [&] { rs.CloseDataSource(); }, "reset?@2 reset@0"},
  };
  for (const Step& step : steps) {
    notices.text.clear();
    step.act();
    EXPECT_EQ(notices.text, step.expected) << step.what;
  }
  rs.RemoveRowObserver(cookie);
  notices.text.clear();
  rs.Rows(3);
  EXPECT_EQ(notices.text, "");
}

}  // namespace
}  // namespace varnel::testing
