// Calendar arithmetic, date texts, DateType cuts and Format patterns.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <tuple>
#include <utility>

#include "automation/calendar.h"
#include "varnel/variant.h"

namespace varnel {
namespace {

using internal::DateParts;

constexpr double kNoon = 37747.5;  // 2003-05-06 12:00:00

double Serial(int y, int m, int d, int h = 0, int n = 0, int s = 0) {
  return internal::MakeDate({y, m, d, h, n, s}).Value;
}

TEST(Calendar, SplitAndMakeAreInverseAndCutAndIsoTextRoundToTheSecond) {
  EXPECT_EQ(Serial(1899, 12, 30), 0);
  EXPECT_EQ(Serial(2003, 5, 6, 12), kNoon);
  EXPECT_EQ(Serial(1899, 12, 29, 6), -1.25);
  EXPECT_EQ(Serial(100, 1, 1), -657434);
  EXPECT_EQ(Serial(9999, 12, 31), 2958465);
  for (double serial : {0.0, 1.0, 59.0, 60.0, 61.0, kNoon, -1.25, -700.75, 2958465.5}) {
    DateParts p = internal::SplitDate(Date{serial});
    EXPECT_EQ(Serial(p.year, p.month, p.day, p.hour, p.minute, p.second), serial) << serial;
  }
  // CutDate rounds to the second first; the cuts of each DateType are tested
  // where fields load and edit dates.
  double late = Serial(2003, 5, 6, 23, 59, 59) + 0.6 / 86400;
  EXPECT_EQ(internal::CutDate(Date{late}, D_YMD).Value, Serial(2003, 5, 7));
  EXPECT_EQ(internal::CutDate(Date{-1.25}, D_YMD).Value, -1);
  EXPECT_EQ(IsoDate(Date{kNoon}), "2003-05-06 12:00:00");
  EXPECT_EQ(IsoDate(Date{-1.25}), "1899-12-29 06:00:00");
}

// CDate reads month-first dates, ISO dates and times; the rows marked ISO are
// read alike by the strict parser of the texts databases hold.
TEST(DateText, ReadsMonthFirstIsoAndTimesAndTheIsoParserOnlyIso) {
  const std::tuple<const char*, double, bool> cases[] = {
      {"5/6/2003", Serial(2003, 5, 6), false},
      {"5/6/03", Serial(2003, 5, 6), false},
      {"5/6/45", Serial(1945, 5, 6), false},
      {"5-6-2003", Serial(2003, 5, 6), false},
      {"2003/5/6", Serial(2003, 5, 6), false},
      {"2003-05-06", Serial(2003, 5, 6), true},
      {"5/6/2003 12:00", kNoon, false},
      {"5/6/2003 1:05:09 pm", Serial(2003, 5, 6, 13, 5, 9), false},
      {"5/6/2003 12:30 AM", Serial(2003, 5, 6, 0, 30), false},
      {"2003-05-06 12:00", kNoon, true},
      {"2003-05-06 12:00:00", kNoon, true},
      {"2003-05-06T12:00:00", kNoon, true},
      {"2003-05-06 12:00:00.5", kNoon + 0.5 / 86400, true},
      {"2003-05-06 12:00:00.250", kNoon + 0.25 / 86400, true},
      {"1899-12-29 06:00:00", -1.25, true},
      {"10:20", Serial(1899, 12, 30, 10, 20), true},
      {"10:20:30", Serial(1899, 12, 30, 10, 20, 30), true},
      {"9:05AM", Serial(1899, 12, 30, 9, 5), false},
      {"2/29/2000", Serial(2000, 2, 29), false},
      {"12/29/1899 6:00", -1.25, false},
  };
  for (const auto& [text, serial, iso] : cases) {
    EXPECT_EQ(CDate(Variant(text)).Value, serial) << text;
    Date out{-99};
    if (iso) {
      EXPECT_TRUE(internal::ParseIsoDate(text, std::strlen(text), out)) << text;
      EXPECT_EQ(out.Value, serial) << text;
    }
  }
  for (const char* bad :
       {"", "abc", "2003", "13/1/2003", "2/29/2001", "5/6/2003 25:00", "5/6/2003 10:60", "13:00 PM",
        "5/6/2003x", "5//2003", "10:", "1/1/99999", "5/6/2003 10:20:30 XM", "10.5"}) {
    EXPECT_FALSE(internal::ParseDateText(bad).has_value()) << bad;
  }
  for (const char* bad : {"", "2003-5-6", "2003-05-06 ", "2003-13-01", "2003-02-30", "24:00:00",
                          "2003-05-06 12:00:60", "2003-05-06Z", "12:00:00.", "5/6/2003"}) {
    Date out{-99};
    EXPECT_FALSE(internal::ParseIsoDate(bad, std::strlen(bad), out)) << bad;
    EXPECT_EQ(out.Value, -99);
  }
  // Without a year the date falls in the current one.
  EXPECT_GE(internal::SplitDate(CDate(Variant("5/6"))).year, 2024);
}

TEST(Format, WritesDateAndNumberPatterns) {
  const Variant t(Date{Serial(2003, 5, 6, 13, 5, 9)});
  // A value, a pattern and the value's text in it.
  const std::tuple<Variant, const char*, std::string> cases[] = {
      {t, "mm/dd/yyyy hh:nn:ss", "05/06/2003 13:05:09"},
      {t, "mm/dd/yyyy", "05/06/2003"},
      {t, "hh:nn:ss", "13:05:09"},
      {t, "yyyy-mm-dd hh:nn:00", "2003-05-06 13:05:00"},
      {t, "m/d/yy h:n:s", "5/6/03 13:5:9"},
      {t, "hh:mm", "13:05"},
      {t, "h:nn AM/PM", "1:05 PM"},
      {t, "dddd, mmmm d, yyyy", "Tuesday, May 6, 2003"},
      {t, "ddd dd-mmm-yy", "Tue 06-May-03"},
      {t, "YYYY\\y \"at\" hh", "2003y at 13"},
      {t, "y", "126"},
      {t, "Short Date", "5/6/2003"},
      {t, "Long Time", "1:05:09 PM"},
      {Variant(kNoon), "yyyy-mm-dd hh:nn", "2003-05-06 12:00"},
      {Variant("5/6/2003 12:00"), "yyyy-mm-dd", "2003-05-06"},
      {Variant("not a date"), "yyyy-mm-dd", "not a date"},
      {Variant::Null(), "yyyy-mm-dd", ""},
      {Variant(), "yyyy-mm-dd", ""},
      {Variant(Date{0.999999}), "mm/dd/yyyy hh:nn:ss", "12/31/1899 00:00:00"},
      {Variant(1234.5), "0.00", "1234.50"},
      {Variant(1234.5), "#,##0.00", "1,234.50"},
      {Variant(1234567.0), "#,##0", "1,234,567"},
      {Variant(2.5), "0", "3"},
      {Variant(1.005), "0.00", "1.01"},
      {Variant(0.5), "#.##", ".5"},
      {Variant(0.256), "0.0%", "25.6%"},
      {Variant(-0.001), "0.00", "0.00"},
      {Variant(-5.0), "0;(0)", "(5)"},
      {Variant(0.0), "0;(0);\"zero\"", "zero"},
      {Variant(Currency{12345678}), "Currency", "$1,234.57"},
      {Variant(-1.5), "Currency", "($1.50)"},
      {Variant(12345.678), "0.00E+00", "1.23E+04"},
      {Variant(0.000123), "0.0E-00", "1.2E-04"},
      {Variant("1,000"), "0.0", "1000.0"},
      {Variant("abc"), "0.0", "abc"},
      {Variant(true), "Yes/No", "Yes"},
      {Variant("abc"), "Yes/No", "abc"},
      {Variant("5/6/2003 12:00"), "General Date", "5/6/2003 12:00:00 PM"},
      {Variant(1.5), "", "1.5"},
      {Variant(1234.5), "Standard", "1,234.50"},
      {Variant(0.5), "Percent", "50.00%"},
      {Variant(1.5), "0\\", "2"},          // a trailing backslash escapes nothing
      {Variant(1.5), "0\"\\;\"", "2\\;"},  // a quoted backslash is no escape
      {Variant(1e308), "0%", "1" + std::string(310, '0') + "%"},
      {Variant(int64_t{1234567}), "#,##0", "1,234,567"},
      {Variant(int64_t{9007199254740993}), "General Number", "9007199254740993"},
      {Variant(CDec(Variant("2.5"))), "0.0", "2.5"},
      // every digit of the exact kinds; halves away from zero like the others
      {Variant(int64_t{9007199254740993}), "#,##0", "9,007,199,254,740,993"},
      {Variant(int64_t{-9007199254740993}), "0.00;(0.00)", "(9007199254740993.00)"},
      {Variant(INT64_MIN), "0", "-9223372036854775808"},
      {Variant(CDec(Variant("1234567890.1234567891"))), "0.0000000000", "1234567890.1234567891"},
      {Variant(CDec(Variant("1234567890.1234567891"))), "#,##0.0000", "1,234,567,890.1235"},
      {Variant(CDec(Variant("-0.00005"))), "0.0000", "-0.0001"},
      {Variant(CDec(Variant("-0.00004"))), "0.0000", "0.0000"},
      {Variant(CDec(Variant("0.1234567890123456789"))), "0.00000000000000000%",
       "12.34567890123456789%"},
      {Variant(CDec(Variant("79228162514264337593543950335"))), "0.00E+00", "7.92E+28"},
      {Variant(CDec(Variant("0"))), "0;(0);\"zero\"", "zero"},
      {Variant(Currency{INT64_MAX}), "#,##0.0000", "922,337,203,685,477.5807"},
      {Variant("12345678901234567"), "#,##0", "12,345,678,901,234,567"},
  };
  for (const auto& [value, pattern, text] : cases) {
    EXPECT_EQ(Format(value, pattern), text) << pattern;
  }
}

}  // namespace
}  // namespace varnel
