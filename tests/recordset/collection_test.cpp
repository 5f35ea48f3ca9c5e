#include <gtest/gtest.h>

#include "support/capture_ui.h"
#include "varnel/varnel.h"

namespace varnel {
namespace {

std::vector<std::string> NamesOf(const ClsRecordset& rs) {
  std::vector<std::string> names;
  for (const auto& field : rs) {
    names.push_back(field->Name);
  }
  return names;
}

TEST(FieldCollection, AddNumbersFieldsByPosition) {
  ClsRecordset rs;
  EXPECT_EQ(rs.Count(), 0);
  rs.Add("A");
  rs.Add("B");
  EXPECT_EQ(rs.Count(), 2);
  EXPECT_EQ(rs.Item("B")->Col, 2);
  EXPECT_EQ(rs.Item("b")->Parent, &rs);
  EXPECT_EQ(NamesOf(rs), (std::vector<std::string>{"A", "B"}));
}

TEST(FieldCollection, ItemByNameInAnyCaseOrByPosition) {
  ClsRecordset rs;
  auto a = rs.Add("Amount");
  auto b = rs.Add("Price");
  const struct {
    Variant key;
    std::shared_ptr<ClsFields> expected;
  } cases[] = {
      {Variant("Amount"), a},         {Variant("AMOUNT"), a},         {Variant("price"), b},
      {Variant(int32_t{1}), a},       {Variant(int16_t{2}), b},       {Variant(2.0), b},
      {Variant(int32_t{0}), nullptr}, {Variant(int32_t{3}), nullptr}, {Variant("Qty"), nullptr},
      {Variant(""), nullptr},         {Variant(), nullptr},           {Variant::Null(), nullptr},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.key.TypeName() + " " + (c.key.IsBlank() ? "" : c.key.ToString()));
    EXPECT_EQ(rs.Item(c.key), c.expected);
    EXPECT_EQ(rs[c.key], c.expected);
  }
}

TEST(FieldCollection, NamedFieldStartsWithItsInitialSettings) {
  ClsRecordset rs;
  auto f = rs.Add("Qty");
  EXPECT_TRUE(f->IsData);
  EXPECT_TRUE(f->Edit);
  EXPECT_TRUE(f->EnableNull);
  EXPECT_FALSE(f->IsSum);
  EXPECT_FALSE(f->Copy);
  EXPECT_TRUE(f->InputMax.IsNull());
  EXPECT_TRUE(f->InputMin.IsNull());
  EXPECT_TRUE(f->DefaultValue.IsNull());
  EXPECT_TRUE(f->SumValue.IsNull());
  EXPECT_EQ(f->FieldType, F_Other);
}

TEST(FieldCollection, UnnamedFieldKeepsTypeDefaults) {
  ClsRecordset rs;
  rs.Add("A");
  auto f = rs.Add();
  EXPECT_EQ(f->Col, 2);
  EXPECT_EQ(f->Parent, &rs);
  EXPECT_FALSE(f->IsData);
  EXPECT_FALSE(f->Edit);
  EXPECT_FALSE(f->EnableNull);
  EXPECT_TRUE(f->DefaultValue.IsEmpty());
  EXPECT_TRUE(f->SumValue.IsEmpty());
  EXPECT_EQ(rs.Item(int32_t{2}), f);
  EXPECT_EQ(rs.Item(""), nullptr);
}

TEST(FieldCollection, DuplicateNameIsRefusedAndReported) {
  ClsRecordset rs;
  testing::CaptureScope capture;
  auto first = rs.Add("Qty");
  EXPECT_EQ(rs.Add("QTY"), nullptr);
  EXPECT_EQ(rs.Count(), 1);
  EXPECT_EQ(rs.Item("qty"), first);
  ASSERT_EQ(capture.shown().size(), 1u);
  EXPECT_NE(capture.shown()[0].title.find("457"), std::string::npos);
}

TEST(FieldCollection, RemoveKeepsColOfLaterFields) {
  ClsRecordset rs;
  auto a = rs.Add("A");
  auto b = rs.Add("B");
  EXPECT_FALSE(rs.Remove("a"));
  EXPECT_EQ(rs.Item(int32_t{1}), b);
  EXPECT_EQ(b->Col, 2);
  EXPECT_EQ(a->Parent, nullptr);
  EXPECT_EQ(rs.Add("C")->Col, 2);  // Count + 1
  EXPECT_FALSE(rs.Remove(int32_t{2}));
  EXPECT_EQ(NamesOf(rs), (std::vector<std::string>{"B"}));
}

TEST(FieldCollection, RemoveOfUnknownFieldFailsQuietly) {
  ClsRecordset rs;
  testing::CaptureScope capture;
  rs.Add("A");
  EXPECT_TRUE(rs.Remove("Z"));
  EXPECT_TRUE(rs.Remove(int32_t{5}));
  EXPECT_EQ(rs.Count(), 1);
  EXPECT_TRUE(capture.shown().empty());
}

TEST(FieldCollection, ClearEmptiesAndAddStartsAgainAtOne) {
  ClsRecordset rs;
  rs.Add("A");
  rs.Add("B");
  EXPECT_FALSE(rs.Clear());
  EXPECT_EQ(rs.Count(), 0);
  EXPECT_EQ(rs.begin(), rs.end());
  EXPECT_EQ(rs.Add("C")->Col, 1);
}

TEST(FieldCollection, FieldAddedToALoadedRecordsetHasEveryRow) {
  ClsRecordset rs;
  rs.Add("A");
  rs.Rows(5);
  auto late = rs.Add("Late");
  EXPECT_TRUE(late->GetValue(5).IsEmpty());
  EXPECT_FALSE(late->SetValue(int32_t{1}, 5));
  EXPECT_EQ(late->GetValue(5), Variant(int32_t{1}));
}

TEST(FieldCollection, DestroyingTheRecordsetReleasesHeldFields) {
  std::shared_ptr<ClsFields> kept;
  {
    ClsRecordset rs;
    kept = rs.Add("A");
    rs.Rows(1);
    kept->SetValue(int32_t{1}, 1);
  }
  EXPECT_EQ(kept->Parent, nullptr);
  EXPECT_TRUE(kept->SetValue(int32_t{2}, 1));
  EXPECT_TRUE(kept->GetValue(1).IsEmpty());
}

}  // namespace
}  // namespace varnel
