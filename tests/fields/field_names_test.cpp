// The words of field settings: names, the patterns that mention them, and the
// words that ask for the current date.
#include "fields/field_names.h"

#include <gtest/gtest.h>

#include "fields/current_date_word.h"
#include "varnel/varnel.h"

namespace varnel::internal {
namespace {

TEST(FieldNames, NowOrTodayInAnyCaseWithBlanksAroundAsksForTheCurrentDate) {
  const std::pair<Variant, bool> cases[] = {
      {Variant("Today"), true},    {Variant(" toDAY "), true}, {Variant("NOW"), true},
      {Variant("\tnow \n"), true}, {Variant("to day"), false}, {Variant("Todays"), false},
      {Variant("now()"), false},   {Variant(""), false},       {Variant(Date{37747.0}), false},
      {Variant::Null(), false},    {Variant(), false},         {Variant(int32_t{0}), false},
  };
  for (const auto& [value, asks] : cases) {
    EXPECT_EQ(IsCurrentDateWord(value), asks)
        << value.TypeName() << " " << Concat(value, "").ToString();
  }
}

TEST(FieldNames, MentionIsACaseSensitiveContainmentByPattern) {
  const struct {
    const char* text;
    const char* name;
    bool mentioned;
  } cases[] = {
      {"Qty*Price", "Qty", true},   {"QtyTotal*2", "Qty", true},  // over-triggering by design
      {"qty*2", "Qty", false},                                    // exact, as the evaluator reads
      {"Price*2", "Qty", false},    {"", "Qty", false},           {"A1+B2", "A#", true},
      {"AB+B2", "A#", false},                                 // # one digit
      {"X_Y", "X?Y", true},         {"单价*2", "单?", true},  // ? one whole character
      {"Rate*Amount", "R*t", true}, {"cat", "[bc]at", true},      {"hat", "[!h]at", false},
      {"Rate", "[A-Z]ate", true},   {"a[b", "a[b", true},          // an unclosed bracket is plain
      {"Total", "", true},          {"Price*Rate", "P*z", false},  // a * inside goes on matching
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.text) + " / " + c.name);
    EXPECT_EQ(ContainsNamePattern(c.text, c.name), c.mentioned);
  }
}

}  // namespace
}  // namespace varnel::internal
