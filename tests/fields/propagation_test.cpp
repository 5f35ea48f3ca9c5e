// What a stored value sets off: computed fields, lock marks and column totals.
#include <gtest/gtest.h>

#include "change_sink.h"
#include "fields/field_access.h"
#include "recordset/recordset_state.h"
#include "varnel/varnel.h"

namespace varnel {
namespace {

class Propagation : public testing::ChangeTest {
 protected:
  std::shared_ptr<ClsFields> Computed(const std::string& name, const std::string& expression) {
    std::shared_ptr<ClsFields> field = rs.Add(name);
    field->ComputeString = expression;
    field->IsData = false;
    return field;
  }
  int ChangesOf(const ClsFields& field) const {
    return sink.Count("ValueChange(1," + std::to_string(field.Col) + ")");
  }
};

TEST_F(Propagation, ComputedFieldsFollowTheirRowOnceEvenWhenReferringToEachOther) {
  auto amount = Computed("Amount", "Qty*Price");
  auto a = Computed("A", "Qty+B");
  auto b = Computed("B", "A*2");
  auto lower = Computed("Lower", "qty*2");  // names are matched as the evaluator reads them
  price->SetValue(int32_t{4}, 1);
  sink.events.clear();
  qty->SetValue(int32_t{3}, 1);
  EXPECT_EQ(amount->GetValue(1).ToDouble(), 12);
  EXPECT_TRUE(amount->GetValue(2).IsEmpty());  // only the changed row
  EXPECT_EQ(ChangesOf(*a), 1);
  EXPECT_EQ(ChangesOf(*b), 1);
  EXPECT_EQ(a->GetValue(1).ToDouble(), 3);
  EXPECT_EQ(b->GetValue(1).ToDouble(), 6);
  EXPECT_TRUE(lower->GetValue(1).IsEmpty());
  EXPECT_EQ(ChangesOf(*lower), 0);
  EXPECT_TRUE(internal::RecordsetAccess::State(rs).recompute_chain.empty());
}

TEST_F(Propagation, ContainmentOverTriggersOnLongerNamesButNotInQueryMode) {
  auto total = rs.Add("QtyTotal");
  auto twice = Computed("Twice", "QtyTotal*2");
  total->SetValue(int32_t{5}, 1);
  {
    internal::BulkScope bulk;  // leave Twice stale
    total->SetValue(int32_t{6}, 1);
  }
  qty->SetValue(int32_t{1}, 1);  // mentions of "Qty" include "QtyTotal"
  EXPECT_EQ(twice->GetValue(1).ToDouble(), 12);
  qty->FieldType = F_Numeral;
  rs.EditStatus(E_Query);
  sink.events.clear();
  qty->SetValue(int32_t{4}, 1);
  EXPECT_EQ(sink.events, (std::vector<std::string>{"ValueQueryChange(Qty)"}));
  EXPECT_EQ(twice->QueryValue, "");
}

TEST_F(Propagation, LockFieldSetsTheRowsEditMarkOnAnyChangeOfTheRow) {
  auto lock = rs.Add("Lock");
  lock->FieldType = F_Locked;
  const std::pair<Variant, bool> cases[] = {
      {Variant(int32_t{1}), false}, {Variant(int32_t{0}), true}, {Variant("x"), false},
      {Variant(true), false},       {Variant(false), true},      {Variant("0"), true},
      {Variant(2.5), false},        {Variant::Null(), true},
  };
  for (const auto& [value, editable] : cases) {
    lock->SetValue(value, 2);
    EXPECT_EQ(rs.GetEdit(2), editable) << value.TypeName();
  }
  {
    internal::BulkScope bulk;
    lock->SetValue(int32_t{1}, 1);
  }
  internal::RecordsetAccess::State(rs).edit_marks[1] = 1;
  qty->SetValue(int32_t{5}, 1);
  EXPECT_FALSE(rs.GetEdit(1));
}

TEST_F(Propagation, ChangeTotalsTheSummedFieldStandingAtItsCol) {
  // After Remove, Col is not renumbered: Price keeps Col 2 while standing at
  // position 1, so a change of Price totals the field now at position 2.
  auto third = rs.Add("Third");
  third->IsSum = true;
  ASSERT_FALSE(rs.Remove("Qty"));
  internal::FieldAccess::Values(*third)[1] = Variant(int32_t{9});  // no total kept yet
  EXPECT_TRUE(third->SumValue.IsNull());
  price->SetValue(int32_t{1}, 1);
  EXPECT_EQ(third->SumValue.ToDouble(), 9);
}

}  // namespace
}  // namespace varnel
