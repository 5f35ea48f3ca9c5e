// SQLite: each declared type read back as its Variant kind, and each Variant
// kind written through Execute's parameters in the form SQLite stores.
#include <gtest/gtest.h>

#include "db/db_fixture.h"

namespace varnel::testing {
namespace {

class ValueTypes : public SqliteDbTest {
 protected:
  // The value of a one-column table of type Declared after inserting Param.
  Variant RoundTrip(const std::string& declared, const Variant& param) {
    cn()->Execute("CREATE TABLE T (V " + declared + ")");
    cn()->Execute("INSERT INTO T VALUES (?)", {param});
    auto rs = Query("T");
    return rs->Fields()[0].Value();
  }
  // The value SQLite stored, as its own text, and its storage class.
  std::string Stored() {
    auto rs = Query("SELECT typeof(V) || ':' || quote(V) FROM T");
    return rs->Fields()[0].Value().ToString();
  }
};

struct RoundTripCase {
  const char* declared;
  Variant param;
  Variant expected;
  const char* stored;
};

TEST_F(ValueTypes, DeclaredTypeDecidesTheVariantKindBothWays) {
  const RoundTripCase cases[] = {
      {"INTEGER", Variant(int32_t{42}), Variant(int32_t{42}), "integer:42"},
      {"SMALLINT", Variant(int16_t{-7}), Variant(int32_t{-7}), "integer:-7"},
      {"BIGINT", Variant(5e9), Variant(5e9), "integer:5000000000"},
      {"INT", Variant(1.5), Variant(1.5), "real:1.5"},
      {"REAL", Variant(int32_t{3}), Variant(3.0), "real:3.0"},
      {"DOUBLE", Variant(2.25), Variant(2.25), "real:2.25"},
      {"FLOAT", Variant(-0.5), Variant(-0.5), "real:-0.5"},
      {"NUMERIC(10,2)", Variant(12.5), Variant(12.5), "real:12.5"},
      {"NUMERIC", Variant(int32_t{7}), Variant(int32_t{7}), "integer:7"},
      {"MONEY", Variant(Currency{12345}), Variant(Currency{12345}), "real:1.2345"},
      {"CURRENCY", Variant(int32_t{3}), Variant(Currency{30000}), "integer:3"},
      {"DATETIME", Variant(Date{37747.5}), Variant(Date{37747.5}), "text:'2003-05-06 12:00:00'"},
      {"DATETIME", Variant(Date{37747}), Variant(Date{37747}), "text:'2003-05-06 00:00:00'"},
      {"DATE", Variant("2003-05-06"), Variant(Date{37747}), "text:'2003-05-06'"},
      {"TIMESTAMP", Variant("2003-05-06T12:00:00"), Variant(Date{37747.5}),
       "text:'2003-05-06T12:00:00'"},
      {"TIME", Variant("06:00:00"), Variant(Date{0.25}), "text:'06:00:00'"},
      {"BOOLEAN", Variant(true), Variant(true), "integer:1"},
      {"BIT", Variant(false), Variant(false), "integer:0"},
      {"VARCHAR(40)", Variant("O'Brien"), Variant("O'Brien"), "text:'O''Brien'"},
      {"TEXT", Variant(int32_t{12}), Variant("12"), "text:'12'"},
      {"NVARCHAR(10)", Variant("中文"), Variant("中文"), "text:'中文'"},
      {"BLOB", Variant("raw"), Variant("raw"), "text:'raw'"},
      {"", Variant(int32_t{9}), Variant(int32_t{9}), "integer:9"},
      {"VARCHAR(5)", Variant::Null(), Variant::Null(), "null:NULL"},
      {"INTEGER", Variant(), Variant::Null(), "null:NULL"},
  };
  for (const RoundTripCase& c : cases) {
    SCOPED_TRACE(std::string(c.declared) + " <- " + c.param.TypeName());
    EXPECT_EQ(RoundTrip(c.declared, c.param), c.expected);
    EXPECT_EQ(Stored(), c.stored);
    cn()->Execute("DROP TABLE T");
  }
}

TEST_F(ValueTypes, CellsThatDoNotFitTheirTypeKeepTheirStoredValue) {
  cn()->Execute(
      "CREATE TABLE T (D DATETIME, N INTEGER, B BOOLEAN, M MONEY);"
      "INSERT INTO T VALUES ('next tuesday', 'many', 'yes', 'lots');"
      "INSERT INTO T VALUES (37747, 4e12, 2, 1e300)");
  auto rs = Query("T");
  const Variant first[] = {Variant("next tuesday"), Variant("many"), Variant("yes"),
                           Variant("lots")};
  const Variant second[] = {Variant(int32_t{37747}), Variant(4e12), Variant(true), Variant(1e300)};
  for (int32_t i = 0; i < 4; ++i) {
    EXPECT_EQ(rs->Fields()[i].Value(), first[i]) << i;
  }
  rs->MoveNext();
  for (int32_t i = 0; i < 4; ++i) {
    EXPECT_EQ(rs->Fields()[i].Value(), second[i]) << i;
  }
}

TEST_F(ValueTypes, ExpressionColumnsAreTypedByTheirValues) {
  auto rs = Query("SELECT 1 + 1, 0.5 * 3, 'a' || 'b', NULL, 3000000000");
  const Variant expected[] = {Variant(int32_t{2}), Variant(1.5), Variant("ab"), Variant::Null(),
                              Variant(3e9)};
  for (int32_t i = 0; i < 5; ++i) {
    EXPECT_EQ(rs->Fields()[i].Value(), expected[i]) << i;
  }
}

TEST_F(ValueTypes, DefinedSizeComesFromTheDeclaredLength) {
  cn()->Execute(
      "CREATE TABLE T (A VARCHAR(40), B NVARCHAR (12), C CHAR(1), D TEXT, E INTEGER, "
      "F NUMERIC(10,2))");
  auto rs = Query("T");
  const int32_t expected[] = {40, 12, 1, 0, 0, 0};
  ASSERT_EQ(rs->Fields().Count(), 6);
  for (int32_t i = 0; i < 6; ++i) {
    EXPECT_EQ(rs->Fields()[i].DefinedSize(), expected[i]) << rs->Fields()[i].Name();
  }
}

TEST_F(ValueTypes, DatesKeepTheirSeconds) {
  const Variant read = RoundTrip("DATETIME", Variant("2003-05-06 14:30:15"));
  ASSERT_EQ(read.VarType(), vbDate);
  EXPECT_EQ(IsoDate(read.AsDate()), "2003-05-06 14:30:15");
}

TEST_F(ValueTypes, LongTextIsReadWhole) {
  const std::string text(5000, 'q');
  EXPECT_EQ(RoundTrip("TEXT", Variant(text)), Variant(text));
  cn()->Execute("DROP TABLE T");
  EXPECT_EQ(RoundTrip("VARCHAR(3)", Variant("")).ToString(), "") << "empty is not Null";
}

}  // namespace
}  // namespace varnel::testing
