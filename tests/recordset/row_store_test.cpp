// Whole-row operations on the value store: sizing, the pointer, insertion and
// erasure, row copies and the main field.
#include "recordset/row_store.h"

#include <gtest/gtest.h>

#include "fields/field_access.h"
#include "support/capture_ui.h"
#include "support/error_of.h"
#include "support/event_log.h"
#include "varnel/varnel.h"

namespace varnel {
namespace {

class RowStore : public ::testing::Test {
 protected:
  void SetUp() override {
    a = rs.Add("A");
    b = rs.Add("B");
    rs.Rows(3);
    for (int32_t row = 1; row <= 3; ++row) {
      a->SetValue(Variant(row * 10), row);
      b->SetValue(Variant("b" + std::to_string(row)), row);
    }
  }
  internal::RecordsetState& state() { return internal::RecordsetAccess::State(rs); }
  // Column A as text, "-" for Empty.
  std::string ColumnA() {
    std::string out;
    for (const Variant& v : internal::FieldAccess::Values(*a)) {
      out += (out.empty() ? "" : ",") + (v.IsEmpty() ? std::string("-") : CStr(v));
    }
    return out;
  }

  ClsRecordset rs;
  std::shared_ptr<ClsFields> a, b;
};

TEST_F(RowStore, ResizingKeepsValuesLeavesNewRowsUnmarkedAndTheRowsAndTheGetterClampThePointer) {
  state().edit_marks.assign(4, 1);
  rs.Rows(5);
  EXPECT_EQ(ColumnA(), "-,10,20,30,-,-");
  EXPECT_TRUE(rs.GetEdit(3));
  EXPECT_FALSE(rs.GetEdit(4) || rs.GetEdit(5) || rs.GetSelectRow(5));
  const int32_t cases[][3] = {{3, 2, 2}, {0, 2, 1}, {2, 4, 2}, {2, 0, 0}, {-1, 2, -1}};
  for (const auto& [before, rows, after] : cases) {
    rs.Rows(3);
    state().current_row = before;
    rs.Rows(rows);
    EXPECT_EQ(state().current_row, after) << before << " " << rows;
  }
  testing::CaptureScope capture;
  rs.Rows(-1);
  EXPECT_EQ(rs.Rows(), 2);
  EXPECT_EQ(capture.shown().size(), 1u);
  rs.Rows(3);  // the position getter clamps a stale pointer
  for (const auto& [stored, read] : {std::pair{7, 3}, {0, 1}, {-4, 1}, {2, 2}}) {
    state().current_row = stored;
    EXPECT_EQ(rs.AbsolutePosition(), read);
    EXPECT_EQ(state().current_row, read);
  }
  state().select_marks.clear();
  state().edit_marks.clear();
  state().current_row = -1;
  EXPECT_EQ(rs.AbsolutePosition(), -1);  // left alone while there are no rows
}

TEST_F(RowStore, InsertAndEraseShiftEveryColumnAndMarkAndRowValuesRoundTripSilently) {
  state().edit_marks = {0, 1, 1, 1};
  internal::InsertRow(state(), 2);
  EXPECT_EQ(ColumnA(), "-,10,-,20,30");
  EXPECT_EQ(state().edit_marks, (std::vector<uint8_t>{0, 1, 0, 1, 1}));
  internal::InsertRow(state(), 5);  // after the last row
  EXPECT_TRUE(b->GetValue(5).IsEmpty());
  state().edit_marks = {0, 1, 0, 1, 1, 0};
  internal::EraseRow(state(), 1);
  EXPECT_EQ(ColumnA(), "-,-,20,30,-");
  EXPECT_EQ(b->GetValue(2), Variant("b2"));
  EXPECT_EQ(state().edit_marks, (std::vector<uint8_t>{0, 0, 1, 1, 0}));
  for (int32_t at : {0, 6}) {
    EXPECT_EQ(testing::ErrorOf([&] { internal::InsertRow(state(), at); }).Number(), 9) << at;
  }
  EXPECT_THROW(internal::EraseRow(state(), 5), VbError);
  EXPECT_THROW(internal::WriteRowValues(state(), 5, {}), VbError);
  // Row values round-trip silently.
  testing::EventLog log;
  rs.Advise(&log);
  const std::vector<Variant> row2 = internal::RowValues(state(), 2);
  EXPECT_EQ(row2, (std::vector<Variant>{Variant(int32_t{20}), Variant("b2")}));
  internal::WriteRowValues(state(), 1, row2);
  EXPECT_EQ(b->GetValue(1), Variant("b2"));
  EXPECT_TRUE(log.names.empty());
  EXPECT_EQ(internal::RowValues(state(), 9), (std::vector<Variant>{Variant(), Variant()}));
  ClsRecordset empty;
  auto f = empty.Add("F");
  internal::InsertRow(internal::RecordsetAccess::State(empty), 1);
  EXPECT_EQ(internal::FieldAccess::Values(*f).size(), 2u);
}

TEST_F(RowStore, MainFieldIsTheFirstBooleanMarkedMainAndFieldsAreFoundByName) {
  auto money = rs.Add("Money");
  EXPECT_EQ(internal::MainFieldName(state()), "");
  a->IsMain = b->IsMain = money->IsMain = true;  // A is not Boolean
  b->FieldType = money->FieldType = F_Boolean;
  EXPECT_EQ(internal::MainFieldName(state()), "B");
  EXPECT_EQ(internal::FieldIndex(state(), Variant("b")), 1u);
  EXPECT_EQ(testing::ErrorOf([&] { internal::FieldIndex(state(), Variant("nope")); }).Number(), 5);
}

}  // namespace
}  // namespace varnel
