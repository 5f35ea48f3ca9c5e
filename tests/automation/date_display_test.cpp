// The display of dates by DateType: the same text as Format with the type's
// pattern, for every type, across the calendar's edges.
#include "varnel/date_display.h"

#include <gtest/gtest.h>

#include "support/error_of.h"

namespace varnel {
namespace {

TEST(DateDisplay, WritesWhatFormatWritesForEveryTypeAndRefusesADateOutsideTheCalendar) {
  const Variant values[] = {
      Variant(Date{0.0}),
      Variant(Date{37747.5}),                    // 2003-05-06 12:00:00
      Variant(Date{37747.0 + 86399.6 / 86400}),  // rounds up to the next day
      Variant(Date{-1.25}),                      // 1899-12-29 06:00
      Variant(Date{-657434.0}),                  // 0100-01-01
      Variant(Date{2958465.999988}),             // 9999-12-31 23:59:59
      Variant("2003-05-06 07:08:09"),            // text read as a date
      Variant(45001.75),                         // a serial as a number
  };
  for (Enum_DateType type : {D_YMDHNS, D_YMDHN, D_YMD, D_HNS, D_HN}) {
    for (const Variant& value : values) {
      EXPECT_EQ(DateDisplayText(value, type), Format(value, DateDisplayPattern(type)))
          << CStr(value) << " as type " << type;
    }
  }
  EXPECT_EQ(DateDisplayText(Variant(Date{37747.5}), D_YMDHN), "2003-05-06 12:00");
  EXPECT_EQ(DateDisplayText(Variant(Date{37747.5}), static_cast<Enum_DateType>(9)),
            "2003-05-06 12:00:00");
  EXPECT_EQ(DateDisplayText(Variant::Null(), D_YMD), "");
  // Text that is no date is shown as it is; a Date beyond the calendar is refused.
  EXPECT_EQ(DateDisplayText(Variant("soon"), D_YMD), "soon");
  EXPECT_EQ(testing::ErrorOf([] { (void)DateDisplayText(Variant(Date{3e6}), D_YMD); }).Number(), 6)
      << "a Date after the year 9999";
}

}  // namespace
}  // namespace varnel
