#include <gtest/gtest.h>

#include "query_fixture.h"

namespace varnel::testing {
namespace {

struct TextCase {
  const char* query;
  const char* sql;  // "<Empty>": the field adds no condition
};

TEST(QueryText, TranslatesEveryKeywordAsTyped) {
  const TextCase cases[] = {
      {"smith", "([Title] LIKE '%smith%')"},
      {"O'Brien", "([Title] LIKE '%O''Brien%')"},
      {"not smith", "([Title] NOT  LIKE '%smith%')"},
      {"NOT LIKE smith", "([Title] NOT LIKE '%smith%')"},
      {"not   like  smith", "([Title] NOT LIKE '%smith%')"},
      {"like smith", "([Title] LIKE '%smith%')"},
      {"null", "([Title] is NULL or [Title]='')"},
      {"Not Null", "(not [Title] is NULL and not [Title]='')"},
      {"notnull", "(not [Title] is NULL and not [Title]='')"},
      {"NOT", "([Title] LIKE '%NOT%')"},
      {"LIKE", "([Title] LIKE '%LIKE%')"},
      {"50%_off", "([Title] LIKE '%50%_off%')"},
      {"  padded  ", "([Title] LIKE '%padded%')"},
  };
  for (const TextCase& c : cases) {
    EXPECT_EQ(QueryField(F_Text, "Title").Condition(c.query), c.sql) << c.query;
  }
}

TEST(QueryText, JoinsTermsWithTheConnectorsAsWritten) {
  const TextCase cases[] = {
      {"a AND b", "([Title] LIKE '%a%' and [Title] LIKE '%b%')"},
      {"a or b", "([Title] LIKE '%a%' or [Title] LIKE '%b%')"},
      {"a Or b aNd c", "([Title] LIKE '%a%' or [Title] LIKE '%b%' and [Title] LIKE '%c%')"},
      {"A AND  B", "([Title] LIKE '%A%' and [Title] LIKE '%B%')"},
      {"BRAND", "([Title] LIKE '%BRAND%')"},
      {"x AND OR y", "([Title] LIKE '%x%' and [Title] LIKE '%OR y%')"},
  };
  for (const TextCase& c : cases) {
    EXPECT_EQ(QueryField(F_Text, "Title").Condition(c.query), c.sql) << c.query;
  }
}

TEST(QueryText, OneTermWithoutPredicateDropsTheWholeField) {
  for (const char* query : {"x AND ", "x AND  AND y", "NOT LIKE", "a OR NOT LIKE   "}) {
    QueryField f(F_Text, "Title");
    f.field->QueryValue = query;
    EXPECT_TRUE(MdlQuery::QueryText(*f.field).IsEmpty()) << query;
    EXPECT_EQ(f.Condition(query), "") << query;
  }
}

}  // namespace
}  // namespace varnel::testing
