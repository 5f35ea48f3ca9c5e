// Query by form through MdlQuery::QueryCondition: the exact SQL of every
// field kind's prefixes and values as typed (letter case and blanks), and the
// whole-field rule: one term that cannot be translated drops the field ("").
// The plain examples of the guide's query-by-form page (a number range, "not
// 5", text "not smith" and "null", Boolean 1 and 0) are run by the docs tests.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <tuple>

#include "varnel/varnel.h"

namespace varnel::testing {
namespace {

// The recordset's clock stands at 2003-05-06 15:00: the date TODAY() means.
class FixedClock : public ClsRecordsetEvents {
  void SystemTime(Date& now) override { now = Date{37747.625}; }
};

constexpr const char* kSqlite = "Provider=SQLite;Data Source=orders.db";

struct Sql {
  Enum_FieldType type;
  int32_t subtype;  // the DateType of a date field, else the NumType
  const char* query;
  const char* sql;  // "": the field adds no condition
  const char* connect = "";
};

// QueryCondition of field "F" holding each row's query ("<Empty>" for Empty).
void ExpectSql(std::initializer_list<Sql> rows) {
  static FixedClock clock;
  for (const Sql& row : rows) {
    ClsRecordset rs;
    rs.Advise(&clock);
    rs.ConnectString = row.connect;
    auto f = rs.Add("F");
    f->FieldType = row.type;
    f->DateType = row.type == F_Date ? static_cast<Enum_DateType>(row.subtype) : D_YMDHNS;
    f->NumType = row.type == F_Date ? N_Integer : static_cast<Enum_NumType>(row.subtype);
    f->QueryValue = row.query;
    const Variant sql = MdlQuery::QueryCondition(*f);
    EXPECT_EQ(sql.IsEmpty() ? "<Empty>" : sql.ToString(), row.sql) << row.type << " " << row.query;
  }
}

// text with its "#" replaced by value.
std::string Fill(std::string text, const std::string& value) {
  const size_t at = text.find('#');
  return at == std::string::npos ? text : text.replace(at, 1, value);
}

TEST(QueryComparison, EveryPrefixOfTheNumberCurrencyAndDateKindsAsTyped) {
  // The kinds a row runs on (N number, C currency, D date), the query and its SQL.
  const std::tuple<const char*, const char*, const char*> rows[] = {
      {"NCD", "NOT<=#", "([F] is null or not [F]<=#)"},
      {"NCD", "not >= #", "([F] is null or not [F]>=#)"},
      {"NCD", "Not <> #", "([F] is null or not [F]<>#)"},
      {"NCD", "NOT=#", "([F] is null or not [F]=#)"},
      {"NCD", "nOt  < #", "([F] is null or not [F]<#)"},
      {"NCD", "NOT>#", "([F] is null or not [F]>#)"},
      {"NCD", "NOT > = #", "([F] is null or not [F]>=#)"},
      {"NCD", "NOTNULL", "(not [F] is NULL)"},
      {"NCD", "not  null", "(not [F] is NULL)"},
      {"NCD", "NOT IS NULL", "(not [F] is NULL)"},
      {"NCD", "Null", "([F] is NULL)"},
      {"NCD", "<=#", "([F]<=#)"},
      {"NCD", ">= #", "([F]>=#)"},
      {"C", "<>#", "([F] is null or [F]<>#)"},
      {"ND", "<> #", "([F]<>#)"},
      {"NCD", "= #", "([F]=#)"},
      {"NCD", "<#", "([F]<#)"},
      {"NCD", "> #", "([F]>#)"},
      {"NCD", "#", "([F]=#)"},
      {"CD", "NOT #", ""},
  };
  // Each kind's value "#" as typed (query) and as written (sql).
  const Sql values[] = {{F_Numeral, 0, "5", "5"},
                        {F_Currency, 0, "$5", "5"},
                        {F_Date, D_YMDHNS, "5/6/2003", "'05/06/2003 00:00:00'"}};
  for (const auto& [kinds, query, sql] : rows) {
    for (int k = 0; k < 3; ++k) {
      if (std::strchr(kinds, "NCD"[k]) != nullptr) {
        const Sql& v = values[k];
        ExpectSql({{v.type, v.subtype, Fill(query, v.query).c_str(), Fill(sql, v.sql).c_str()}});
      }
    }
  }
}

TEST(QueryNumber, NumbersPercentsAndCurrencyAmountsAreWrittenPlain) {
  ExpectSql({
      {F_Numeral, N_Float, "1,000", "([F]=1000)"},
      {F_Numeral, N_Float, "1E+16", "([F]=1E+16)"},
      {F_Numeral, N_Integer, "1234567890123456", "([F]=1234567890123456)"},
      {F_Numeral, N_Float, "<-9,007,199,254,740,993", "([F]<-9007199254740993)"},
      {F_Numeral, N_Float, "1234567890.12345678910", "([F]=1234567890.1234567891)"},
      {F_Numeral, N_Percent, "50%", "([F]=0.5)"},
      {F_Numeral, N_Percent, ">=12.5 %", "([F]>=0.125)"},
      {F_Numeral, N_Percent, "0.5", "([F]=0.5)"},
      {F_Numeral, N_Percent, "50%%", ""},
      {F_Numeral, N_Percent, "12.34567890123456789%", "([F]=0.1234567890123456789)"},
      {F_Numeral, N_Percent, "<900719925474099300 %", "([F]<9007199254740993)"},
      {F_Numeral, N_Percent, "0.12345678901234567", "([F]=0.12345678901234567)"},
      {F_Currency, 0, "$1,234.50", "([F]=1234.5)"},
      {F_Currency, 0, "-$5", "([F]=-5)"},
      {F_Currency, 0, "12 €", "([F]=12)"},
      {F_Currency, 0, "0.00015", "([F]=0.0002)"},
      {F_Currency, 0, "$5$", ""},
      {F_Currency, 0, "1000000000000000", ""},
  });
}

TEST(QueryDate, DayAndMinuteFieldsMatchTheWholeDayOrMinuteAndTodayIsTheRecordsetsDate) {
  ExpectSql({
      {F_Date, D_YMDHNS, "5/6/2003 10:30:15", "([F]='05/06/2003 10:30:15')"},
      {F_Date, D_YMD, "5/6/2003", "(([F]>='05/06/2003' and [F]<'05/07/2003'))"},
      {F_Date, D_YMD, "<>5/6/2003", "(([F]<'05/06/2003' or [F]>='05/07/2003'))"},
      {F_Date, D_YMD, "<5/6/2003 10:00", "([F]<'05/06/2003')"},
      {F_Date, D_YMD, "<=5/6/2003", "([F]<'05/07/2003')"},
      {F_Date, D_YMD, ">5/6/2003", "([F]>='05/07/2003')"},
      {F_Date, D_YMD, ">=5/6/2003", "([F]>='05/06/2003')"},
      {F_Date, D_YMD, "NOT=5/6/2003",
       "([F] is null or not ([F]>='05/06/2003' and [F]<'05/07/2003'))"},
      {F_Date, D_YMD, "12/31/9999", ""},
      {F_Date, D_YMDHN, "5/6/2003 10:30:45",
       "(([F]>='05/06/2003 10:30:00' and [F]<'05/06/2003 10:31:00'))"},
      {F_Date, D_YMDHN, ">5/6/2003 23:59", "([F]>='05/07/2003 00:00:00')"},
      {F_Date, D_HNS, "<5/6/2003 1:05 PM", "([F]<'13:05:00')"},
      {F_Date, D_HN, "10:30:15", "([F]='10:30:00')"},
      {F_Date, D_YMD, "5/6/2003",
       "((datetime([F])>='2003-05-06 00:00:00' and datetime([F])<'2003-05-07 00:00:00'))", kSqlite},
      {F_Date, D_HN, "10:30:15", "(time([F])='10:30:00')", kSqlite},
      {F_Date, D_YMD, "today()", "(([F]>='05/06/2003' and [F]<'05/07/2003'))"},
      {F_Date, D_YMD, ">=TODAY()-7", "([F]>='04/29/2003')"},
      {F_Date, D_YMD, "<= Today() + 1", "([F]<'05/08/2003')"},
      {F_Date, D_YMD, "2003-05-06+30", "(([F]>='06/05/2003' and [F]<'06/06/2003'))"},
      {F_Date, D_YMDHNS, ">=TODAY()", "([F]>='05/06/2003 00:00:00')"},
      {F_Date, D_YMD, "TODAY()+99999999", ""},
  });
}

TEST(QueryCondition, TextKeywordsBooleansAndRawValuesAsTypedWithTextQuoted) {
  ExpectSql({
      {F_Text, 0, "  O'Brien  ", "([F] LIKE '%O''Brien%')"},
      {F_Text, 0, "not   like  smith", "([F] NOT LIKE '%smith%')"},
      {F_Text, 0, "like smith", "([F] LIKE '%smith%')"},
      {F_Text, 0, "Not Null", "(not [F] is NULL and not [F]='')"},
      {F_Text, 0, "NOT", "([F] LIKE '%NOT%')"},
      {F_Text, 0, "LIKE", "([F] LIKE '%LIKE%')"},
      {F_Locked, 0, "1", "[F]<>0"},
      {F_Boolean, 0, "true", ""},
      {F_Boolean, 0, " 1", ""},
      {F_Other, 0, " a' AND b", "[F]=' a' AND b'"},
      {F_Other, 0, "   ", ""},
      {F_AutoCoding, 0, "5", ""},
      {F_MultiMode, 0, "5", ""},
  });
  EXPECT_EQ(MdlQuery::QuoteText(Variant("  O'Brien's ")), "O''Brien''s");
  EXPECT_EQ(MdlQuery::QuoteText(Variant("''")), "''''");
  EXPECT_EQ(MdlQuery::QuoteText(Variant(int32_t{12})), "12");
  EXPECT_EQ(MdlQuery::QuoteText(Variant::Null()), "");
}

TEST(QueryTerms, JoinWithTheConnectorsAndOneFailedTermDropsTheField) {
  ExpectSql({
      {F_Numeral, 0, "1 or 2 OR null", "([F]=1 or [F]=2 or [F] is NULL)"},
      {F_Text, 0, "a Or b aNd c", "([F] LIKE '%a%' or [F] LIKE '%b%' and [F] LIKE '%c%')"},
      {F_Text, 0, "BRAND", "([F] LIKE '%BRAND%')"},
      {F_Numeral, 0, "5 AND x", ""},
      {F_Numeral, 0, "5 AND ", ""},
      {F_Numeral, 0, "<=", ""},
      {F_Numeral, 0, "NOT x <= 5", ""},
      {F_Numeral, 0, "NULL 5", ""},
      {F_Numeral, 0, "5' OR '1'='1", ""},
      {F_Numeral, 0, "1e999", ""},
      {F_Text, 0, "x AND  AND y", ""},
      {F_Text, 0, "a OR NOT LIKE   ", ""},
      {F_Date, 0, "5/32/2003", ""},
      {F_Date, 0, "37747", ""},
      {F_Date, 0, "1/1/2003' OR 1=1", ""},
  });
  ClsRecordset rs;
  rs.Add("F")->QueryValue = "abc";
  EXPECT_TRUE(MdlQuery::QueryNumber(*rs.Item("F")).IsEmpty()) << "where QueryCondition gives \"\"";
}

}  // namespace
}  // namespace varnel::testing
