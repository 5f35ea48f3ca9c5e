// Conditions select the same rows on every provider: a recordset's Filter
// in memory, and the SQL the library composes (bracketed names, LIKE without
// regard to case, Boolean fields compared with 0, ISO dates in quotes).
#include <gtest/gtest.h>

#include "db/db_fixture.h"

namespace varnel::testing {
namespace {

class Conditions : public DbTest {
 protected:
  void SetUp() override {
    cn()->Execute(
        "CREATE TABLE P (\"Id\" INTEGER, \"Name\" VARCHAR(20), \"Qty\" INTEGER, "
        "\"Price\" MONEY, \"Made\" TIMESTAMP, \"Ok\" BOOLEAN, "
        "\"Acct\" BIGINT);"
        "INSERT INTO P VALUES (1, 'Bolt', 10, 1.5, '2003-05-06 00:00:00', TRUE, 9007199254740992);"
        "INSERT INTO P VALUES (2, 'nut', 20, 0.25, '2003-05-07 12:00:00', FALSE, 9007199254740993);"
        "INSERT INTO P VALUES (3, 'O''Brien gear', NULL, 12, '2004-01-01 00:00:00', TRUE, 7);"
        "INSERT INTO P VALUES (4, 'washer', 5, NULL, NULL, FALSE, NULL);"
        "CREATE TABLE Orders (\"Id\" INTEGER, \"Name\" VARCHAR(20), \"Paid\" BOOLEAN, "
        "\"Price\" MONEY, \"Made\" TIMESTAMP, \"Qty\" INTEGER);"
        "INSERT INTO Orders VALUES (1, 'Bolt', TRUE, 1.5, '2003-05-06 14:30:15', 10);"
        "INSERT INTO Orders VALUES (2, 'nut', FALSE, 0.25, '2003-05-07 00:00:00', 20);"
        "INSERT INTO Orders VALUES (3, 'C:\\temp', TRUE, 12, '2004-01-01 08:00:00', NULL);"
        "INSERT INTO Orders VALUES (4, 'O''Brien 50%', FALSE, NULL, NULL, 5)");
  }
  // The Ids of the Orders rows the condition selects, in Id order.
  std::vector<int32_t> Selected(const std::string& condition) {
    return Ids(*Query("Select [Id] From [Orders] Where " + condition + " Order By [Id] Asc"));
  }
};

// A condition and the Ids of the rows it selects.
struct ConditionCase {
  const char* condition;
  std::vector<int32_t> ids;
};

struct BadFilterCase {
  const char* filter;
  const char* message;  // part of the description
};

TEST_P(Conditions, FilterKeepsTheMatchingRowsFromTheFirstMatchAndABadFilterChangesNothing) {
  const ConditionCase cases[] = {
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
  auto rs = Query("SELECT * FROM P ORDER BY [Id]");
  for (const ConditionCase& c : cases) {
    rs->Filter(c.condition);
    EXPECT_EQ(Ids(*rs), c.ids) << c.condition;
    EXPECT_EQ(rs->Filter(), c.condition);
  }
  rs->MoveLast();
  rs->Filter("Qty >= 10");
  EXPECT_EQ(rs->RecordCount(), 2);
  EXPECT_EQ(rs->AbsolutePosition(), 1);
  EXPECT_EQ(rs->Fields()["Id"].Value(), Variant(int32_t{1}));
  rs->MoveNext();
  EXPECT_EQ(rs->Fields()["Id"].Value(), Variant(int32_t{2}));
  rs->MoveNext();
  EXPECT_TRUE(rs->Eof());
  rs->Filter("Id = 42");
  EXPECT_TRUE(rs->Bof() && rs->Eof());
  rs->Filter("");
  EXPECT_EQ(rs->Filter(), "");
  EXPECT_EQ(rs->RecordCount(), 4);
  EXPECT_EQ(rs->AbsolutePosition(), 1);
  rs->Filter("Qty > 5");
  rs->MoveNext();
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
    const VbError error = ErrorOf([&] { rs->Filter(c.filter); });
    EXPECT_EQ(error.Number(), 3001) << c.filter;
    EXPECT_TRUE(Holds(error.Description(), c.message));
    EXPECT_TRUE(Holds(error.Description(), c.filter)) << "names the filter";
    EXPECT_EQ(rs->Filter(), "Qty > 5");
    EXPECT_EQ(rs->RecordCount(), 2);
    EXPECT_EQ(rs->AbsolutePosition(), 2);
  }
}

TEST_P(Conditions, ComposedSqlSelectsAndBracketedStatementsWriteTheSameRowsOnEveryProvider) {
  const ConditionCase cases[] = {
      {"[Paid]<>0", {1, 3}},
      {"[Paid]=0", {2, 4}},
      {"([Name] LIKE '%BOLT%')", {1}},
      {"([Name] NOT  LIKE '%bolt%')", {2, 3, 4}},
      {"([Name] LIKE '%:\\t%')", {3}},
      {"([Name] LIKE '%50%%')", {4}},
      {"([Name] LIKE '%o''b%' or [Name] LIKE '%N_T%')", {2, 4}},
      {"(not [Name] is NULL and not [Name]='')", {1, 2, 3, 4}},
      {"([Made]>='2003-05-07 00:00:00' and [Made]<'2004-01-01 00:00:00')", {2}},
      {"([Made]<'2003-05-07 00:00:00' or [Made]>='2004-01-01 00:00:00')", {1, 3}},
      {"([Price]>=1.5)", {1, 3}},
      {"([Price] is null or not [Price]<1)", {1, 3, 4}},
      {"([Qty] is NULL or [Qty]='')", {3}},
      {"([Qty] LIKE '%1%')", {1}},
      {"[qty]>=10 and ([Id]<3)", {1, 2}},
  };
  for (const ConditionCase& c : cases) {
    EXPECT_EQ(Selected(c.condition), c.ids) << c.condition;
  }
  EXPECT_EQ(cn()->Execute("UPDATE [Orders] SET [Qty] = ?, [Paid] = ? WHERE [Id] = ? AND [Made] = ?",
                          {Variant(int32_t{11}), Variant(false), Variant(int32_t{1}),
                           Variant(Date{37747.60434027778})}),
            1);
  EXPECT_EQ(cn()->Execute("INSERT INTO [Orders] ([Id], [Name], [Made]) VALUES (?, ?, ?)",
                          {Variant(int32_t{5}), Variant("new"), Variant(Date{37748})}),
            1);
  EXPECT_EQ(Selected("[Paid]=0 and [Qty]=11"), std::vector<int32_t>{1});
  EXPECT_EQ(Selected("[Made]='2003-05-07 00:00:00'"), (std::vector<int32_t>{2, 5}));
}

VARNEL_ON_EVERY_PROVIDER(Conditions);

}  // namespace
}  // namespace varnel::testing
