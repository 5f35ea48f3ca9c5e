// Moving the current row: the events, the save of a pending edit, the refusals.
#include "source_fixture.h"

namespace varnel::testing {
namespace {

using RecordsetNavigation = SourceTest;

// The navigation events only (UpdateRecord's own events are its business).
std::string Moves(const EventLog& log) {
  std::string out;
  for (const std::string& name : log.names) {
    if (name.find("Move") != std::string::npos || name == "RecordPointerChange") {
      out += (out.empty() ? "" : ",") + name;
    }
  }
  return out;
}

TEST_P(RecordsetNavigation, MovesWalkTheRowsWithTheirEvents) {
  Load();
  EXPECT_FALSE(rs.MoveLast());
  EXPECT_EQ(rs.AbsolutePosition(), 3);
  EXPECT_EQ(Moves(log), "MoveRecordBefore,SysMoveRecordAfter,MoveRecordAfter,RecordPointerChange");
  EXPECT_TRUE(log.Saw("UpdateRecordBefore"));  // a move saves first
  EXPECT_FALSE(rs.MovePrevious());
  EXPECT_EQ(rs.AbsolutePosition(), 2);
  EXPECT_FALSE(rs.MoveFirst());
  EXPECT_FALSE(rs.MoveNext());
  EXPECT_EQ(rs.AbsolutePosition(), 2);
  log.Clear();
  rs.AbsolutePosition(2);
  EXPECT_EQ(log.Joined(), "");  // already there
}

TEST_P(RecordsetNavigation, MoveBeyondTheEndsReportsNoCurrentRecord) {
  Load();
  EXPECT_TRUE(rs.MovePrevious());
  rs.AbsolutePosition(3);
  EXPECT_TRUE(rs.MoveNext());
  EXPECT_EQ(rs.AbsolutePosition(), 3);
  ASSERT_EQ(ui.shown().size(), 2u);
  EXPECT_EQ(ui.shown()[1].kind, ShownMessage::Error);
  EXPECT_EQ(ui.LastText(), "No current record.");
  Execute({"DELETE FROM Items"});
  Load();
  EXPECT_TRUE(rs.MoveFirst());
  EXPECT_TRUE(rs.MoveLast());
  EXPECT_FALSE(rs.MovePrevious());  // row 0 asks for row -1, which is accepted
  EXPECT_EQ(rs.AbsolutePosition(), -1);
}

TEST_P(RecordsetNavigation, CancelledMoveRaisesNoAfterEvents) {
  Load();
  answering.cancel_moves = true;
  rs.AbsolutePosition(3);
  EXPECT_EQ(log.Joined(), "MoveRecordBefore");
  EXPECT_EQ(rs.AbsolutePosition(), 1);
}

TEST_P(RecordsetNavigation, UnsavedEditKeepsTheRowButStillRaisesTheAfterEvents) {
  Load();
  ASSERT_FALSE(rs.Modify("Qty", Variant(int32_t{5})));
  answering.answer = E_Defeat;
  log.Clear();
  rs.AbsolutePosition(3);
  EXPECT_EQ(rs.AbsolutePosition(), 1);
  EXPECT_EQ(Moves(log), "MoveRecordBefore,SysMoveRecordAfter,MoveRecordAfter,RecordPointerChange");
  answering.answer = E_OtherErr;  // rolled back: the target moves up by one
  rs.AbsolutePosition(3);
  EXPECT_EQ(rs.AbsolutePosition(), 2);
}

TEST_P(RecordsetNavigation, NothingMovesAfterAFailedOpen) {
  rs.TableName = "NoSuchTable";
  rs.InitDataSource();
  log.Clear();
  for (auto move : {&ClsRecordset::MoveFirst, &ClsRecordset::MovePrevious, &ClsRecordset::MoveNext,
                    &ClsRecordset::MoveLast}) {
    EXPECT_FALSE((rs.*move)());
  }
  EXPECT_EQ(log.Joined(), "");
}

VARNEL_ON_EVERY_PROVIDER(RecordsetNavigation);

}  // namespace
}  // namespace varnel::testing
