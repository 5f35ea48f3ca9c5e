// The SQL that the library composes (bracketed names, LIKE without regard to
// case, Boolean fields compared with 0, ISO dates in quotes) selects the same
// rows on every provider.
#include <gtest/gtest.h>

#include "db/db_fixture.h"

namespace varnel::testing {
namespace {

class ComposedSql : public DbTest {
 protected:
  void SetUp() override {
    cn()->Execute(
        "CREATE TABLE Orders (\"Id\" INTEGER, \"Name\" VARCHAR(20), \"Paid\" BOOLEAN, "
        "\"Price\" MONEY, \"Made\" TIMESTAMP, \"Qty\" INTEGER);"
        "INSERT INTO Orders VALUES (1, 'Bolt', TRUE, 1.5, '2003-05-06 14:30:15', 10);"
        "INSERT INTO Orders VALUES (2, 'nut', FALSE, 0.25, '2003-05-07 00:00:00', 20);"
        "INSERT INTO Orders VALUES (3, 'C:\\temp', TRUE, 12, '2004-01-01 08:00:00', NULL);"
        "INSERT INTO Orders VALUES (4, 'O''Brien 50%', FALSE, NULL, NULL, 5)");
  }
  // The Ids of the rows the condition selects, in Id order.
  std::vector<int32_t> Selected(const std::string& condition) {
    return Ids(*Query("Select [Id] From [Orders] Where " + condition + " Order By [Id] Asc"));
  }
};

struct ConditionCase {
  const char* condition;
  std::vector<int32_t> ids;
};

TEST_P(ComposedSql, ConditionsSelectAndBracketedStatementsWriteTheSameRowsOnEveryProvider) {
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

VARNEL_ON_EVERY_PROVIDER(ComposedSql);

}  // namespace
}  // namespace varnel::testing
