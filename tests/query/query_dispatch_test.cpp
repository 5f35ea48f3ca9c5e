#include <gtest/gtest.h>

#include "query_fixture.h"

namespace varnel::testing {
namespace {

TEST(QueryDispatch, BlankQueryTextAddsNoConditionForEveryKind) {
  for (Enum_FieldType type : {F_Other, F_Boolean, F_Date, F_Text, F_Currency, F_Numeral,
                              F_AutoCoding, F_Locked, F_MultiMode}) {
    QueryField f(type);
    EXPECT_EQ(f.Condition(""), "") << type;
    EXPECT_EQ(f.Condition("   "), "") << type;
  }
}

TEST(QueryDispatch, AutoCodingAndMultiModeFieldsAreNeverQueried) {
  EXPECT_EQ(QueryField(F_AutoCoding).Condition("5"), "");
  EXPECT_EQ(QueryField(F_MultiMode).Condition("5"), "");
}

TEST(QueryDispatch, EachKindReachesItsTranslator) {
  EXPECT_EQ(QueryField(F_Numeral, "Qty").Condition("5"), "([Qty]=5)");
  EXPECT_EQ(QueryField(F_Currency, "Price").Condition("5"), "([Price]=5)");
  EXPECT_EQ(QueryField(F_Text, "Title").Condition("5"), "([Title] LIKE '%5%')");
  EXPECT_EQ(QueryField(F_Date, "Day").Condition("5/6/2003"), "([Day]='05/06/2003 00:00:00')");
  EXPECT_EQ(QueryField(F_Locked, "Lock").Condition("1"), "[Lock]<>0");
}

TEST(QueryDispatch, FieldWithoutConditionGivesEmptyTextNotEmpty) {
  QueryField f(F_Numeral, "Qty");
  f.field->QueryValue = "abc";
  EXPECT_TRUE(MdlQuery::QueryNumber(*f.field).IsEmpty());
  EXPECT_EQ(MdlQuery::QueryCondition(*f.field), Variant(""));
}

TEST(QueryBoolean, OnlyZeroAndOneAreUnderstood) {
  const struct {
    const char* query;
    const char* sql;
  } cases[] = {{"1", "[Paid]<>0"}, {"0", "[Paid]=0"}, {"true", ""},
               {"-1", ""},         {" 1", ""},        {"yes", ""}};
  for (const auto& c : cases) {
    EXPECT_EQ(QueryField(F_Boolean, "Paid").Condition(c.query), c.sql) << c.query;
  }
}

TEST(QueryOther, RawTextIsTakenWholeAndUnquoted) {
  EXPECT_EQ(QueryField(F_Other, "Code").Condition("A'B"), "[Code]='A'B'");
  EXPECT_EQ(QueryField(F_Other, "Code").Condition(" a AND b"), "[Code]=' a AND b'");
}

TEST(QuoteText, TrimsTextAndDoublesEveryQuote) {
  EXPECT_EQ(MdlQuery::QuoteText(Variant("  O'Brien's ")), "O''Brien''s");
  EXPECT_EQ(MdlQuery::QuoteText(Variant("''")), "''''");
  EXPECT_EQ(MdlQuery::QuoteText(Variant(int32_t{12})), "12");
  EXPECT_EQ(MdlQuery::QuoteText(Variant::Null()), "");
}

}  // namespace
}  // namespace varnel::testing
