#include <gtest/gtest.h>

#include "query_fixture.h"

namespace varnel::testing {
namespace {

struct Case {
  const char* query;
  const char* sql;  // "": the field adds no condition
};

constexpr Date kMay6th2003Afternoon{37747.625};  // 2003-05-06 15:00

void ExpectAll(Enum_DateType date_type, const char* connect, std::initializer_list<Case> cases) {
  for (const Case& c : cases) {
    QueryField f(F_Date, "D");
    f.field->DateType = date_type;
    f.rs.ConnectString = connect;
    FixedClock clock(kMay6th2003Afternoon);
    f.rs.Advise(&clock);
    EXPECT_EQ(f.Condition(c.query), c.sql) << c.query;
  }
}

TEST(QueryDate, EveryPrefixAsTyped) {
  ExpectAll(D_YMDHNS, "",
            {
                {"NOT<=5/6/2003", "([D] is null or not [D]<='05/06/2003 00:00:00')"},
                {"not >= 5/6/2003", "([D] is null or not [D]>='05/06/2003 00:00:00')"},
                {"NOT <> 5/6/2003", "([D] is null or not [D]<>'05/06/2003 00:00:00')"},
                {"Not=5/6/2003", "([D] is null or not [D]='05/06/2003 00:00:00')"},
                {"NOT<5/6/2003", "([D] is null or not [D]<'05/06/2003 00:00:00')"},
                {"NOT>5/6/2003", "([D] is null or not [D]>'05/06/2003 00:00:00')"},
                {"not null", "(not [D] is NULL)"},
                {"NULL", "([D] is NULL)"},
                {"<=5/6/2003", "([D]<='05/06/2003 00:00:00')"},
                {">=5/6/2003", "([D]>='05/06/2003 00:00:00')"},
                {"<>5/6/2003", "([D]<>'05/06/2003 00:00:00')"},
                {"=5/6/2003", "([D]='05/06/2003 00:00:00')"},
                {"<5/6/2003", "([D]<'05/06/2003 00:00:00')"},
                {">5/6/2003", "([D]>'05/06/2003 00:00:00')"},
                {"5/6/2003 10:30:15", "([D]='05/06/2003 10:30:15')"},
                {"2003-05-06 22:00", "([D]='05/06/2003 22:00:00')"},
                {"NOT 5/6/2003", ""},
            });
}

TEST(QueryDate, DayFieldMatchesTheWholeDayWhateverTheTime) {
  ExpectAll(D_YMD, "",
            {
                {"5/6/2003", "(([D]>='05/06/2003' and [D]<'05/07/2003'))"},
                {"<>5/6/2003", "(([D]<'05/06/2003' or [D]>='05/07/2003'))"},
                {"<5/6/2003 10:00", "([D]<'05/06/2003')"},
                {"<=5/6/2003", "([D]<'05/07/2003')"},
                {">5/6/2003", "([D]>='05/07/2003')"},
                {">=5/6/2003", "([D]>='05/06/2003')"},
                {"NOT=5/6/2003", "([D] is null or not ([D]>='05/06/2003' and [D]<'05/07/2003'))"},
                {"12/31/2003", "(([D]>='12/31/2003' and [D]<'01/01/2004'))"},
                {"12/31/9999", ""},
            });
}

TEST(QueryDate, MinuteFieldMatchesTheWholeMinute) {
  ExpectAll(
      D_YMDHN, "",
      {
          {"5/6/2003 10:30:45", "(([D]>='05/06/2003 10:30:00' and [D]<'05/06/2003 10:31:00'))"},
          {">5/6/2003 23:59", "([D]>='05/07/2003 00:00:00')"},
      });
}

TEST(QueryDate, TimeFieldsCompareTheTimeOfDay) {
  ExpectAll(D_HNS, "",
            {{"10:30:15", "([D]='10:30:15')"}, {"<5/6/2003 1:05 PM", "([D]<'13:05:00')"}});
  ExpectAll(D_HN, "", {{"10:30:15", "([D]='10:30:00')"}});
}

TEST(QueryDate, TodayStandsForTheRecordsetsDate) {
  ExpectAll(D_YMD, "",
            {
                {"today()", "(([D]>='05/06/2003' and [D]<'05/07/2003'))"},
                {">=TODAY()-7", "([D]>='04/29/2003')"},
                {"<= Today() + 1", "([D]<'05/08/2003')"},
                {"NOT<TODAY()", "([D] is null or not [D]<'05/06/2003')"},
                {"5/6/2003-1", "(([D]>='05/05/2003' and [D]<'05/06/2003'))"},
                {"2003-05-06+30", "(([D]>='06/05/2003' and [D]<'06/06/2003'))"},
                {"TODAY()+99999999", ""},
                {"TODAY() 7", ""},
                {"yesterday", ""},
            });
  ExpectAll(D_YMDHNS, "", {{">=TODAY()", "([D]>='05/06/2003 00:00:00')"}});
}

TEST(QueryDate, SqliteDatabasesGetIsoText) {
  const char* sqlite = "Provider=SQLite;Data Source=orders.db";
  ExpectAll(D_YMDHNS, sqlite, {{"5/6/2003 10:30:15", "([D]='2003-05-06 10:30:15')"}});
  ExpectAll(D_YMD, sqlite,
            {{"5/6/2003", "(([D]>='2003-05-06 00:00:00' and [D]<'2003-05-07 00:00:00'))"}});
  ExpectAll(D_HN, sqlite, {{"10:30:15", "([D]='1899-12-30 10:30:00')"}});
}

TEST(QueryDate, UnreadableDatesDropTheField) {
  ExpectAll(D_YMDHNS, "",
            {{"5/32/2003", ""},
             {"2/29/2003", ""},
             {"37747", ""},
             {"1/1/2003' OR 1=1", ""},
             {"5/6/2003 AND x", ""},
             {"<", ""}});
}

}  // namespace
}  // namespace varnel::testing
