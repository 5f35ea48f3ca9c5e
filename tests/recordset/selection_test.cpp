// Selecting rows with None, Shift and Ctrl, and the rows' edit marks.
#include "source_fixture.h"

namespace varnel::testing {
namespace {

class RecordsetSelection : public SourceTest {
 protected:
  RecordsetSelection() {
    Execute({"INSERT INTO Items ([Id]) VALUES (4)", "INSERT INTO Items ([Id]) VALUES (5)",
             "INSERT INTO Items ([Id]) VALUES (6)"});
  }

  // "1" for each selected row of 1..6.
  std::string Marks() {
    std::string out;
    for (int32_t row = 1; row <= 6; ++row) {
      out += rs.GetSelectRow(row) ? "1" : "0";
    }
    return out;
  }
};

TEST_P(RecordsetSelection, ShiftMarksFromTheAnchorInEitherDirection) {
  Load();
  EXPECT_TRUE(rs.GetSelectRow());  // S_None: the current row counts as selected
  rs.AbsolutePosition(5);
  log.Clear();
  EXPECT_FALSE(rs.SysSetMutliSelectRows(false, 2, Shift));
  EXPECT_EQ(Marks(), "011110");
  EXPECT_EQ(rs.SelectState(), S_Multi);
  EXPECT_TRUE(log.Saw("UpdateRecordBefore"));
  EXPECT_EQ(log.names.back(), "ChangeSelectRows");
  rs.SysSetMutliSelectRows(true, 6, Shift);  // the anchor stays at 5
  EXPECT_EQ(Marks(), "000011");
}

TEST_P(RecordsetSelection, CtrlTogglesOneRowAndNoneStartsOver) {
  Load();
  rs.SysSetMutliSelectRows(true, 2, Ctrl);
  rs.SysSetMutliSelectRows(true, 4, Ctrl);
  rs.SysSetMutliSelectRows(false, 2, Ctrl);
  EXPECT_EQ(Marks(), "000100");
  log.Clear();
  rs.SysSetMutliSelectRows(true, 6, None);
  EXPECT_EQ(log.Joined(), "ChangeSelectRows");  // S_Multi before: announced, no save
  EXPECT_EQ(rs.SelectState(), S_None);
  EXPECT_EQ(Marks(), "000001");
  log.Clear();
  rs.SysSetMutliSelectRows(true, 0, None);  // the current row
  EXPECT_EQ(log.Joined(), "");
  EXPECT_EQ(Marks(), "100000");
  rs.SysSetMutliSelectRows(true, 3, static_cast<Enum_SelectRow>(7));
  EXPECT_EQ(Marks(), "100000");
}

TEST_P(RecordsetSelection, SelectionWaitsForThePendingEditToBeSaved) {
  Load();
  ASSERT_FALSE(rs.Modify("Qty", Variant(int32_t{5})));
  answering.answer = E_Defeat;
  log.Clear();
  rs.SysSetMutliSelectRows(true, 2, Ctrl);
  rs.SysSetMutliSelectRows(true, 3, Shift);
  rs.SelectAllRows();
  rs.InvertSelectRows();
  EXPECT_FALSE(log.Saw("ChangeSelectRows"));
  EXPECT_EQ(Marks(), "000000");
  EXPECT_EQ(rs.SelectState(), S_None);
}

TEST_P(RecordsetSelection, AllInvertAndClearChangeEveryRow) {
  Load();
  rs.SysSetMutliSelectRows(true, 2, Ctrl);
  EXPECT_FALSE(rs.InvertSelectRows());
  EXPECT_EQ(Marks(), "101111");
  EXPECT_FALSE(rs.SelectAllRows());
  EXPECT_EQ(Marks(), "111111");
  log.Clear();
  EXPECT_FALSE(rs.ClearSelectRows());
  EXPECT_EQ(log.Joined(), "ChangeSelectRows");
  EXPECT_EQ(Marks(), "000000");
  EXPECT_EQ(rs.SelectState(), S_None);
}

TEST_P(RecordsetSelection, EditMarksFollowSetEditAndLocked) {
  Load();
  EXPECT_FALSE(rs.SetEdit(false, 2));
  EXPECT_FALSE(rs.GetEdit(2));
  EXPECT_FALSE(rs.SetEdit(false));  // the current row
  EXPECT_FALSE(rs.GetEdit(1));
  rs.SetEdit(true);
  rs.Locked(true);
  EXPECT_FALSE(rs.GetEdit());
  EXPECT_TRUE(rs.GetEdit(1));
  EXPECT_TRUE(ui.shown().empty());
  EXPECT_TRUE(rs.GetEdit(9));  // outside the rows: reported, true
  EXPECT_EQ(ui.shown().back().kind, ShownMessage::Error);
}

TEST_P(RecordsetSelection, LockFieldOwnsTheEditMarks) {
  rs.Item("Qty")->FieldType = F_Locked;
  Load();
  EXPECT_FALSE(rs.SetEdit(false, 2));
  EXPECT_EQ(ui.LastText(), "Qty是Edit(),不能用SetEdit直接更改Edit()");
  EXPECT_TRUE(rs.GetEdit(2));
}

VARNEL_ON_EVERY_PROVIDER(RecordsetSelection);

}  // namespace
}  // namespace varnel::testing
