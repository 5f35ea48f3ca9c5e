#include "fields/field_names.h"

#include <gtest/gtest.h>

namespace varnel::internal {
namespace {

TEST(FieldNames, EqualityIgnoresAsciiCaseOnly) {
  EXPECT_TRUE(NamesEqual("Qty", "QTY"));
  EXPECT_TRUE(NamesEqual("单价", "单价"));
  EXPECT_FALSE(NamesEqual("Qty", "Qty1"));
  EXPECT_FALSE(NamesEqual("Qty", "Qtz"));
}

TEST(FieldNames, MentionIsACaseSensitiveContainmentByPattern) {
  const struct {
    const char* text;
    const char* name;
    bool mentioned;
  } cases[] = {
      {"Qty*Price", "Qty", true},   {"QtyTotal*2", "Qty", true},  // over-triggering by design
      {"qty*2", "Qty", false},                                    // exact, as the evaluator reads
      {"Price*2", "Qty", false},    {"", "Qty", false},          {"A1+B2", "A#", true},
      {"AB+B2", "A#", false},                                 // # one digit
      {"X_Y", "X?Y", true},         {"单价*2", "单?", true},  // ? one whole character
      {"Rate*Amount", "R*t", true}, {"cat", "[bc]at", true},     {"hat", "[!h]at", false},
      {"Rate", "[A-Z]ate", true},   {"a[b", "a[b", true},  // an unclosed bracket is plain
      {"Total", "", true},          {"Price*Rate", "P*z", false},  // a * inside goes on matching
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.text) + " / " + c.name);
    EXPECT_EQ(ContainsNamePattern(c.text, c.name), c.mentioned);
  }
}

}  // namespace
}  // namespace varnel::internal
