// PostgreSQL: each column type read back as its Variant kind, and each
// Variant kind written through Execute's parameters into such a column.
#include <gtest/gtest.h>

#include "db/db_fixture.h"

namespace varnel::testing {
namespace {

class PostgresValueTypes : public PostgresDbTest {
 protected:
  // The value of a one-column table of type Declared after inserting Param.
  Variant RoundTrip(const std::string& declared, const Variant& param) {
    cn()->Execute("DROP TABLE IF EXISTS T; CREATE TABLE T (V " + declared + ")");
    cn()->Execute("INSERT INTO T VALUES (?)", {param});
    return Query("T")->Fields()[0].Value();
  }
};

struct PgRoundTripCase {
  const char* declared;
  Variant param;
  Variant expected;
};

TEST_F(PostgresValueTypes, ColumnTypeDecidesTheVariantKindBothWays) {
  const PgRoundTripCase cases[] = {
      {"integer", Variant(int32_t{42}), Variant(int32_t{42})},
      {"smallint", Variant(int16_t{-7}), Variant(int32_t{-7})},
      {"bigint", Variant(int32_t{7}), Variant(int32_t{7})},
      {"bigint", Variant(5e9), Variant(5e9)},
      {"integer", Variant(true), Variant(int32_t{1})},
      {"numeric(10,2)", Variant(12.5), Variant(12.5)},
      {"numeric(12,0)", Variant(int32_t{7}), Variant(int32_t{7})},
      {"numeric", Variant(int32_t{7}), Variant(int32_t{7})},
      {"numeric", Variant(0.1), Variant(0.1)},
      {"money", Variant(Currency{12345}), Variant(Currency{12300})},
      {"money", Variant(Currency{-12345678900}), Variant(Currency{-12345678900})},
      {"real", Variant(0.5), Variant(0.5)},
      {"double precision", Variant(int32_t{3}), Variant(3.0)},
      {"float", Variant(-0.1), Variant(-0.1)},
      {"date", Variant(Date{37747.5}), Variant(Date{37747})},
      {"timestamp", Variant(Date{37747.5}), Variant(Date{37747.5})},
      {"timestamp", Variant("2003-05-06T12:00:00"), Variant(Date{37747.5})},
      {"timestamptz", Variant("2003-05-06 12:00:00"), Variant(Date{37747.5})},
      {"time", Variant("06:00:00"), Variant(Date{0.25})},
      {"time", Variant(Date{0.25}), Variant(Date{0.25})},
      {"timestamp", Variant("infinity"), Variant("infinity")},
      {"boolean", Variant(true), Variant(true)},
      {"boolean", Variant(false), Variant(false)},
      {"boolean", Variant(int32_t{1}), Variant(true)},
      {"varchar(40)", Variant("O'Brien"), Variant("O'Brien")},
      {"text", Variant(int32_t{12}), Variant("12")},
      {"char(3)", Variant("ab"), Variant("ab ")},
      {"varchar(10)", Variant("中文"), Variant("中文")},
      {"varchar(5)", Variant::Null(), Variant::Null()},
      {"integer", Variant(), Variant::Null()},
  };
  for (const PgRoundTripCase& c : cases) {
    SCOPED_TRACE(std::string(c.declared) + " <- " + c.param.TypeName());
    EXPECT_EQ(RoundTrip(c.declared, c.param), c.expected);
  }
}

TEST_F(PostgresValueTypes, ExpressionColumnsAreTypedByTheServer) {
  auto rs = Query("SELECT 1 + 1, 0.5 * 3, 'a' || 'b', NULL, 3000000000, 1 = 1, 2.5::money");
  const Variant expected[] = {Variant(int32_t{2}),     Variant(1.5), Variant("ab"),
                              Variant::Null(),         Variant(3e9), Variant(true),
                              Variant(Currency{25000})};
  for (int32_t i = 0; i < 7; ++i) {
    EXPECT_EQ(rs->Fields()[i].Value(), expected[i]) << i;
  }
}

TEST_F(PostgresValueTypes, DefinedSizeComesFromTheDeclaredLength) {
  cn()->Execute(
      "CREATE TABLE T (A VARCHAR(40), B CHARACTER VARYING (12), C CHAR(1), D TEXT, E INTEGER, "
      "F NUMERIC(10,2))");
  auto rs = Query("T");
  const int32_t expected[] = {40, 12, 1, 0, 0, 0};
  ASSERT_EQ(rs->Fields().Count(), 6);
  for (int32_t i = 0; i < 6; ++i) {
    EXPECT_EQ(rs->Fields()[i].DefinedSize(), expected[i]) << rs->Fields()[i].Name();
  }
}

TEST_F(PostgresValueTypes, DatesKeepTheirSecondsAndLongTextIsReadWhole) {
  const Variant read = RoundTrip("timestamp", Variant("2003-05-06 14:30:15"));
  ASSERT_EQ(read.VarType(), vbDate);
  EXPECT_EQ(IsoDate(read.AsDate()), "2003-05-06 14:30:15");
  const std::string text(100000, 'q');
  EXPECT_EQ(RoundTrip("text", Variant(text)), Variant(text));
  EXPECT_EQ(RoundTrip("varchar(3)", Variant("")).ToString(), "") << "empty is not Null";
}

}  // namespace
}  // namespace varnel::testing
