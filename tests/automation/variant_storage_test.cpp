// Storage of the Variant: kinds, accessors, inline and shared text, copies.
#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "varnel/variant.h"

namespace varnel {
namespace {

TEST(VariantStorage, EachConstructorGivesItsKindAndTypeName) {
  const std::tuple<Variant, VbVarType, const char*> rows[] = {
      {Variant(), vbEmpty, "Empty"},
      {Variant::Null(), vbNull, "Null"},
      {Variant(int16_t{7}), vbInteger, "Integer"},
      {Variant(int32_t{7}), vbLong, "Long"},
      {Variant(7.5), vbDouble, "Double"},
      {Variant(Currency{75000}), vbCurrency, "Currency"},
      {Variant(Date{37747.5}), vbDate, "Date"},
      {Variant("abc"), vbString, "String"},
      {Variant(std::string(40, 'x')), vbString, "String"},
      {Variant(true), vbBoolean, "Boolean"},
      {Variant(int64_t{7}), vbLongLong, "LongLong"},
      {Variant(Decimal{7, 0, 1, false}), vbDecimal, "Decimal"},
  };
  for (const auto& [value, type, name] : rows) {
    EXPECT_EQ(value.VarType(), type) << name;
    EXPECT_EQ(value.TypeName(), name);
  }
  // A Decimal's 102 bits share the 16 bytes with the tag and come back whole.
  const Decimal widest{UINT64_MAX, UINT32_MAX, 28, true};
  const Decimal kept = Variant(widest).AsDecimal();
  EXPECT_EQ(std::tie(kept.Lo, kept.Hi, kept.Scale, kept.Negative),
            std::tie(widest.Lo, widest.Hi, widest.Scale, widest.Negative));
  EXPECT_EQ(Variant(int64_t{INT64_MIN}).AsLongLong(), INT64_MIN);
}

TEST(VariantStorage, TextOfEveryLengthAndContentRoundTrips) {
  for (size_t length : {0, 1, 7, 8, 9, 13, 14, 15, 16, 100, 5000}) {
    std::string text;
    for (size_t i = 0; i < length; ++i) {
      text.push_back(static_cast<char>('a' + i % 26));
    }
    Variant value(text);
    EXPECT_TRUE(value.IsString());
    EXPECT_EQ(value.StringView(), text) << length;
    Variant copy = value;
    EXPECT_EQ(copy.StringView(), text);
    Variant moved = std::move(copy);
    EXPECT_EQ(moved.StringView(), text);
    EXPECT_TRUE(copy.IsEmpty());  // NOLINT: a moved-from Variant is Empty
  }
  // Regression: a default string_view has a null data pointer; it is empty text.
  EXPECT_TRUE(Variant(std::string_view()).IsString());
  EXPECT_EQ(Variant(std::string_view()).StringView(), "");
  std::string text("a\0b", 3);
  EXPECT_EQ(Variant(text).StringView(), text);
  EXPECT_EQ(Variant("价格和数量的合计金额").StringView(), "价格和数量的合计金额");
}

TEST(VariantStorage, CopiesShareLongTextAndAssignmentReleasesIt) {
  std::vector<Variant> values(10, Variant(std::string(50, 'z')));
  EXPECT_EQ(values[0].StringView().data(), values[1].StringView().data());
  values[3] = values[3];  // self-assignment keeps the text
  values[4] = Variant(int32_t{4});
  values[5] = std::move(values[6]);
  values[7] = "short";
  values.resize(20);
  EXPECT_EQ(values[3].StringView(), std::string(50, 'z'));
  EXPECT_EQ(values[4].AsLong(), 4);
  EXPECT_EQ(values[5].StringView(), std::string(50, 'z'));
  EXPECT_TRUE(values[6].IsEmpty());
  EXPECT_EQ(values[7].StringView(), "short");
  EXPECT_TRUE(values[19].IsEmpty());
}

}  // namespace
}  // namespace varnel
