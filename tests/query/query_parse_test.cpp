#include <gtest/gtest.h>

#include "query/query_engine.h"
#include "query_fixture.h"

namespace varnel::testing {
namespace {

using internal::QueryFault;

TEST(QueryParse, RecordsTheFirstTermThatFailedAndWhere) {
  const struct {
    Enum_FieldType type;
    const char* query;
    QueryFault fault;
    size_t term;
    size_t offset;
  } cases[] = {
      {F_Numeral, "5 AND x OR y", QueryFault::kUnreadableValue, 2, 6},
      {F_Numeral, "1 or 2 AND ", QueryFault::kEmptyTerm, 3, 11},
      {F_Numeral, "<=", QueryFault::kEmptyTerm, 1, 0},
      {F_Currency, "NOT x <= 5", QueryFault::kUnexpectedText, 1, 0},
      {F_Date, "NULL 5/6/2003", QueryFault::kUnexpectedText, 1, 0},
      {F_Text, "a AND  ", QueryFault::kEmptyTerm, 2, 7},
      {F_Numeral, ">=1 AND <2", QueryFault::kNone, 0, 0},
  };
  for (const auto& c : cases) {
    QueryField f(c.type);
    f.field->QueryValue = c.query;
    internal::QueryParse parse(f.field->QueryValue);
    const auto translate = c.type == F_Numeral    ? internal::TranslateNumber
                           : c.type == F_Currency ? internal::TranslateCurrency
                           : c.type == F_Date     ? internal::TranslateDate
                                                  : internal::TranslateText;
    EXPECT_EQ(translate(*f.field, parse).has_value(), c.fault == QueryFault::kNone) << c.query;
    EXPECT_EQ(parse.fault(), c.fault) << c.query;
    EXPECT_EQ(parse.term(), c.term) << c.query;
    EXPECT_EQ(parse.offset(), c.offset) << c.query;
  }
}

}  // namespace
}  // namespace varnel::testing
