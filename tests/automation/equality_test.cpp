// "New equals Old" across kinds, as the value store compares values, beside
// operator==, which holds for the same kind and value only.
#include <gtest/gtest.h>

#include <vector>

#include "varnel/variant.h"

namespace varnel {
namespace {

struct Case {
  Variant a;
  Variant b;
  bool equal;         // ValuesEqual
  bool same = false;  // operator==
};

TEST(ValuesEqual, ComparesNumbersTextAndDatesAsTheValueStoreNeedsAndOperatorEqualsByKind) {
  const std::vector<Case> cases = {
      {Variant(int16_t{1}), Variant(int32_t{1}), true, false},
      {Variant(int32_t{1}), Variant(1.0), true},
      {Variant(1.5), Variant(Currency{15000}), true},
      {Variant(0.1), Variant(Currency{1000}), true},
      {Variant(Currency{922337203685477580}), Variant(Currency{922337203685477581}), false},
      {Variant(int32_t{-1}), Variant(true), true},
      {Variant(true), Variant(Currency{-10000}), true},
      {Variant(1.0), Variant(1.0000001), false},
      {Variant(Date{37747.5}), Variant(37747.5), true, false},
      {Variant("abc"), Variant("ABC"), false},
      {Variant("abc "), Variant("abc"), false},
      {Variant(std::string(30, 'x')), Variant(std::string(30, 'x')), true, true},
      {Variant("1"), Variant(int32_t{1}), true},
      {Variant(int32_t{1000}), Variant("1,000"), true},
      {Variant("1.50"), Variant(Currency{15000}), true},
      {Variant("1.5x"), Variant(1.5), false},
      {Variant(""), Variant(int32_t{0}), false},
      {Variant("5/6/2003 12:00"), Variant(Date{37747.5}), true},
      {Variant("2003-05-06"), Variant(Date{37747.5}), false},
      {Variant(), Variant(), true, true},
      {Variant::Null(), Variant::Null(), true, true},
      {Variant(true), Variant(false), false},
      {Variant(), Variant::Null(), true},
      {Variant(), Variant(""), false},
      {Variant(), Variant(int16_t{0}), false},
      {Variant::Null(), Variant(false), false},
      {Variant(int64_t{9007199254740992}), Variant(int64_t{9007199254740993}), false},
      {Variant(int64_t{5}), Variant(int32_t{5}), true},
      {Variant("9007199254740993"), Variant(int64_t{9007199254740992}), false},
      {Variant("9,007,199,254,740,993"), Variant(int64_t{9007199254740993}), true},
      {Variant(CDec(Variant("1.50"))), Variant(Currency{15000}), true},
      {Variant(CDec(Variant("1234567890.1234567891"))),
       Variant(CDec(Variant("1234567890.1234567892"))), false},
      {Variant("1234567890.12345678910"), Variant(CDec(Variant("1234567890.1234567891"))), true},
      {Variant(CDec(Variant("0.5"))), Variant(0.5), true},
      {Variant(CDec(Variant("-1"))), Variant(true), true},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(ValuesEqual(c.a, c.b), c.equal) << c.a.TypeName() << " vs " << c.b.TypeName();
    EXPECT_EQ(ValuesEqual(c.b, c.a), c.equal) << "reversed";
    EXPECT_EQ(c.a == c.b && c.b == c.a, c.same) << c.a.TypeName() << " == " << c.b.TypeName();
  }
}

}  // namespace
}  // namespace varnel
