// Each column type read back as its Variant kind, and each Variant kind
// written through Execute's parameters into such a column (on SQLite also in
// the form SQLite stores).
#include <gtest/gtest.h>

#include "db/db_fixture.h"

namespace varnel::testing {
namespace {

class ValueTypes : public DbTest {
 protected:
  // The value of a one-column table of type Declared after inserting Param.
  Variant RoundTrip(const std::string& declared, const Variant& param) {
    cn()->Execute("DROP TABLE IF EXISTS T; CREATE TABLE T (V " + declared + ")");
    cn()->Execute("INSERT INTO T VALUES (?)", {param});
    return Query("T")->Fields()[0].Value();
  }
};

enum Where { kBoth, kSqliteOnly, kPostgresOnly };

struct TypeCase {
  Where on;
  const char* declared;
  Variant param;
  Variant expected;
  const char* stored = nullptr;  // SQLite's storage class and text of the value
};

TEST_P(ValueTypes, DeclaredTypesDecideTheVariantKindBothWaysExpressionsTheirValues) {
  const std::string long_text(100000, 'q');
  const TypeCase cases[] = {
      {kBoth, "INTEGER", Variant(int32_t{42}), Variant(int32_t{42}), "integer:42"},
      {kBoth, "SMALLINT", Variant(int16_t{-7}), Variant(int32_t{-7}), "integer:-7"},
      {kBoth, "BIGINT", Variant(5e9), Variant(int64_t{5000000000}), "integer:5000000000"},
      {kBoth, "BIGINT", Variant(int64_t{-9007199254740993}), Variant(int64_t{-9007199254740993}),
       "integer:-9007199254740993"},
      {kBoth, "NUMERIC(10,2)", Variant(CDec(Variant("12.25"))), Variant(12.25), "real:12.25"},
      {kBoth, "INTEGER", Variant(CDec(Variant("12.00"))), Variant(int32_t{12}), "integer:12"},
      {kBoth, "NUMERIC(10,2)", Variant(12.5), Variant(12.5), "real:12.5"},
      {kBoth, "NUMERIC", Variant(int32_t{7}), Variant(int32_t{7}), "integer:7"},
      {kBoth, "REAL", Variant(int32_t{3}), Variant(3.0), "real:3.0"},
      {kBoth, "FLOAT", Variant(-0.5), Variant(-0.5), "real:-0.5"},
      {kBoth, "DATE", Variant("2003-05-06"), Variant(Date{37747}), "text:'2003-05-06'"},
      {kBoth, "TIMESTAMP", Variant("2003-05-06T12:00:00"), Variant(Date{37747.5}),
       "text:'2003-05-06T12:00:00'"},
      {kBoth, "TIME", Variant("06:00:00"), Variant(Date{0.25}), "text:'06:00:00'"},
      {kBoth, "BOOLEAN", Variant(true), Variant(true), "integer:1"},
      {kBoth, "VARCHAR(40)", Variant("O'Brien"), Variant("O'Brien"), "text:'O''Brien'"},
      {kBoth, "TEXT", Variant(int32_t{12}), Variant("12"), "text:'12'"},
      {kBoth, "TEXT", Variant(long_text), Variant(long_text)},
      {kBoth, "VARCHAR(10)", Variant("中文"), Variant("中文"), "text:'中文'"},
      {kBoth, "VARCHAR(3)", Variant(""), Variant(""), "text:''"},  // empty is not Null
      {kBoth, "VARCHAR(5)", Variant::Null(), Variant::Null(), "null:NULL"},
      {kBoth, "INTEGER", Variant(), Variant::Null(), "null:NULL"},
      {kSqliteOnly, "INT", Variant(1.5), Variant(1.5), "real:1.5"},
      {kSqliteOnly, "DOUBLE", Variant(2.25), Variant(2.25), "real:2.25"},
      {kSqliteOnly, "MONEY", Variant(Currency{12345}), Variant(Currency{12345}), "real:1.2345"},
      {kSqliteOnly, "CURRENCY", Variant(int32_t{3}), Variant(Currency{30000}), "integer:3"},
      {kSqliteOnly, "DATETIME", Variant(Date{37747.5}), Variant(Date{37747.5}),
       "text:'2003-05-06 12:00:00'"},
      {kSqliteOnly, "DATETIME", Variant(Date{37747}), Variant(Date{37747}),
       "text:'2003-05-06 00:00:00'"},
      {kSqliteOnly, "BIT", Variant(false), Variant(false), "integer:0"},
      {kSqliteOnly, "BLOB", Variant("raw"), Variant("raw"), "text:'raw'"},
      {kSqliteOnly, "", Variant(int32_t{9}), Variant(int32_t{9}), "integer:9"},
      {kPostgresOnly, "bigint", Variant(int32_t{7}), Variant(int32_t{7})},
      {kPostgresOnly, "integer", Variant(true), Variant(int32_t{1})},
      {kPostgresOnly, "numeric(12,0)", Variant(int32_t{7}), Variant(int32_t{7})},
      {kPostgresOnly, "numeric", Variant(0.1), Variant(0.1)},
      {kPostgresOnly, "numeric(30,10)", Variant("-1234567890.1234567891"),
       Variant(CDec(Variant("-1234567890.1234567891")))},
      {kPostgresOnly, "numeric", Variant(CDec(Variant("12345678901234567890.5"))),
       Variant(CDec(Variant("12345678901234567890.5")))},
      {kPostgresOnly, "numeric(25,0)", Variant("1234567890123456789012"),
       Variant(CDec(Variant("1234567890123456789012")))},
      {kPostgresOnly, "numeric(40,0)", Variant("1e39"), Variant(1e39)},
      {kPostgresOnly, "money", Variant(Currency{12345}), Variant(Currency{12300})},
      {kPostgresOnly, "money", Variant(Currency{-12345678900}), Variant(Currency{-12345678900})},
      {kPostgresOnly, "double precision", Variant(-0.1), Variant(-0.1)},
      {kPostgresOnly, "date", Variant(Date{37747.5}), Variant(Date{37747})},
      {kPostgresOnly, "timestamp", Variant(Date{37747.5}), Variant(Date{37747.5})},
      {kPostgresOnly, "timestamptz", Variant("2003-05-06 12:00:00"), Variant(Date{37747.5})},
      {kPostgresOnly, "time", Variant(Date{0.25}), Variant(Date{0.25})},
      {kPostgresOnly, "timestamp", Variant("infinity"), Variant("infinity")},
      {kPostgresOnly, "boolean", Variant(int32_t{1}), Variant(true)},
      {kPostgresOnly, "char(3)", Variant("ab"), Variant("ab ")},
  };
  for (const TypeCase& c : cases) {
    if (c.on != kBoth && (c.on == kPostgresOnly) != OnPostgres()) {
      continue;
    }
    SCOPED_TRACE(std::string(c.declared) + " <- " + c.param.TypeName());
    EXPECT_EQ(RoundTrip(c.declared, c.param), c.expected);
    if (c.stored != nullptr && !OnPostgres()) {
      EXPECT_EQ(Query("SELECT typeof(V) || ':' || quote(V) FROM T")->Fields()[0].Value(),
                Variant(c.stored));
    }
  }
  const Variant read = RoundTrip("TIMESTAMP", Variant("2003-05-06 14:30:15"));
  ASSERT_EQ(read.VarType(), vbDate);
  EXPECT_EQ(IsoDate(read.AsDate()), "2003-05-06 14:30:15") << "dates keep their seconds";
  Columns expected{{Variant(int32_t{2})},
                   {Variant(1.5)},
                   {Variant("ab")},
                   {Variant::Null()},
                   {Variant(int64_t{3000000000})}};
  if (OnPostgres()) {
    expected.insert(expected.end(), {{Variant(true)}, {Variant(Currency{25000})}});
  }
  EXPECT_EQ(Query(std::string("SELECT 1 + 1, 0.5 * 3, 'a' || 'b', NULL, 3000000000") +
                  (OnPostgres() ? ", 1 = 1, 2.5::money" : ""))
                ->GetRows(),
            expected);
  cn()->Execute(std::string("CREATE TABLE S (A VARCHAR(40), B ") +
                Says("NVARCHAR (12)", "CHARACTER VARYING (12)") +
                ", C CHAR(1), D TEXT, E INTEGER, F NUMERIC(10,2))");
  auto rs = Query("S");
  std::vector<int32_t> sizes;
  for (int32_t i = 0; i < rs->Fields().Count(); ++i) {
    sizes.push_back(rs->Fields()[i].DefinedSize());
  }
  EXPECT_EQ(sizes, (std::vector<int32_t>{40, 12, 1, 0, 0, 0}));
  if (OnPostgres()) {
    return;  // PostgreSQL stores no cell outside its column's type; SQLite keeps it as stored
  }
  cn()->Execute(
      "CREATE TABLE U (D DATETIME, N INTEGER, B BOOLEAN, M MONEY);"
      "INSERT INTO U VALUES ('next tuesday', 'many', 'yes', 'lots');"
      "INSERT INTO U VALUES (37747, 4e12, 2, 1e300)");
  EXPECT_EQ(Query("U")->GetRows(), (Columns{{Variant("next tuesday"), Variant(int32_t{37747})},
                                            {Variant("many"), Variant(int64_t{4000000000000})},
                                            {Variant("yes"), Variant(true)},
                                            {Variant("lots"), Variant(1e300)}}));
}

VARNEL_ON_EVERY_PROVIDER(ValueTypes);

}  // namespace
}  // namespace varnel::testing
