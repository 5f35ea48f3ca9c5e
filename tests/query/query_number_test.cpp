#include <gtest/gtest.h>

#include "query_fixture.h"

namespace varnel::testing {
namespace {

struct Case {
  const char* query;
  const char* sql;  // "": the field adds no condition
};

void ExpectAll(Enum_FieldType type, Enum_NumType num_type, const char* name,
               std::initializer_list<Case> cases) {
  for (const Case& c : cases) {
    QueryField f(type, name);
    f.field->NumType = num_type;
    EXPECT_EQ(f.Condition(c.query), c.sql) << c.query;
  }
}

TEST(QueryNumber, EveryPrefixAsTyped) {
  ExpectAll(F_Numeral, N_Integer, "Qty",
            {
                {"NOT<=5", "([Qty] is null or not [Qty]<=5)"},
                {"not >= 5", "([Qty] is null or not [Qty]>=5)"},
                {"Not <> 5", "([Qty] is null or not [Qty]<>5)"},
                {"NOT=5", "([Qty] is null or not [Qty]=5)"},
                {"nOt  < 5", "([Qty] is null or not [Qty]<5)"},
                {"NOT>5", "([Qty] is null or not [Qty]>5)"},
                {"NOT > = 5", "([Qty] is null or not [Qty]>=5)"},
                {"NOTNULL", "(not [Qty] is NULL)"},
                {"not  null", "(not [Qty] is NULL)"},
                {"NOT IS NULL", "(not [Qty] is NULL)"},
                {"Null", "([Qty] is NULL)"},
                {"<=5", "([Qty]<=5)"},
                {">= 5", "([Qty]>=5)"},
                {"<>5", "([Qty]<>5)"},
                {"= 5", "([Qty]=5)"},
                {"<5", "([Qty]<5)"},
                {"> 5", "([Qty]>5)"},
                {"NOT 5", "([Qty] isnull or not [Qty]=5)"},
                {"5", "([Qty]=5)"},
            });
}

TEST(QueryNumber, WritesValuesInTheirStandardForm) {
  ExpectAll(F_Numeral, N_Float, "Qty",
            {
                {"1,000", "([Qty]=1000)"},
                {"1.50", "([Qty]=1.5)"},
                {"-2", "([Qty]=-2)"},
                {"<-2", "([Qty]<-2)"},
                {"+7", "([Qty]=7)"},
                {"1e3", "([Qty]=1000)"},
                {"1E+16", "([Qty]=1E+16)"},
                {".5", "([Qty]=0.5)"},
            });
}

TEST(QueryNumber, JoinsTermsAndDropsTheFieldWhenOneCannotBeRead) {
  ExpectAll(F_Numeral, N_Integer, "Qty",
            {
                {">=100 AND <200", "([Qty]>=100 and [Qty]<200)"},
                {"1 or 2 OR null", "([Qty]=1 or [Qty]=2 or [Qty] is NULL)"},
                {"5 AND x", ""},
                {"5 AND ", ""},
                {"<=", ""},
                {"NOT", ""},
                {"5; DELETE FROM Orders", ""},
                {"5' OR '1'='1", ""},
                {"NOT x <= 5", ""},
                {"NULL 5", ""},
                {"1e999", ""},
                {"0x10", ""},
            });
}

TEST(QueryNumber, PercentFieldReadsATrailingPercentSign) {
  ExpectAll(F_Numeral, N_Percent, "Rate",
            {
                {"50%", "([Rate]=0.5)"},
                {">=12.5 %", "([Rate]>=0.125)"},
                {"0.5", "([Rate]=0.5)"},
                {"NOT 50%", "([Rate] isnull or not [Rate]=0.5)"},
                {"%", ""},
                {"50%%", ""},
            });
}

TEST(QueryCurrency, EveryPrefixAsTyped) {
  ExpectAll(F_Currency, N_Integer, "Price",
            {
                {"NOT<=5", "([Price] is null or not [Price]<=5)"},
                {"NOT >=5", "([Price] is null or not [Price]>=5)"},
                {"not<>5", "([Price] is null or not [Price]<>5)"},
                {"NOT = 5", "([Price] is null or not [Price]=5)"},
                {"NOT<5", "([Price] is null or not [Price]<5)"},
                {"NOT>5", "([Price] is null or not [Price]>5)"},
                {"Not Null", "(not [Price] is NULL)"},
                {"NULL", "([Price] is NULL)"},
                {"<=5", "([Price]<=5)"},
                {">=5", "([Price]>=5)"},
                {"<>5", "([Price] is null or [Price]<>5)"},
                {"=5", "([Price]=5)"},
                {"<5", "([Price]<5)"},
                {">5", "([Price]>5)"},
                {"5", "([Price]=5)"},
                {"NOT 5", ""},
            });
}

TEST(QueryCurrency, ReadsCurrencySignsAndSeparators) {
  ExpectAll(F_Currency, N_Integer, "Price",
            {
                {"$1,234.50", "([Price]=1234.5)"},
                {">= $ 10", "([Price]>=10)"},
                {"-$5", "([Price]=-5)"},
                {"\xC2\xA5"
                 "12",
                 "([Price]=12)"},
                {"12\xE2\x82\xAC", "([Price]=12)"},
                {"0.00015", "([Price]=0.0002)"},
                {"$", ""},
                {"1000000000000000", ""},
                {"$5$", ""},
            });
}

}  // namespace
}  // namespace varnel::testing
