// The SELECT text, its condition and its order, as the database receives them.
#include "recordset/fixtures.h"
#include "recordset/recordset_state.h"

namespace varnel::testing {
namespace {

using SqlCompose = SourceTest;

std::string SqlText(ClsRecordset& rs) {
  rs.RecordsetCondition();  // composes
  return internal::RecordsetAccess::State(rs).sql_text;
}

TEST_P(SqlCompose, EveryCombinationOfListConditionAndOrderGivesItsTextAndTheChainStopsAtABlank) {
  // The list is trimmed, so only a list ending in a bracketed name loads in the fifth form.
  rs.FieldsName = "[Id], [Name], [Qty], [Price], [Made] ";
  EXPECT_FALSE(rs.InitDataSource()) << ui.LastText();
  EXPECT_EQ(rs.Rows(), 3);
  EXPECT_EQ(rs.Item("Name")->GetValue(3), Variant("Washer"));
  const char* cases[][4] = {
      // list, condition, order -> text
      {"a,b", "c=1", "d", "Select a,b From T Where c=1 Order By d"},
      {"a,b", "", "d", "Select a,b From T Order By d"},
      {"a,b", "c=1", "", "Select a,b From T Where c=1"},
      {"", "c=1", "d", "Select * From T Where c=1 Order By d"},
      {" a,b ", "", "", "Select a,bFrom T"},
      {"", "c=1", "", "Select * From T Where c=1"},
      {"", "", "d", "Select * From T Order By d"},
      {"  ", "", "", "T"},
  };
  rs.TableName = "T";
  for (const auto& [fields, condition, order, sql] : cases) {
    rs.FieldsName = fields;
    rs.DefaultCondition = condition;
    rs.DefaultOrderBy = order;
    EXPECT_EQ(SqlText(rs), sql) << fields << "|" << condition << "|" << order;
  }
  // The order-by chain stops at the first blank field.
  const char* chains[][5] = {
      // fixed order, fields 1..3 -> order
      {"", "", "b", "c", ""},
      {"a", " b ", "", "", "a and b Asc"},
      {"", "x", "y", "z", "x Asc,y Desc,z Asc"},
      {"", "x", " ", "z", "x Asc"},
      {" a ", "", "", "", "a"},
  };
  rs.OrderByAscending2 = Descending;
  for (const auto& [fixed, f1, f2, f3, expected] : chains) {
    rs.DefaultOrderBy = fixed;
    rs.OrderByField1 = f1;
    rs.OrderByField2 = f2;
    rs.OrderByField3 = f3;
    std::string order = "old";
    EXPECT_FALSE(rs.GetOrderBy(order));
    EXPECT_EQ(order, expected);
  }
}

TEST_P(SqlCompose, LaterPredicatesAreParenthesisedAndOneWithoutPredicateStopsTheLoad) {
  rs.Item("Name")->FieldType = F_Text;
  rs.Item("Name")->QueryValue = "Bolt";
  rs.Item("Qty")->QueryValue = ">=10";
  rs.Item("Id")->FieldType = F_AutoCoding;
  rs.Item("Id")->QueryValue = "junk";  // passed over silently
  const std::string p = CStr(MdlQuery::QueryCondition(*rs.Item("Name")));
  const std::string q = CStr(MdlQuery::QueryCondition(*rs.Item("Qty")));
  rs.DefaultCondition = " Id>0 ";
  std::string condition;
  EXPECT_FALSE(rs.GetCondition(condition));
  EXPECT_EQ(condition, "Id>0 and " + p + " and (" + q + ")");
  EXPECT_EQ(rs.SysCondition, p + " and (" + q + ")");
  EXPECT_EQ(rs.RecordsetCondition(), condition);
  EXPECT_TRUE(ui.shown().empty());
  // A criterion that makes no predicate is reported and stops the load.
  auto done = rs.Add("Done");
  done->FieldType = F_Boolean;
  done->DisplayName = "Finished";
  done->QueryValue = "maybe";  // a Boolean criterion is 0 or 1
  rs.SysCondition = "before";
  condition = "old";
  EXPECT_TRUE(rs.GetCondition(condition));
  EXPECT_EQ(condition, "old");
  EXPECT_EQ(rs.SysCondition, "before");
  ASSERT_EQ(ui.shown().size(), 1u);
  EXPECT_EQ(ui.shown()[0].title, "Error:94");
  EXPECT_EQ(ui.LastText(), "'Finished' can not be null.");
  EXPECT_FALSE(rs.InitDataSource());
  EXPECT_EQ(rs.Rows(), 0);
  EXPECT_EQ(log.Joined(), "SysDataSourceInit,DataSourceInit,RecordPointerChange");
}

VARNEL_ON_EVERY_PROVIDER(SqlCompose);

}  // namespace
}  // namespace varnel::testing
