// CStr, CDbl, CLng, CBool, CCur and CDate by the platform's rules.
#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "varnel/variant.h"

namespace varnel {
namespace {

TEST(VariantToString, WritesTheStandardTextForm) {
  struct Case {
    Variant value;
    const char* text;
  };
  const std::vector<Case> cases = {
      {Variant(), ""},
      {Variant(int16_t{-12}), "-12"},
      {Variant(int32_t{2147483647}), "2147483647"},
      {Variant(1.50), "1.5"},
      {Variant(-0.0), "0"},
      {Variant(0.1 + 0.2), "0.3"},
      {Variant(1e15), "1E+15"},
      {Variant(1e16), "1E+16"},
      {Variant(123456789012345.0), "123456789012345"},
      {Variant(1234567890123456.0), "1.23456789012346E+15"},
      {Variant(0.0001), "0.0001"},
      {Variant(0.00001), "1E-05"},
      {Variant(-0.000012), "-1.2E-05"},
      {Variant(1.5e-300), "1.5E-300"},
      {Variant(2.0 / 3.0), "0.666666666666667"},
      {Variant(Currency{37500}), "3.75"},
      {Variant(Currency{-1}), "-0.0001"},
      {Variant(Currency{120000}), "12"},
      {Variant(Currency{INT64_MIN}), "-922337203685477.5808"},
      {Variant(true), "True"},
      {Variant(false), "False"},
      {Variant(Date{37747.5}), "5/6/2003 12:00:00 PM"},
      {Variant(Date{37747}), "5/6/2003"},
      {Variant(Date{37747.0 + 13.0 / 24 + 5.0 / 1440 + 9.0 / 86400}), "5/6/2003 1:05:09 PM"},
      {Variant(Date{0.25}), "6:00:00 AM"},
      {Variant(Date{0}), "12:00:00 AM"},
      {Variant(Date{-1.25}), "12/29/1899 6:00:00 AM"},
      {Variant("text"), "text"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(CStr(c.value), c.text);
  }
}

TEST(VariantConversions, NumbersFromEveryKind) {
  EXPECT_EQ(Variant().ToDouble(), 0);
  EXPECT_EQ(Variant(true).ToDouble(), -1);
  EXPECT_EQ(Variant(Currency{12345}).ToDouble(), 1.2345);
  EXPECT_EQ(Variant(Date{37747.5}).ToDouble(), 37747.5);
  EXPECT_EQ(Variant(" -1,234.5e1 ").ToDouble(), -12345);
  EXPECT_EQ(Variant(2.5).ToLong(), 2);
  EXPECT_EQ(Variant(3.5).ToLong(), 4);
  EXPECT_EQ(Variant(-2.5).ToLong(), -2);
  EXPECT_EQ(Variant(Currency{25000}).ToLong(), 2);
  EXPECT_EQ(Variant(Currency{-35000}).ToLong(), -4);
  EXPECT_EQ(Variant("2147483647.4").ToLong(), 2147483647);
  EXPECT_EQ(Variant(-2147483648.5).ToLong(), INT32_MIN);
  EXPECT_EQ(Variant(1.23456).ToCurrency().Value, 12346);
  EXPECT_EQ(Variant(0.00005).ToCurrency().Value, 0);
  EXPECT_EQ(Variant("922337203685477.5807").ToCurrency().Value, INT64_MAX);
  EXPECT_EQ(Variant("-922337203685477.5808").ToCurrency().Value, INT64_MIN);
  EXPECT_EQ(Variant("1.23465").ToCurrency().Value, 12346);
  EXPECT_EQ(Variant("1.234651").ToCurrency().Value, 12347);
  EXPECT_EQ(Variant("1.5E3").ToCurrency().Value, 15000000);
  EXPECT_EQ(Variant("1E-20").ToCurrency().Value, 0);
  EXPECT_EQ(Variant(true).ToCurrency().Value, -10000);
  EXPECT_EQ(Variant(int32_t{-7}).ToCurrency().Value, -70000);
}

TEST(VariantConversions, BooleansFromEveryKind) {
  EXPECT_FALSE(Variant().ToBool());
  EXPECT_TRUE(Variant(int16_t{2}).ToBool());
  EXPECT_FALSE(Variant(0.0).ToBool());
  EXPECT_TRUE(Variant(Currency{1}).ToBool());
  EXPECT_TRUE(Variant(" TRUE ").ToBool());
  EXPECT_FALSE(Variant("false").ToBool());
  EXPECT_TRUE(Variant("-1").ToBool());
  EXPECT_FALSE(Variant("0").ToBool());
}

TEST(VariantConversions, DatesFromEveryKind) {
  EXPECT_EQ(Variant(37747.5).ToDate().Value, 37747.5);
  EXPECT_EQ(Variant(int32_t{2}).ToDate().Value, 2);
  EXPECT_EQ(Variant().ToDate().Value, 0);
  EXPECT_EQ(CDate(Variant("5/6/2003 12:00 PM")).Value, 37747.5);
  EXPECT_EQ(CDate(Variant("2003-05-06T12:00:00")).Value, 37747.5);
}

TEST(VariantConversions, FailuresRaiseTheirNumbers) {
  using Conversion = std::function<void()>;
  struct Case {
    const char* what;
    Conversion convert;
    int32_t number;
  };
  const std::vector<Case> cases = {
      {"CStr(Null)", [] { CStr(Variant::Null()); }, 94},
      {"CDbl(Null)", [] { Variant::Null().ToDouble(); }, 94},
      {"CLng(Null)", [] { Variant::Null().ToLong(); }, 94},
      {"CBool(Null)", [] { Variant::Null().ToBool(); }, 94},
      {"CCur(Null)", [] { Variant::Null().ToCurrency(); }, 94},
      {"CDate(Null)", [] { CDate(Variant::Null()); }, 94},
      {"CDbl(abc)", [] { Variant("abc").ToDouble(); }, 13},
      {"CDbl(empty text)", [] { Variant("").ToDouble(); }, 13},
      {"CDbl(1e400)", [] { Variant("1e400").ToDouble(); }, 6},
      {"CLng(2147483647.5)", [] { Variant(2147483647.5).ToLong(); }, 6},
      {"CLng(Currency 1e12)", [] { Variant(Currency{10000000000000000}).ToLong(); }, 6},
      {"CBool(yes)", [] { Variant("yes").ToBool(); }, 13},
      {"CCur(1e15)", [] { Variant(1e15).ToCurrency(); }, 6},
      {"CCur(text 1e15)", [] { Variant("1000000000000000").ToCurrency(); }, 6},
      {"CCur(abc)", [] { Variant("abc").ToCurrency(); }, 13},
      {"CDate(abc)", [] { CDate(Variant("abc")); }, 13},
      {"CDate(2/30/2003)", [] { CDate(Variant("2/30/2003")); }, 13},
      {"CDate(37747)", [] { CDate(Variant("37747")); }, 13},
      {"CDate(1e9)", [] { CDate(Variant(1e9)); }, 6},
  };
  for (const Case& c : cases) {
    try {
      c.convert();
      ADD_FAILURE() << c.what << ": no error";
    } catch (const VbError& error) {
      EXPECT_EQ(error.Number(), c.number) << c.what;
    }
  }
}

}  // namespace
}  // namespace varnel
