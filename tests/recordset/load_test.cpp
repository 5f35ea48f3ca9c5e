// Loading a recordset from a database: the copy, the events of both open modes,
// the date cut, computed and auto-coded fields, and the failures.
#include "recordset/fixtures.h"

namespace varnel::testing {
namespace {

using DataSourceLoad = SourceTest;
constexpr const char* kLoaded = "SysDataSourceInit,DataSourceInit,RecordPointerChange";

TEST_P(DataSourceLoad, AutoModeCopiesEveryRowCutsDatesComputesAndReleasesTheDatabase) {
  auto seq = rs.Add("Seq");
  seq->IsData = false;
  seq->FieldType = F_AutoCoding;
  auto amount = rs.Add("Amount");
  amount->IsData = false;
  amount->FieldType = F_Numeral;
  amount->ComputeString = "Qty*Price";
  amount->IsSum = rs.Item("Qty")->IsSum = true;
  rs.Add("Colour");  // no such column: named, and the other fields load
  EXPECT_FALSE(rs.InitDataSource());
  EXPECT_EQ(log.Joined(), kLoaded);
  ASSERT_EQ(ui.shown().size(), 1u);
  EXPECT_EQ(ui.shown()[0].caption, "");
  EXPECT_EQ(ui.LastText(), "'Colour' doesn't be found.\nId\nName\nQty\nPrice\nMade\nDone");
  EXPECT_TRUE(rs.Item("Colour")->GetValue(2).IsNull());
  EXPECT_EQ(rs.Rows(), 3);
  EXPECT_EQ(rs.AbsolutePosition(), 1);
  EXPECT_EQ(rs.Item("Name")->GetValue(2), Variant("Nut"));
  EXPECT_EQ(rs.Item("Price")->GetValue(1).ToDouble(), 1.5);
  EXPECT_TRUE(rs.Item("Price")->GetValue(3).IsNull());
  EXPECT_EQ(rs.Item("Name")->DefinedSize, 20);
  EXPECT_EQ(rs.SFConnection, nullptr);
  EXPECT_EQ(rs.SFRecordset, nullptr);
  EXPECT_EQ(rs.EditStatus(), E_Default);
  EXPECT_TRUE(rs.GetEdit(1) && rs.GetEdit(3));
  EXPECT_FALSE(rs.GetSelectRow(2));
  EXPECT_EQ(seq->GetValue(3), Variant(int32_t{3}));
  EXPECT_EQ(amount->GetValue(2).ToDouble(), 5.0);
  EXPECT_EQ(rs.Item("Qty")->SumValue.ToDouble(), 60.0);
  EXPECT_EQ(amount->SumValue.ToDouble(), 20.0);
  // Dates keep only what their DateType shows.
  const std::pair<Enum_DateType, const char*> cases[] = {
      {D_YMDHNS, "2003-05-06 14:30:15"}, {D_YMDHN, "2003-05-06 14:30:00"},
      {D_YMD, "2003-05-06 00:00:00"},    {D_HNS, "1899-12-30 14:30:15"},
      {D_HN, "1899-12-30 14:30:00"},
  };
  for (const auto& [type, expected] : cases) {
    rs.Item("Made")->DateType = type;
    ASSERT_FALSE(rs.InitDataSource());
    EXPECT_EQ(IsoDate(rs.Item("Made")->GetValue(1).ToDate()), expected) << type;
    EXPECT_TRUE(rs.Item("Made")->GetValue(3).IsNull());
  }
}

TEST_P(DataSourceLoad, UserModeShowsTheQueryReusesTheOpenRecordsetAndCloseForgetsIt) {
  rs.UserOpenMode = U_User;
  rs.DefaultCondition = "[Qty]>10";
  rs.OrderByField1 = "[Id]";
  rs.OrderByAscending1 = Descending;
  EXPECT_FALSE(rs.InitDataSource());
  EXPECT_EQ(log.Joined(), std::string("DataSourceInitUser,") + kLoaded);
  EXPECT_EQ(client.user_query, "[Qty]>10|[Id] Desc");
  EXPECT_EQ(rs.Rows(), 2);
  EXPECT_EQ(rs.Item("Id")->GetValue(1).ToLong(), 3);
  ASSERT_NE(rs.SFRecordset, nullptr);
  EXPECT_EQ(rs.SFRecordset->State(), 1);
  Execute({"INSERT INTO Items ([Id], [Qty]) VALUES (4, 40)"});
  rs.DefaultCondition = "[Qty]>100";  // no effect while the recordset stays open
  log.Clear();
  EXPECT_FALSE(rs.RefreshDataSource());
  EXPECT_EQ(log.Joined(),
            "DataSourceRefreshUser,SysDataSourceRefresh,DataSourceRefresh,RecordPointerChange");
  EXPECT_EQ(rs.Rows(), 3);
  rs.Tag = "screen";  // closing forgets the configuration but keeps the values
  rs.SysSetMutliSelectRows(true, 2, Ctrl);
  const std::shared_ptr<db::Connection> connection = rs.SFConnection;
  log.Clear();
  EXPECT_FALSE(rs.CloseDataSource());
  EXPECT_EQ(log.Joined(), "");
  EXPECT_EQ(connection->State(), 1);  // dropped, not closed
  EXPECT_EQ(rs.SFConnection, nullptr);
  EXPECT_EQ(rs.SFRecordset, nullptr);
  EXPECT_EQ(rs.ConnectString + rs.TableName + rs.DefaultCondition + rs.OrderByField1 + rs.Tag, "");
  EXPECT_EQ(rs.OrderByAscending1, Ascending);
  EXPECT_EQ(rs.SelectState(), S_None);
  EXPECT_EQ(rs.Rows(), 0);
  EXPECT_EQ(rs.AbsolutePosition(), 0);
  EXPECT_EQ(rs.Item("Name")->GetValue(2), Variant("Washer"));
}

TEST_P(DataSourceLoad, CheckFieldsRefusesBadDefinitionsButRaisesTheEvents) {
  const struct {
    void (*setup)(ClsRecordset&);
    const char* title;
    const char* text;
  } cases[] = {
      {[](ClsRecordset& r) { r.Clear(); }, "", "没有指定字段！"},
      {[](ClsRecordset& r) { r.Item("Price")->FieldType = F_Currency; }, "Check_Field",
       "Please set ' Price' currency sign."},
      {[](ClsRecordset& r) { r.Item("Id")->FieldType = r.Item("Qty")->FieldType = F_Locked; },
       "Check_Field", "F_Locked 类型字段不能同时有两列！"},
  };
  for (const auto& c : cases) {
    ClsRecordset other;
    EventLog events;
    other.Advise(&events);
    other.ConnectString = rs.ConnectString;
    other.TableName = "Items";
    for (const char* name : {"Id", "Qty", "Price"}) {
      other.Add(name);
    }
    c.setup(other);
    EXPECT_FALSE(other.InitDataSource());
    EXPECT_EQ(ui.shown().back().caption, c.title);
    EXPECT_EQ(ui.LastText(), c.text);
    EXPECT_EQ(other.Rows(), 0);
    EXPECT_EQ(events.Joined(), kLoaded);
  }
}

// A load, refresh or query that the database refuses is reported (a first
// load in the error form, the others in a message box) and changes nothing:
// rows, status, current row, selection and its anchor stay, no events follow.
TEST_P(DataSourceLoad, FailedLoadIsReportedAndChangesNothing) {
  const struct {
    char op;  // I: InitDataSource, R: RefreshDataSource, Q: ExecuteQuery
    const char* table;
    const char* condition;
    Enum_EditStatus status;
  } cases[] = {
      {'I', "NoSuchTable", "", E_Default},         {'I', "Items", "[NoSuchColumn]=1", E_Default},
      {'R', "NoSuchTable", "", E_Default},         {'R', "Items", "[NoSuchColumn]=1", E_Default},
      {'Q', "Items", "[NoSuchColumn]=1", E_Query},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(1, c.op) + c.condition);
    rs.TableName = "Items";
    rs.DefaultCondition = "";
    Load();
    rs.AbsolutePosition(3);
    rs.SysSetMutliSelectRows(true, 2, Shift);  // anchor 3, rows 2..3
    if (c.op == 'Q') {
      ASSERT_FALSE(rs.NewQuery());
    }
    rs.TableName = c.table;
    rs.DefaultCondition = c.condition;
    log.Clear();
    const bool failed = c.op == 'I'   ? rs.InitDataSource()
                        : c.op == 'R' ? rs.RefreshDataSource()
                                      : rs.ExecuteQuery();
    EXPECT_TRUE(failed);
    EXPECT_EQ(ui.shown().back().kind, c.op == 'I' ? ShownMessage::Error : ShownMessage::Box);
    if (c.op != 'I') {
      EXPECT_EQ(ui.LastText().rfind("Error:-2147467259\r\n", 0), 0u) << ui.LastText();
    }
    EXPECT_EQ(log.Joined(), c.op == 'Q' ? "ExecuteQueryBefore" : "");
    EXPECT_EQ(rs.EditStatus(), c.status);
    if (c.op == 'Q') {
      ASSERT_FALSE(rs.CancelQuery());  // the criteria are still kept
    }
    EXPECT_EQ(rs.Rows(), 3);
    EXPECT_EQ(rs.Item("Name")->GetValue(2).ToString(), "Nut");
    EXPECT_EQ(rs.AbsolutePosition(), c.op == 'Q' ? 1 : 3);  // entering query mode went to 1
    EXPECT_EQ(rs.SelectState(), S_Multi);
    EXPECT_TRUE(rs.GetSelectRow(2) && rs.GetSelectRow(3) && !rs.GetSelectRow(1));
  }
  rs.TableName = "Items";
  rs.DefaultCondition = "";
  EXPECT_FALSE(rs.RefreshDataSource());
  EXPECT_EQ(rs.SelectState(), S_None);
  rs.SysSetMutliSelectRows(true, 1, Shift);  // a load keeps the anchor
  EXPECT_TRUE(rs.GetSelectRow(1) && rs.GetSelectRow(3));
}

// Nothing to open from: E_Nothing and no rows; the client's own objects stay.
TEST_P(DataSourceLoad, NothingToOpenFromLeavesNoRowsAndTheClientsObjects) {
  Load();
  const auto own = std::make_shared<db::Connection>();  // never opened
  rs.SFConnection = own;
  rs.ConnectString = "";
  log.Clear();
  EXPECT_FALSE(rs.InitDataSource());
  EXPECT_EQ(rs.SFConnection, own);
  EXPECT_EQ(rs.EditStatus(), E_Nothing);
  EXPECT_EQ(rs.Rows(), 0);
  EXPECT_EQ(log.Joined(), std::string("EditStatusChange,") + kLoaded);
  EXPECT_FALSE(rs.MoveNext());  // nothing to move over
  EXPECT_EQ(log.Joined(), std::string("EditStatusChange,") + kLoaded);
  rs.SFConnection = nullptr;
  rs.ConnectString = db.ConnectionString();
  log.Clear();
  EXPECT_FALSE(rs.RefreshDataSource());
  EXPECT_EQ(log.Joined(),
            "EditStatusChange,SysDataSourceRefresh,DataSourceRefresh,RecordPointerChange");
  EXPECT_EQ(rs.Rows(), 3);
}

TEST_P(DataSourceLoad, RefreshSavesAPendingEditAndInitInQueryModeRestoresTheCriteriaFirst) {
  Load();
  ASSERT_FALSE(rs.Modify("Qty", Variant(int32_t{99}), 2));
  client.answer = E_Defeat;
  EXPECT_FALSE(rs.RefreshDataSource());
  EXPECT_EQ(rs.EditStatus(), E_Modify);
  EXPECT_EQ(rs.Item("Qty")->GetValue(2).ToLong(), 99);  // not reloaded
  client.answer = E_Succeed;
  EXPECT_FALSE(rs.RefreshDataSource());
  EXPECT_EQ(rs.EditStatus(), E_Default);
  EXPECT_EQ(rs.Item("Qty")->GetValue(2).ToLong(), 20);  // the client did not write it
  // A load in query mode gives the saved criteria back first.
  rs.Item("Name")->FieldType = F_Text;
  rs.Item("Name")->QueryValue = "Bolt";
  ASSERT_FALSE(rs.NewQuery());
  rs.Item("Name")->QueryValue = "Nut";
  EXPECT_FALSE(rs.InitDataSource());
  EXPECT_EQ(rs.EditStatus(), E_Default);
  EXPECT_EQ(rs.Item("Name")->QueryValue, "Bolt");
  EXPECT_EQ(rs.Rows(), 1);
}

VARNEL_ON_EVERY_PROVIDER(DataSourceLoad);

}  // namespace
}  // namespace varnel::testing
