#include <gtest/gtest.h>

#include "db/db_fixture.h"

namespace varnel::testing {
namespace {

class RecordsetFilter : public DbTest {
 protected:
  void SetUp() override {
    cn()->Execute(
        "CREATE TABLE P (\"Id\" INTEGER, \"Name\" VARCHAR(20), \"Qty\" INTEGER, "
        "\"Price\" MONEY, \"Made\" TIMESTAMP, \"Ok\" BOOLEAN, "
        "\"Acct\" BIGINT);"
        "INSERT INTO P VALUES (1, 'Bolt', 10, 1.5, '2003-05-06 00:00:00', TRUE, 9007199254740992);"
        "INSERT INTO P VALUES (2, 'nut', 20, 0.25, '2003-05-07 12:00:00', FALSE, 9007199254740993);"
        "INSERT INTO P VALUES (3, 'O''Brien gear', NULL, 12, '2004-01-01 00:00:00', TRUE, 7);"
        "INSERT INTO P VALUES (4, 'washer', 5, NULL, NULL, FALSE, NULL)");
    rs_ = Query("SELECT * FROM P ORDER BY [Id]");
  }
  std::shared_ptr<db::Recordset> rs_;
};

struct FilterCase {
  const char* filter;
  std::vector<int32_t> ids;
};

struct BadFilterCase {
  const char* filter;
  const char* message;  // part of the description
};

TEST_P(RecordsetFilter, KeepsTheMatchingRowsFromTheFirstMatchAndABadFilterChangesNothing) {
  const FilterCase cases[] = {
      {"Qty = 10", {1}},
      {"Qty <> 10", {2, 4}},
      {"Qty < 10", {4}},
      {"Qty > 5", {1, 2}},
      {"Qty <= 10", {1, 4}},
      {"Qty >= 20", {2}},
      {"Price > 1", {1, 3}},
      {"Price = 0.25", {2}},
      {"Name = 'nut'", {2}},
      {"Name = 'NUT'", {}},
      {"Name = 'O''Brien gear'", {3}},
      {"Name < 'c'", {1, 3}},
      {"Made = #5/6/2003#", {1}},
      {"Made >= #2003-05-07#", {2, 3}},
      {"Made < '2004-01-01'", {1, 2}},
      {"Ok = TRUE", {1, 3}},
      {"Ok = 0", {2, 4}},
      {"Name LIKE 'b*'", {1}},
      {"Name LIKE '%GEAR'", {3}},
      {"Name LIKE '*u*'", {2}},
      {"Name like 'washer'", {4}},
      {"Qty LIKE '1%'", {1}},
      {"Qty = NULL", {3}},
      {"Price <> null", {1, 2, 3}},
      {"Qty > 5 AND Ok = 1", {1}},
      {"Qty = 10 OR Qty = 5 AND Ok = 1", {1}},
      {"(Qty = 10 OR Qty = 5) AND Ok = 0", {4}},
      {"Id = 1 OR Id = 2 OR (Id = 3 AND [Name] LIKE 'O*')", {1, 2, 3}},
      {"[Qty] > -1 and id < 4", {1, 2}},
      // keys that share a Double are told apart, whatever the value's form
      {"Acct = 9007199254740993", {2}},
      {"Acct > 9007199254740992", {2}},
      {"Acct = '9007199254740992'", {1}},
      {"Acct < 9007199254740992.5", {1, 3}},
      {"Acct >= 9007199254740992.0000000001", {2}},
      {"Acct = 7.0", {3}},
  };
  for (const FilterCase& c : cases) {
    rs_->Filter(c.filter);
    EXPECT_EQ(Ids(*rs_), c.ids) << c.filter;
    EXPECT_EQ(rs_->Filter(), c.filter);
  }
  rs_->MoveLast();
  rs_->Filter("Qty >= 10");
  EXPECT_EQ(rs_->RecordCount(), 2);
  EXPECT_EQ(rs_->AbsolutePosition(), 1);
  EXPECT_EQ(rs_->Fields()["Id"].Value(), Variant(int32_t{1}));
  rs_->MoveNext();
  EXPECT_EQ(rs_->Fields()["Id"].Value(), Variant(int32_t{2}));
  rs_->MoveNext();
  EXPECT_TRUE(rs_->Eof());
  rs_->Filter("Id = 42");
  EXPECT_TRUE(rs_->Bof() && rs_->Eof());
  rs_->Filter("");
  EXPECT_EQ(rs_->Filter(), "");
  EXPECT_EQ(rs_->RecordCount(), 4);
  EXPECT_EQ(rs_->AbsolutePosition(), 1);
  rs_->Filter("Qty > 5");
  rs_->MoveNext();
  const BadFilterCase bad_cases[] = {
      {"Qty >",
       "expected a value (text in '...', a date in #...# or a number) after '>' at "
       "position 6"},
      {"Qty 5",
       "expected a comparison operator (< > <= >= <> = LIKE) after the field 'Qty' at "
       "position 5"},
      {"Name = 'open", "the text in '...' is not closed at position 8"},
      {"Made = #13/45/2003#", "'13/45/2003' is not a date at position 8"},
      {"Qty = 1 AND", "expected a field name at position 12"},
      {"(Qty = 1", "'(' is not closed at position 1"},
      {"Qty = 1 Id = 2", "expected AND or OR instead of 'Id' at position 9"},
      {"Missing = 1", "the recordset has no field 'Missing' at position 1"},
      {"Qty > NULL", "NULL can be compared only with = or <>"},
      {"Name LIKE 'a*b'", "only at the start or the end"},
      {"Name LIKE 5", "LIKE needs a text value"},
      {"Qty = 'many'", "the value 'many' cannot be compared with the Long values of its field"},
      {"Name = bolt", "'bolt' is not a value"},
      {"Qty = 1 ; drop", "unexpected character ';' at position 9"},
  };
  for (const BadFilterCase& c : bad_cases) {
    const VbError error = ErrorOf([&] { rs_->Filter(c.filter); });
    EXPECT_EQ(error.Number(), 3001) << c.filter;
    EXPECT_NE(error.Description().find(c.message), std::string::npos)
        << c.filter << " -> " << error.Description();
    EXPECT_NE(error.Description().find(c.filter), std::string::npos) << "names the filter";
    EXPECT_EQ(rs_->Filter(), "Qty > 5");
    EXPECT_EQ(rs_->RecordCount(), 2);
    EXPECT_EQ(rs_->AbsolutePosition(), 2);
  }
}

VARNEL_ON_EVERY_PROVIDER(RecordsetFilter);

}  // namespace
}  // namespace varnel::testing
