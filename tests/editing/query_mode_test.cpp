// Query by form: entering query mode, the criteria kept between queries, and
// the reload of the rows that match.
#include "recordset/fixtures.h"

namespace varnel::testing {
namespace {

class QueryMode : public SourceTest {
 protected:
  QueryMode() {
    rs.Item("Name")->FieldType = F_Text;
    Load();
    rs.Item("Name")->QueryValue = "old";
  }
};

TEST_P(QueryMode, NewQueryEmptiesTheCriteriaAndExecuteReloadsTheRowsThatMatch) {
  EXPECT_FALSE(rs.NewQuery());
  EXPECT_EQ(log.Joined(),
            "NewQueryBefore,UpdateRecordBefore,RecordPointerChange2,EditStatusChange,"
            "SysNewQueryAfter,NewQueryAfter,RecordPointerChange");
  EXPECT_EQ(rs.EditStatus(), E_Query);
  EXPECT_EQ(rs.Item("Name")->QueryValue, "");
  EXPECT_FALSE(rs.Modify("Qty", ">=20", 2));
  EXPECT_EQ(rs.Item("Qty")->GetValue(3), Variant(">=20"));
  log.Clear();
  EXPECT_FALSE(rs.ExecuteQuery());
  EXPECT_EQ(log.names.front(), "ExecuteQueryBefore");
  EXPECT_TRUE(log.Saw("DataSourceRefresh"));
  const std::vector<std::string> tail(log.names.end() - 3, log.names.end());
  EXPECT_EQ(tail, (std::vector<std::string>{"SysExecuteQueryAfter", "ExecuteQueryAfter",
                                            "RecordPointerChange"}));
  EXPECT_EQ(rs.EditStatus(), E_Default);
  EXPECT_EQ(rs.Rows(), 2);
  EXPECT_EQ(rs.Item("Name")->GetValue(1), Variant("Nut"));
  EXPECT_FALSE(rs.RefineQuery());  // starts from the criteria that produced these rows
  EXPECT_EQ(rs.Item("Qty")->QueryValue, ">=20");
  rs.Modify("Name", "Washer");
  EXPECT_FALSE(rs.ExecuteQuery());
  EXPECT_EQ(rs.Rows(), 1);
  EXPECT_TRUE(ui.shown().empty());
}

TEST_P(QueryMode, UnbuildableOrCancelledExecutionKeepsQueryModeAndCancelRestoresTheCriteria) {
  log.Clear();
  EXPECT_FALSE(rs.CancelQuery());  // outside query mode: nothing
  EXPECT_EQ(log.Joined(), "");
  rs.NewQuery();
  rs.Modify("Qty", ">=many");
  EXPECT_TRUE(rs.ExecuteQuery());
  EXPECT_EQ(ui.shown().size(), 1u);
  EXPECT_EQ(rs.EditStatus(), E_Query);
  EXPECT_EQ(rs.Rows(), 3);
  log.Clear();
  EXPECT_FALSE(rs.CancelQuery());
  EXPECT_EQ(log.Joined(),
            "CancelQueryBefore,EditStatusChange,SysCancelQueryAfter,CancelQueryAfter,"
            "RecordPointerChange");
  EXPECT_EQ(rs.Item("Name")->QueryValue + "|" + rs.Item("Qty")->QueryValue, "old|");
  rs.NewQuery();
  rs.Modify("Qty", ">=20");
  log.Clear();
  EXPECT_FALSE(rs.ClearQuery());
  EXPECT_EQ(log.names.front(), "CancelQueryBefore");
  EXPECT_EQ(rs.EditStatus(), E_Default);
  for (const auto& field : rs) {
    EXPECT_EQ(field->QueryValue, "");
  }
  // A cancelled execution drops the saved criteria; an unsaved edit keeps query mode out.
  client.answer = E_Defeat;
  client.cancel_execute = true;
  rs.NewQuery();
  EXPECT_FALSE(rs.ExecuteQuery());
  EXPECT_EQ(rs.EditStatus(), E_Query);
  EXPECT_TRUE(rs.CancelQuery());  // nothing saved to give back: reported
  EXPECT_EQ(ui.shown().size(), 2u);
  EXPECT_EQ(rs.EditStatus(), E_Query);
  rs.EditStatus(E_Default);
  rs.Item("Name")->QueryValue = "old";
  rs.Modify("Name", "Zed");
  EXPECT_FALSE(rs.NewQuery());
  EXPECT_EQ(rs.EditStatus(), E_Modify);
  EXPECT_EQ(rs.Item("Name")->QueryValue, "old");
}

VARNEL_ON_EVERY_PROVIDER(QueryMode);

}  // namespace
}  // namespace varnel::testing
