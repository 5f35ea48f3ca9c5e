#include "recordset/row_store.h"

#include <gtest/gtest.h>

#include "fields/field_access.h"
#include "support/capture_ui.h"
#include "support/event_log.h"
#include "varnel/varnel.h"

namespace varnel {
namespace {

using internal::RecordsetAccess;
using internal::RecordsetState;

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
  RecordsetState& state() { return RecordsetAccess::State(rs); }
  std::vector<Variant> Column(const ClsFields& f) { return internal::FieldAccess::Values(f); }

  ClsRecordset rs;
  std::shared_ptr<ClsFields> a;
  std::shared_ptr<ClsFields> b;
};

TEST_F(RowStore, GrowingKeepsValuesAndLeavesNewRowsUnmarked) {
  state().edit_marks.assign(4, 1);
  rs.Rows(5);
  EXPECT_EQ(rs.Rows(), 5);
  EXPECT_EQ(a->GetValue(3), Variant(int32_t{30}));
  EXPECT_TRUE(a->GetValue(5).IsEmpty());
  EXPECT_FALSE(rs.GetEdit(4));
  EXPECT_FALSE(rs.GetEdit(5));
  EXPECT_FALSE(rs.GetSelectRow(5));
  EXPECT_TRUE(rs.GetEdit(3));
}

TEST_F(RowStore, ResizingBringsThePointerIntoRange) {
  const struct {
    int32_t pointer_before;
    int32_t rows;
    int32_t pointer_after;
  } cases[] = {{3, 2, 2}, {0, 2, 1}, {2, 4, 2}, {2, 0, 0}, {-1, 2, -1}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.pointer_before);
    rs.Rows(3);
    state().current_row = c.pointer_before;
    rs.Rows(c.rows);
    EXPECT_EQ(state().current_row, c.pointer_after);
  }
}

TEST_F(RowStore, NegativeRowCountIsReportedAndChangesNothing) {
  testing::CaptureScope capture;
  rs.Rows(-1);
  EXPECT_EQ(rs.Rows(), 3);
  ASSERT_EQ(capture.shown().size(), 1u);
}

TEST_F(RowStore, PositionGetterClampsAStalePointer) {
  const struct {
    int32_t stored;
    int32_t read;
  } cases[] = {{7, 3}, {0, 1}, {-4, 1}, {2, 2}};
  for (const auto& c : cases) {
    state().current_row = c.stored;
    EXPECT_EQ(rs.AbsolutePosition(), c.read);
    EXPECT_EQ(state().current_row, c.read);
  }
  state().select_marks.clear();
  state().edit_marks.clear();
  state().current_row = -1;
  EXPECT_EQ(rs.Rows(), 0);
  EXPECT_EQ(rs.AbsolutePosition(), -1);  // left alone while there are no rows
}

TEST_F(RowStore, EraseRowMovesLaterRowsUpInEveryColumnAndMark) {
  state().edit_marks = {0, 1, 0, 1};
  internal::EraseRow(state(), 1);
  EXPECT_EQ(rs.Rows(), 2);
  EXPECT_EQ(Column(*a),
            (std::vector<Variant>{Variant(), Variant(int32_t{20}), Variant(int32_t{30})}));
  EXPECT_EQ(b->GetValue(1), Variant("b2"));
  EXPECT_EQ(state().edit_marks, (std::vector<uint8_t>{0, 0, 1}));
}

TEST_F(RowStore, InsertRowOpensAnEmptyUnmarkedRow) {
  state().edit_marks = {0, 1, 1, 1};
  internal::InsertRow(state(), 2);
  EXPECT_EQ(rs.Rows(), 4);
  EXPECT_EQ(a->GetValue(1), Variant(int32_t{10}));
  EXPECT_TRUE(a->GetValue(2).IsEmpty());
  EXPECT_EQ(a->GetValue(3), Variant(int32_t{20}));
  EXPECT_EQ(state().edit_marks, (std::vector<uint8_t>{0, 1, 0, 1, 1}));
  internal::InsertRow(state(), 5);  // after the last row
  EXPECT_EQ(rs.Rows(), 5);
  EXPECT_TRUE(b->GetValue(5).IsEmpty());
}

TEST(RowStoreEmpty, InsertIntoAnEmptyStoreMakesRowOne) {
  ClsRecordset rs;
  auto f = rs.Add("F");
  internal::InsertRow(RecordsetAccess::State(rs), 1);
  EXPECT_EQ(rs.Rows(), 1);
  EXPECT_EQ(internal::FieldAccess::Values(*f).size(), 2u);
}

TEST_F(RowStore, RowPositionsOutsideTheStoreRaiseSubscriptOutOfRange) {
  for (int32_t at : {0, 5}) {
    try {
      internal::InsertRow(state(), at);
      ADD_FAILURE() << at;
    } catch (const VbError& e) {
      EXPECT_EQ(e.Number(), 9);
    }
  }
  EXPECT_THROW(internal::EraseRow(state(), 4), VbError);
  EXPECT_THROW(internal::WriteRowValues(state(), 4, {}), VbError);
  EXPECT_EQ(rs.Rows(), 3);
}

TEST_F(RowStore, RowValuesRoundTripSilently) {
  testing::EventLog log;
  rs.Advise(&log);
  const std::vector<Variant> row2 = internal::RowValues(state(), 2);
  EXPECT_EQ(row2, (std::vector<Variant>{Variant(int32_t{20}), Variant("b2")}));
  internal::WriteRowValues(state(), 1, row2);
  EXPECT_EQ(b->GetValue(1), Variant("b2"));
  EXPECT_TRUE(log.names.empty());
  EXPECT_EQ(internal::RowValues(state(), 9), (std::vector<Variant>{Variant(), Variant()}));
}

TEST_F(RowStore, TotalsOfSummedFields) {
  auto money = rs.Add("Money");
  money->FieldType = F_Currency;
  money->IsSum = true;
  a->IsSum = true;
  b->IsSum = false;
  internal::WriteRowValues(state(), 1, {Variant(1.5), Variant(), Variant(Currency{12500})});
  internal::WriteRowValues(state(), 2, {Variant::Null(), Variant(), Variant(int32_t{2})});
  internal::WriteRowValues(state(), 3, {Variant("x"), Variant(), Variant("0.25")});
  internal::RecomputeAllSums(state());
  EXPECT_EQ(a->SumValue.ToDouble(), 1.5);
  EXPECT_EQ(money->SumValue, Variant(Currency{35000}));
  EXPECT_TRUE(b->SumValue.IsNull());
}

TEST_F(RowStore, EmptyColumnTotalsZero) {
  a->IsSum = true;
  rs.Rows(0);
  internal::RecomputeSum(state(), 0);
  EXPECT_EQ(a->SumValue.ToDouble(), 0);
}

TEST_F(RowStore, AutoCodingFieldsAreNumberedOneToRows) {
  auto code = rs.Add("Code");
  code->FieldType = F_AutoCoding;
  internal::NumberAutoCodingRows(state());
  EXPECT_EQ(code->GetValue(1), Variant(int32_t{1}));
  EXPECT_EQ(code->GetValue(3), Variant(int32_t{3}));
  EXPECT_EQ(a->GetValue(1), Variant(int32_t{10}));
}

TEST_F(RowStore, MainFieldIsTheFirstMainBooleanField) {
  EXPECT_EQ(internal::MainFieldName(state()), "");
  a->IsMain = true;  // not Boolean
  b->IsMain = true;
  b->FieldType = F_Boolean;
  auto later = rs.Add("Later");
  later->IsMain = true;
  later->FieldType = F_Boolean;
  EXPECT_EQ(internal::MainFieldName(state()), "B");
}

TEST_F(RowStore, UnknownFieldIndexRaisesFive) {
  EXPECT_EQ(internal::FieldIndex(state(), Variant("b")), 1u);
  try {
    internal::FieldIndex(state(), Variant("nope"));
    ADD_FAILURE();
  } catch (const VbError& e) {
    EXPECT_EQ(e.Number(), 5);
  }
}

}  // namespace
}  // namespace varnel
