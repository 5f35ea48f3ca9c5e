// The field collection: adding, finding, removing and clearing fields.
#include <gtest/gtest.h>

#include "support/capture_ui.h"
#include "varnel/varnel.h"

namespace varnel {
namespace {

std::string NamesOf(const ClsRecordset& rs) {
  std::string names;
  for (const auto& field : rs) {
    names += (names.empty() ? "" : ",") + field->Name + std::to_string(field->Col);
  }
  return names;
}

TEST(FieldCollection, ItemByNameInAnyAsciiCaseOrByPositionAndWhatAddSets) {
  ClsRecordset rs;
  auto a = rs.Add("Amount");
  auto b = rs.Add("单价");
  EXPECT_EQ(NamesOf(rs), "Amount1,单价2");
  EXPECT_EQ(b->Parent, &rs);
  const std::pair<Variant, std::shared_ptr<ClsFields>> cases[] = {
      {Variant("Amount"), a},         {Variant("AMOUNT"), a},         {Variant("单价"), b},
      {Variant(int32_t{1}), a},       {Variant(int16_t{2}), b},       {Variant(2.0), b},
      {Variant(int32_t{0}), nullptr}, {Variant(int32_t{3}), nullptr}, {Variant("Amount1"), nullptr},
      {Variant("Amounu"), nullptr},   {Variant(""), nullptr},         {Variant(), nullptr},
      {Variant::Null(), nullptr},
  };
  for (const auto& [key, expected] : cases) {
    SCOPED_TRACE(key.TypeName() + " " + (key.IsBlank() ? "" : key.ToString()));
    EXPECT_EQ(rs.Item(key), expected);
    EXPECT_EQ(rs[key], expected);
  }
  a->Name = "Total";  // the key stays the name given to Add
  EXPECT_EQ(rs.Item("Amount"), a);
  EXPECT_EQ(rs.Item("Total"), nullptr);
  // A named field takes Add's settings, an unnamed one the type defaults.
  auto named = rs.Add("Qty");  // the third field
  auto unnamed = rs.Add();
  EXPECT_TRUE(named->IsData && named->Edit && named->EnableNull);
  EXPECT_FALSE(named->IsSum || named->Copy);
  for (const Variant* v :
       {&named->InputMax, &named->InputMin, &named->DefaultValue, &named->SumValue}) {
    EXPECT_TRUE(v->IsNull());
  }
  EXPECT_EQ(named->FieldType, F_Other);
  EXPECT_EQ(rs.Item(int32_t{4}), unnamed);
  EXPECT_FALSE(unnamed->IsData || unnamed->Edit || unnamed->EnableNull);
  EXPECT_TRUE(unnamed->DefaultValue.IsEmpty() && unnamed->SumValue.IsEmpty());
  unnamed->Name = "Later";  // added without a name: reachable by position only
  EXPECT_EQ(rs.Item("Later"), nullptr);
}

// Remove keeps the Col of later fields and refuses duplicates and unknowns;
// fields follow the rows and outlive the recordset.
TEST(FieldCollection, RemoveClearAndFieldsThatFollowTheRowsAndOutliveTheRecordset) {
  std::shared_ptr<ClsFields> kept;
  {
    ClsRecordset rs;
    testing::CaptureScope capture;
    auto a = rs.Add("A");
    rs.Add("B");
    EXPECT_EQ(rs.Add("b"), nullptr);
    ASSERT_EQ(capture.shown().size(), 1u);
    EXPECT_NE(capture.shown()[0].title.find("457"), std::string::npos);
    EXPECT_TRUE(rs.Remove("Z"));  // quietly
    EXPECT_TRUE(rs.Remove(int32_t{5}));
    EXPECT_EQ(capture.shown().size(), 1u);
    EXPECT_FALSE(rs.Remove("a"));
    EXPECT_EQ(a->Parent, nullptr);
    EXPECT_EQ(rs.Add("C")->Col, 2);  // Count + 1
    EXPECT_EQ(NamesOf(rs), "B2,C2");
    EXPECT_FALSE(rs.Remove(int32_t{2}));
    EXPECT_EQ(NamesOf(rs), "B2");
    EXPECT_FALSE(rs.Clear());
    EXPECT_EQ(rs.Count(), 0);
    EXPECT_EQ(rs.begin(), rs.end());
    EXPECT_EQ(rs.Add("D")->Col, 1);
    rs.Rows(5);
    kept = rs.Add("Late");  // added to a loaded recordset: has every row
    EXPECT_TRUE(kept->GetValue(5).IsEmpty());
    EXPECT_FALSE(kept->SetValue(int32_t{1}, 5));
    EXPECT_EQ(kept->GetValue(5), Variant(int32_t{1}));
  }
  EXPECT_EQ(kept->Parent, nullptr);
  EXPECT_TRUE(kept->SetValue(int32_t{2}, 1));
  EXPECT_TRUE(kept->GetValue(1).IsEmpty());
}

}  // namespace
}  // namespace varnel
