// Moving the current row and selecting rows: the events, the save of a
// pending edit, the refusals, and the rows' edit marks.
#include "recordset/fixtures.h"

namespace varnel::testing {
namespace {

using RecordsetNavigation = SourceTest;

TEST_P(RecordsetNavigation, MovesWalkTheRowsAndRefuseToLeaveThem) {
  Load();
  EXPECT_TRUE(rs.MovePrevious());
  EXPECT_EQ(ui.LastText(), "No current record.");
  log.Clear();
  EXPECT_FALSE(rs.MoveLast());
  EXPECT_EQ(log.Joined(),
            "MoveRecordBefore,UpdateRecordBefore,RecordPointerChange2,SysMoveRecordAfter,"
            "MoveRecordAfter,RecordPointerChange");  // a move saves first
  EXPECT_EQ(rs.AbsolutePosition(), 3);
  EXPECT_TRUE(rs.MoveNext());
  EXPECT_EQ(rs.AbsolutePosition(), 3);
  ASSERT_EQ(ui.shown().size(), 2u);
  EXPECT_EQ(ui.shown()[1].kind, ShownMessage::Error);
  EXPECT_EQ(ui.LastText(), "No current record.");
  EXPECT_FALSE(rs.MovePrevious());
  EXPECT_FALSE(rs.MoveFirst());
  EXPECT_FALSE(rs.MoveNext());
  EXPECT_EQ(rs.AbsolutePosition(), 2);
  log.Clear();
  rs.AbsolutePosition(2);
  EXPECT_EQ(log.Joined(), "");  // already there
  client.cancel_moves = true;
  rs.AbsolutePosition(3);
  EXPECT_EQ(log.Joined(), "MoveRecordBefore");  // cancelled: no After events
  EXPECT_EQ(rs.AbsolutePosition(), 2);
  client.cancel_moves = false;
  Execute({"DELETE FROM Items"});
  rs.Item("Qty")->IsSum = true;
  log.Clear();
  EXPECT_FALSE(rs.InitDataSource());  // an empty table: no rows, and the load's events
  EXPECT_EQ(log.Joined(), "SysDataSourceInit,DataSourceInit,RecordPointerChange");
  EXPECT_EQ(rs.Rows(), 0);
  EXPECT_EQ(internal::RecordsetAccess::State(rs).edit_marks.size(), 1u);
  EXPECT_EQ(rs.AbsolutePosition(), 2);  // a load leaves the pointer as it was
  EXPECT_TRUE(rs.MoveFirst());
  EXPECT_TRUE(rs.MoveLast());
  rs.Rows(0);                       // the Rows setter brings it into range
  EXPECT_FALSE(rs.MovePrevious());  // row 0 asks for row -1, which is accepted
  EXPECT_EQ(rs.AbsolutePosition(), -1);
}

TEST_P(RecordsetNavigation, UnsavedEditKeepsTheRowButStillRaisesTheAfterEvents) {
  Load();
  ASSERT_FALSE(rs.Modify("Qty", Variant(int32_t{5})));
  client.answer = E_Defeat;
  log.Clear();
  rs.AbsolutePosition(3);
  EXPECT_EQ(rs.AbsolutePosition(), 1);
  EXPECT_EQ(log.Joined(),
            "MoveRecordBefore,UpdateRecordBefore,UserUpdateRecord,SysMoveRecordAfter,"
            "MoveRecordAfter,RecordPointerChange");
  client.answer = E_OtherErr;  // rolled back: the target moves up by one
  rs.AbsolutePosition(3);
  EXPECT_EQ(rs.AbsolutePosition(), 2);
}

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

TEST_P(RecordsetSelection, EveryOptionMarksItsRowsOnceThePendingEditIsSaved) {
  Load();
  EXPECT_TRUE(rs.GetSelectRow());  // S_None: the current row counts as selected
  rs.AbsolutePosition(5);
  log.Clear();
  EXPECT_FALSE(rs.SysSetMutliSelectRows(false, 2, Shift));
  EXPECT_TRUE(log.Saw("UpdateRecordBefore"));
  EXPECT_EQ(log.names.back(), "ChangeSelectRows");
  EXPECT_EQ(rs.SelectState(), S_Multi);
  const struct {
    bool select;
    int32_t row;
    Enum_SelectRow how;
    const char* marks;
    const char* events;
  } steps[] = {
      {false, 2, Shift, "011110", nullptr},  // from the anchor at 5, either direction
      {true, 6, Shift, "000011", nullptr},
      {true, 2, Ctrl, "010011", nullptr},
      {false, 5, Ctrl, "010001", nullptr},
      {true, 6, None, "000001", "ChangeSelectRows"},  // S_Multi before: announced, no save
      {true, 0, None, "000010", ""},                  // the current row
      {true, 3, static_cast<Enum_SelectRow>(7), "000010", ""},
  };
  for (const auto& s : steps) {
    log.Clear();
    rs.SysSetMutliSelectRows(s.select, s.row, s.how);
    EXPECT_EQ(Marks(), s.marks) << s.row;
    if (s.events) {
      EXPECT_EQ(log.Joined(), s.events) << s.row;
    }
  }
  EXPECT_EQ(rs.SelectState(), S_None);
  rs.SysSetMutliSelectRows(true, 2, Ctrl);
  EXPECT_FALSE(rs.InvertSelectRows());
  EXPECT_EQ(Marks(), "101101");
  EXPECT_FALSE(rs.SelectAllRows());
  EXPECT_EQ(Marks(), "111111");
  log.Clear();
  EXPECT_FALSE(rs.ClearSelectRows());
  EXPECT_EQ(log.Joined(), "ChangeSelectRows");
  EXPECT_EQ(Marks(), "000000");
  EXPECT_EQ(rs.SelectState(), S_None);
  // While an edit waits to be saved, no selection changes.
  ASSERT_FALSE(rs.Modify("Qty", Variant(int32_t{5})));
  client.answer = E_Defeat;
  log.Clear();
  rs.SysSetMutliSelectRows(true, 2, Ctrl);
  rs.SysSetMutliSelectRows(true, 3, Shift);
  rs.SelectAllRows();
  rs.InvertSelectRows();
  EXPECT_FALSE(log.Saw("ChangeSelectRows"));
  EXPECT_EQ(Marks(), "000000");
  EXPECT_EQ(rs.SelectState(), S_None);
}

TEST_P(RecordsetSelection, EditMarksFollowSetEditAndLockedUnlessALockFieldOwnsThem) {
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
  rs.Item("Qty")->FieldType = F_Locked;
  Load();
  EXPECT_FALSE(rs.SetEdit(false, 2));
  EXPECT_EQ(ui.LastText(), "Qty是Edit(),不能用SetEdit直接更改Edit()");
  EXPECT_TRUE(rs.GetEdit(2));
}

VARNEL_ON_EVERY_PROVIDER(RecordsetNavigation);
VARNEL_ON_EVERY_PROVIDER(RecordsetSelection);

}  // namespace
}  // namespace varnel::testing
