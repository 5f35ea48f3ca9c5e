#include "fields/current_date_word.h"

#include <gtest/gtest.h>

#include "varnel/varnel.h"

namespace varnel {
namespace {

TEST(CurrentDateWord, NowOrTodayInAnyCaseWithBlanksAroundAsksForTheCurrentDate) {
  const struct {
    Variant value;
    bool asks;
  } cases[] = {
      {Variant("Today"), true},    {Variant(" toDAY "), true}, {Variant("NOW"), true},
      {Variant("\tnow \n"), true}, {Variant("to day"), false}, {Variant("Todays"), false},
      {Variant("now()"), false},   {Variant(""), false},       {Variant(Date{37747.0}), false},
      {Variant::Null(), false},    {Variant(), false},         {Variant(int32_t{0}), false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(&c - cases);
    EXPECT_EQ(internal::IsCurrentDateWord(c.value), c.asks);
  }
}

}  // namespace
}  // namespace varnel
