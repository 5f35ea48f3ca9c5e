// The column total of a summed field follows each stored value by its
// difference, and always equals what a recount of the column gives.
#include <gtest/gtest.h>

#include <random>

#include "fields/field_access.h"
#include "recordset/recordset_state.h"
#include "recordset/row_store.h"
#include "varnel/varnel.h"

namespace varnel {
namespace {

constexpr int32_t kRows = 300;

// The total that a recount of field's column gives, counted in a recordset
// of its own so that the recount leaves field's bookkeeping alone.
Variant RecountOf(const ClsFields& field) {
  ClsRecordset mirror;
  auto copy = mirror.Add("Copy");
  copy->FieldType = field.FieldType;
  copy->IsSum = true;
  internal::FieldAccess::Values(*copy) = internal::FieldAccess::Values(field);
  internal::RecomputeSum(internal::RecordsetAccess::State(mirror), 0);
  return copy->SumValue;
}

// What the random changes store: each kind of column gets values of its own.
enum class Mix { SmallWhole, LargeWhole, CurrencyField, Mixed };

Variant RandomValue(std::mt19937& random, Mix mix) {
  const auto pick = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
  const auto whole = [&](int32_t bound) {
    return static_cast<int32_t>(static_cast<int64_t>(random() % (2u * bound + 1)) - bound);
  };
  switch (pick(mix == Mix::LargeWhole ? 30 : 10)) {
    case 0:
      return Variant();
    case 1:
      return Variant::Null();
    case 2:
      return mix == Mix::LargeWhole ? Variant(whole(1200000000)) : Variant("word");
    case 3:
      return mix == Mix::LargeWhole ? Variant(whole(2000000000)) : Variant(pick(2) == 0);
    case 4:
      return mix == Mix::SmallWhole || mix == Mix::LargeWhole ? Variant(int16_t(whole(300)))
                                                              : Variant(whole(1000) / 8.0);
    case 5:
      return mix == Mix::Mixed || mix == Mix::CurrencyField ? Variant(Currency{whole(99999999)})
                                                            : Variant(Date{37747.0});
    case 6:
      return mix == Mix::Mixed ? Variant(std::to_string(whole(500)) + ".25") : Variant(whole(5));
    default:
      return mix == Mix::LargeWhole ? Variant() : Variant(whole(1000));
  }
}

// Stores a value of the same field in another row from ValueChange, now and
// then, so that totals also follow changes made while a change propagates.
class NestedWriter : public ClsRecordsetEvents {
 public:
  NestedWriter(ClsFields& field, std::mt19937& random, Mix mix)
      : field_(field), random_(random), mix_(mix) {}
  void ValueChange(int32_t, int32_t) override {
    if (busy_ || random_() % 4 != 0) {
      return;
    }
    busy_ = true;
    field_.SetValue(RandomValue(random_, mix_), static_cast<int32_t>(random_() % kRows) + 1);
    busy_ = false;
  }

 private:
  ClsFields& field_;
  std::mt19937& random_;
  Mix mix_;
  bool busy_ = false;
};

TEST(ColumnTotal, RandomChangesLeaveTheTotalOfARecount) {
  const struct {
    Mix mix;
    Enum_FieldType type;
  } cases[] = {{Mix::SmallWhole, F_Numeral},
               {Mix::LargeWhole, F_Numeral},
               {Mix::CurrencyField, F_Currency},
               {Mix::Mixed, F_Numeral}};
  for (const auto& c : cases) {
    SCOPED_TRACE(static_cast<int>(c.mix));
    std::mt19937 random(20030506u + static_cast<unsigned>(c.mix));
    ClsRecordset rs;
    auto field = rs.Add("Qty");
    field->FieldType = c.type;
    field->IsSum = true;
    rs.Rows(kRows);
    {
      internal::BulkScope bulk;  // a loaded column, then counted as a load counts it
      for (int32_t row = 1; row <= kRows; ++row) {
        field->SetValue(RandomValue(random, c.mix), row);
      }
    }
    internal::RecomputeAllSums(internal::RecordsetAccess::State(rs));
    NestedWriter writer(*field, random, c.mix);
    rs.Advise(&writer);
    for (int change = 0; change < 600; ++change) {
      const int32_t row = static_cast<int32_t>(random() % kRows) + 1;
      ASSERT_FALSE(field->SetValue(RandomValue(random, c.mix), row));
      ASSERT_EQ(field->SumValue, RecountOf(*field)) << "after change " << change;
    }
  }
}

// A value stored silently is seen by a recount only: a change whose total
// leaves it out was applied by its difference.
TEST(ColumnTotal, ExactTotalsFollowByTheDifferenceOthersAreRecounted) {
  const struct {
    Enum_FieldType type;
    Variant before;
    Variant after;
    Variant expected;  // the total after the change, the silent 100 left out or counted
  } cases[] = {
      {F_Numeral, Variant(int32_t{4}), Variant(int32_t{6}), Variant(int32_t{8})},
      {F_Numeral, Variant(int32_t{4}), Variant("word"), Variant(int32_t{2})},
      {F_Numeral, Variant(), Variant(int16_t{3}), Variant(int32_t{5})},
      {F_Currency, Variant(1.5), Variant("2.25"), Variant(Currency{42500})},
      {F_Numeral, Variant(int32_t{4}), Variant(2.5), Variant(104.5)},         // a Double addend
      {F_Numeral, Variant(0.5), Variant(int32_t{1}), Variant(int32_t{103})},  // a Double total
      {F_Numeral, Variant(int32_t{4}), Variant(Currency{10000}), Variant(Currency{1030000})},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.after.ToString());
    ClsRecordset rs;
    auto field = rs.Add("Qty");
    field->FieldType = c.type;
    field->IsSum = true;
    rs.Rows(3);
    field->SetValue(c.before, 1);
    field->SetValue(int32_t{2}, 2);
    {
      internal::BulkScope bulk;
      field->SetValue(int32_t{100}, 3);
    }
    field->SetValue(c.after, 1);
    EXPECT_EQ(field->SumValue, c.expected);
  }
}

TEST(ColumnTotal, TotalOfAWholeColumnStaysLongWhileNoRunningTotalOverflows) {
  // The recount of 2e9, 2e9, -2e9 passes 4e9 on the way: a Double total.
  ClsRecordset rs;
  auto field = rs.Add("Qty");
  field->FieldType = F_Numeral;
  field->IsSum = true;
  rs.Rows(3);
  field->SetValue(int32_t{2000000000}, 1);
  field->SetValue(int32_t{-2000000000}, 3);
  EXPECT_EQ(field->SumValue, Variant(int32_t{0}));
  field->SetValue(int32_t{2000000000}, 2);
  EXPECT_EQ(field->SumValue, Variant(2000000000.0));
  field->SetValue(Variant(), 1);
  EXPECT_EQ(field->SumValue, Variant(int32_t{0}));
}

}  // namespace
}  // namespace varnel
