// CStr, CDbl, CLng, CBool, CCur and CDate by the platform's rules.
#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <tuple>
#include <utility>

#include "support/error_of.h"
#include "varnel/variant.h"

namespace varnel {
namespace {

TEST(VariantToString, WritesTheStandardTextForm) {
  const std::pair<Variant, const char*> cases[] = {
      {Variant(), ""},
      {Variant(int16_t{-12}), "-12"},
      {Variant(1.50), "1.5"},
      {Variant(-0.0), "0"},
      {Variant(0.1 + 0.2), "0.3"},
      {Variant(1e15), "1E+15"},
      {Variant(1e16), "1E+16"},
      {Variant(123456789012345.0), "123456789012345"},
      {Variant(1234567890123456.0), "1.23456789012346E+15"},
      {Variant(0.0001), "0.0001"},
      {Variant(0.00001), "1E-05"},
      {Variant(1.5e-300), "1.5E-300"},
      {Variant(2.0 / 3.0), "0.666666666666667"},
      {Variant(Currency{37500}), "3.75"},
      {Variant(Currency{-1}), "-0.0001"},
      {Variant(Currency{INT64_MIN}), "-922337203685477.5808"},
      {Variant(true), "True"},
      {Variant(Date{37747.5}), "5/6/2003 12:00:00 PM"},
      {Variant(Date{37747}), "5/6/2003"},
      {Variant(Date{0.25}), "6:00:00 AM"},
      {Variant(Date{-1.25}), "12/29/1899 6:00:00 AM"},
      {Variant("text"), "text"},
      {Variant(int64_t{9007199254740993}), "9007199254740993"},
      {Variant(int64_t{INT64_MIN}), "-9223372036854775808"},
      {Variant(CDec(Variant("1234567890.1234567891"))), "1234567890.1234567891"},
      {Variant(CDec(Variant("1.50"))), "1.5"},
      {Variant(CDec(Variant("-1E-4"))), "-0.0001"},
      {Variant(CDec(Variant("79228162514264337593543950335"))), "79228162514264337593543950335"},
      {Variant(CDec(Variant("1.23456789012345678901234567891"))), "1.2345678901234567890123456789"},
      {Variant(CDec(Variant("-1E-29"))), "0"},
      {Variant(CDec(Variant(0.1 + 0.2))), "0.3"},
      {Variant(CDec(Variant(Currency{-12345}))), "-1.2345"},
  };
  for (const auto& [value, text] : cases) {
    EXPECT_EQ(CStr(value), text);
  }
  EXPECT_EQ(CStr(Variant(Date{37747.0 + 13.0 / 24 + 5.0 / 1440 + 9.0 / 86400})),
            "5/6/2003 1:05:09 PM");
}

TEST(VariantConversions, NumbersBooleansAndDatesFromEveryKind) {
  // A value, its CDbl, its CLng (rounding half to even) and its CCur (in ten-thousandths).
  const std::tuple<Variant, double, int32_t, int64_t> cases[] = {
      {Variant(), 0, 0, 0},
      {Variant(true), -1, -1, -10000},
      {Variant(int32_t{-7}), -7, -7, -70000},
      {Variant(Currency{25000}), 2.5, 2, 25000},
      {Variant(Currency{-35000}), -3.5, -4, -35000},
      {Variant(Date{37747.5}), 37747.5, 37748, 377475000},
      {Variant(" -1,234.5e1 "), -12345, -12345, -123450000},
      {Variant(3.5), 3.5, 4, 35000},
      {Variant(-2.5), -2.5, -2, -25000},
      {Variant(1.23456), 1.23456, 1, 12346},
      {Variant(0.00005), 0.00005, 0, 0},
      {Variant("2147483647.4"), 2147483647.4, 2147483647, 21474836474000},
      {Variant(-2147483648.5), -2147483648.5, INT32_MIN, -21474836485000},
      {Variant("1.23465"), 1.23465, 1, 12346},
      {Variant("-0.00015"), -0.00015, 0, -2},
      {Variant("1.234651"), 1.234651, 1, 12347},
      {Variant("1.5E3"), 1500, 1500, 15000000},
      {Variant("1E-20"), 1e-20, 0, 0},
      {Variant("0e99999"), 0, 0, 0},
  };
  for (const auto& [value, number, whole, currency] : cases) {
    EXPECT_EQ(value.ToDouble(), number) << CStr(value);
    EXPECT_EQ(value.ToLong(), whole) << CStr(value);
    EXPECT_EQ(value.ToCurrency().Value, currency) << CStr(value);
  }
  EXPECT_EQ(Variant("922337203685477.5807").ToCurrency().Value, INT64_MAX);
  EXPECT_EQ(Variant("-922337203685477.5808").ToCurrency().Value, INT64_MIN);
  EXPECT_EQ(Variant("123456789012345.6789").ToCurrency().Value, 1234567890123456789);
  for (const Variant& yes :
       {Variant(int16_t{2}), Variant(Currency{1}), Variant(" TRUE "), Variant("-1")}) {
    EXPECT_TRUE(yes.ToBool()) << CStr(yes);
  }
  for (const Variant& no : {Variant(), Variant(0.0), Variant("false"), Variant("0")}) {
    EXPECT_FALSE(no.ToBool()) << CStr(no);
  }
  // A value, its CLngLng (rounding half to even) and its CDbl.
  const std::tuple<Variant, int64_t, double> exact[] = {
      {Variant("9007199254740993"), 9007199254740993, 9007199254740992.0},
      {Variant(int64_t{-9007199254740993}), -9007199254740993, -9007199254740992.0},
      {Variant(CDec(Variant("2.5"))), 2, 2.5},
      {Variant(CDec(Variant("-3.5"))), -4, -3.5},
      {Variant(CDec(Variant("1234567890.1234567891"))), 1234567890, 1234567890.1234567891},
      {Variant(Currency{25000}), 2, 2.5},
      {Variant(-2.5), -2, -2.5},
      {Variant(true), -1, -1},
  };
  for (const auto& [value, whole, number] : exact) {
    EXPECT_EQ(CLngLng(value), whole) << CStr(value);
    EXPECT_EQ(value.ToDouble(), number) << CStr(value);
  }
  EXPECT_EQ(Variant(int64_t{-5}).ToLong(), -5);
  EXPECT_EQ(Variant(CDec(Variant("0.00005"))).ToCurrency().Value, 0);
  EXPECT_EQ(Variant(CDec(Variant("0.00015"))).ToCurrency().Value, 2);
  EXPECT_EQ(Variant(int64_t{1}).ToCurrency().Value, 10000);
  EXPECT_EQ(Variant(37747.5).ToDate().Value, 37747.5);
  EXPECT_EQ(Variant(int32_t{2}).ToDate().Value, 2);
  EXPECT_EQ(Variant().ToDate().Value, 0);
}

TEST(VariantConversions, FailuresRaiseTheirNumbers) {
  // What is converted, the conversion and the error number it raises.
  const std::tuple<const char*, std::function<void()>, int32_t> cases[] = {
      {"CStr(Null)", [] { CStr(Variant::Null()); }, 94},
      {"CDbl(Null)", [] { Variant::Null().ToDouble(); }, 94},
      {"CLng(Null)", [] { Variant::Null().ToLong(); }, 94},
      {"CBool(Null)", [] { Variant::Null().ToBool(); }, 94},
      {"CCur(Null)", [] { Variant::Null().ToCurrency(); }, 94},
      {"CDate(Null)", [] { CDate(Variant::Null()); }, 94},
      {"CDbl(abc)", [] { Variant("abc").ToDouble(); }, 13},
      {"CDbl(1e400)", [] { Variant("1e400").ToDouble(); }, 6},
      {"CCur(text overflow)", [] { Variant("922337203685477.5808").ToCurrency(); }, 6},
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
      {"CLngLng(2^63 text)", [] { CLngLng(Variant("9223372036854775808")); }, 6},
      {"CLngLng(9.3e18)", [] { CLngLng(Variant(9.3e18)); }, 6},
      {"CLngLng(Null)", [] { CLngLng(Variant::Null()); }, 94},
      {"CLngLng(abc)", [] { CLngLng(Variant("abc")); }, 13},
      {"CLng(LongLong 2^31)", [] { Variant(int64_t{2147483648}).ToLong(); }, 6},
      {"CCur(LongLong max)", [] { Variant(int64_t{INT64_MAX}).ToCurrency(); }, 6},
      {"CDec(Null)", [] { CDec(Variant::Null()); }, 94},
      {"CDec(abc)", [] { CDec(Variant("abc")); }, 13},
      {"CDec(2^96 text)", [] { CDec(Variant("79228162514264337593543950336")); }, 6},
      {"CDec(1e29)", [] { CDec(Variant(1e29)); }, 6},
      {"CStr(Date beyond the calendar)", [] { CStr(Variant(Date{1e300})); }, 6},
      {"Format(infinity)", [] { Format(Variant(std::numeric_limits<double>::infinity()), "0"); },
       6},
      {"CCur(Decimal 1e15)", [] { Variant(CDec(Variant("1E15"))).ToCurrency(); }, 6},
  };
  for (const auto& [what, convert, number] : cases) {
    EXPECT_EQ(testing::ErrorOf(convert).Number(), number) << what;
  }
}

}  // namespace
}  // namespace varnel
