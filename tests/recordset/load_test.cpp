// Loading a recordset from a database: the copy, the events of both open modes,
// the date cut, computed and auto-coded fields, and the failures.
#include <functional>

#include "recordset/recordset_state.h"
#include "source_fixture.h"

namespace varnel::testing {
namespace {

using DataSourceLoad = SourceTest;

TEST_P(DataSourceLoad, AutoModeCopiesEveryRowAndReleasesTheDatabase) {
  EXPECT_FALSE(rs.InitDataSource());
  EXPECT_EQ(log.Joined(), "SysDataSourceInit,DataSourceInit,RecordPointerChange");
  EXPECT_EQ(rs.Rows(), 3);
  EXPECT_EQ(rs.AbsolutePosition(), 1);
  EXPECT_EQ(rs.Item("Name")->GetValue(2), Variant("Nut"));
  EXPECT_EQ(rs.Item("Price")->GetValue(1).ToDouble(), 1.5);
  EXPECT_TRUE(rs.Item("Price")->GetValue(3).IsNull());
  EXPECT_EQ(rs.Item("Name")->DefinedSize, 20);
  EXPECT_EQ(rs.SFConnection, nullptr);
  EXPECT_EQ(rs.SFRecordset, nullptr);
  EXPECT_EQ(rs.EditStatus(), E_Default);
  for (int32_t row = 1; row <= 3; ++row) {
    EXPECT_TRUE(rs.GetEdit(row));
    EXPECT_FALSE(rs.GetSelectRow(row));
  }
}

TEST_P(DataSourceLoad, InitInQueryModeRestoresTheSavedCriteriaFirst) {
  rs.Item("Name")->FieldType = F_Text;
  rs.Item("Name")->QueryValue = "Bolt";
  Load();
  ASSERT_FALSE(rs.NewQuery());
  rs.Item("Name")->QueryValue = "Nut";
  EXPECT_FALSE(rs.InitDataSource());
  EXPECT_EQ(rs.EditStatus(), E_Default);
  EXPECT_EQ(rs.Item("Name")->QueryValue, "Bolt");
  EXPECT_EQ(rs.Rows(), 1);
  EXPECT_EQ(rs.Item("Id")->GetValue(1).ToLong(), 1);
}

class InitUser : public ClsRecordsetEvents {
 public:
  void DataSourceInitUser(const std::string& condition, const std::string& order) override {
    seen = condition + "|" + order;
  }
  std::string seen;
};

TEST_P(DataSourceLoad, UserModeShowsTheQueryAndReusesTheOpenRecordset) {
  InitUser user;
  rs.Advise(&user);
  rs.UserOpenMode = U_User;
  rs.DefaultCondition = "[Qty]>10";
  rs.OrderByField1 = "[Id]";
  rs.OrderByAscending1 = Descending;
  EXPECT_FALSE(rs.InitDataSource());
  EXPECT_EQ(log.Joined(),
            "DataSourceInitUser,SysDataSourceInit,DataSourceInit,RecordPointerChange");
  EXPECT_EQ(user.seen, "[Qty]>10|[Id] Desc");
  EXPECT_EQ(rs.Rows(), 2);
  EXPECT_EQ(rs.Item("Id")->GetValue(1).ToLong(), 3);
  ASSERT_NE(rs.SFRecordset, nullptr);
  EXPECT_EQ(rs.SFRecordset->State(), 1);
  // A changed condition has no effect while the recordset stays open.
  Execute({"INSERT INTO Items ([Id], [Qty]) VALUES (4, 40)"});
  rs.DefaultCondition = "[Qty]>100";
  log.Clear();
  EXPECT_FALSE(rs.RefreshDataSource());
  EXPECT_EQ(log.Joined(),
            "DataSourceRefreshUser,SysDataSourceRefresh,DataSourceRefresh,RecordPointerChange");
  EXPECT_EQ(rs.Rows(), 3);
}

TEST_P(DataSourceLoad, EmptyTableLeavesNoRows) {
  Execute({"DELETE FROM Items"});
  rs.Item("Qty")->IsSum = true;
  EXPECT_FALSE(rs.InitDataSource());
  EXPECT_EQ(rs.Rows(), 0);
  EXPECT_EQ(rs.AbsolutePosition(), 0);
  EXPECT_EQ(internal::RecordsetAccess::State(rs).edit_marks.size(), 1u);
  EXPECT_EQ(log.Joined(), "SysDataSourceInit,DataSourceInit,RecordPointerChange");
}

TEST_P(DataSourceLoad, DatesKeepOnlyWhatTheirDateTypeShows) {
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

TEST_P(DataSourceLoad, NonDataFieldsAreNumberedComputedAndSummed) {
  auto seq = rs.Add("Seq");
  seq->IsData = false;
  seq->FieldType = F_AutoCoding;
  auto amount = rs.Add("Amount");
  amount->IsData = false;
  amount->FieldType = F_Numeral;
  amount->ComputeString = "Qty*Price";
  amount->IsSum = true;
  rs.Item("Qty")->IsSum = true;
  EXPECT_FALSE(rs.InitDataSource());
  EXPECT_EQ(seq->GetValue(3), Variant(int32_t{3}));
  EXPECT_EQ(amount->GetValue(1).ToDouble(), 15.0);
  EXPECT_EQ(amount->GetValue(2).ToDouble(), 5.0);
  EXPECT_EQ(rs.Item("Qty")->SumValue.ToDouble(), 60.0);
  EXPECT_EQ(amount->SumValue.ToDouble(), 20.0);
  EXPECT_EQ(log.Joined(), "SysDataSourceInit,DataSourceInit,RecordPointerChange");
}

TEST_P(DataSourceLoad, MissingColumnIsNamedAndTheOtherFieldsLoad) {
  rs.Add("Colour");
  EXPECT_FALSE(rs.InitDataSource());
  ASSERT_EQ(ui.shown().size(), 1u);
  EXPECT_EQ(ui.shown()[0].caption, "");
  EXPECT_EQ(ui.LastText(), "'Colour' doesn't be found.\nId\nName\nQty\nPrice\nMade\nDone");
  EXPECT_EQ(rs.Rows(), 3);
  EXPECT_TRUE(rs.Item("Colour")->GetValue(2).IsNull());
  EXPECT_EQ(rs.Item("Name")->GetValue(2), Variant("Nut"));
}

TEST_P(DataSourceLoad, CheckFieldsRefusesBadDefinitionsButRaisesTheEvents) {
  struct Case {
    std::function<void(ClsRecordset&)> setup;
    const char* title;
    const char* text;
  };
  const Case cases[] = {
      {[](ClsRecordset& r) { r.Clear(); }, "", "没有指定字段！"},
      {[](ClsRecordset& r) { r.Item("Price")->FieldType = F_Currency; }, "Check_Field",
       "Please set ' Price' currency sign."},
      {[](ClsRecordset& r) { r.Item("Id")->FieldType = r.Item("Qty")->FieldType = F_Locked; },
       "Check_Field", "F_Locked 类型字段不能同时有两列！"},
  };
  for (const Case& c : cases) {
    ClsRecordset other;
    EventLog events;
    other.Advise(&events);
    other.ConnectString = rs.ConnectString;
    other.TableName = "Items";
    other.Add("Id");
    other.Add("Qty");
    other.Add("Price");
    c.setup(other);
    EXPECT_FALSE(other.InitDataSource());
    EXPECT_EQ(ui.shown().back().caption, c.title);
    EXPECT_EQ(ui.LastText(), c.text);
    EXPECT_EQ(other.Rows(), 0);
    EXPECT_EQ(events.Joined(), "SysDataSourceInit,DataSourceInit,RecordPointerChange");
  }
}

TEST_P(DataSourceLoad, FailedOpenReportsTheDatabaseErrorAndLeavesNothing) {
  Load();
  rs.TableName = "NoSuchTable";
  EXPECT_TRUE(rs.InitDataSource());
  EXPECT_EQ(ui.shown().back().kind, ShownMessage::Error);
  EXPECT_NE(ui.LastText().find("NoSuchTable"), std::string::npos);
  EXPECT_EQ(rs.EditStatus(), E_Nothing);
  EXPECT_EQ(rs.Rows(), 0);
  EXPECT_EQ(log.Joined(), "EditStatusChange,SysDataSourceInit,DataSourceInit,RecordPointerChange");
  EXPECT_FALSE(rs.MoveNext());  // nothing to move over
  rs.ConnectString = "";
  EXPECT_FALSE(rs.InitDataSource());  // nothing to open from: no message
  EXPECT_EQ(rs.EditStatus(), E_Nothing);
}

// Records Rows when the status changes: Refresh sets E_Default before the copy, Init after.
class StatusWatch : public ClsRecordsetEvents {
 public:
  explicit StatusWatch(ClsRecordset& rs) : rs_(rs) {}
  void EditStatusChange() override { rows.push_back(rs_.Rows()); }
  std::vector<int32_t> rows;

 private:
  ClsRecordset& rs_;
};

TEST_P(DataSourceLoad, RefreshSetsTheDefaultStatusRightAfterOpening) {
  StatusWatch watch(rs);
  rs.Advise(&watch);
  rs.TableName = "NoSuchTable";
  rs.InitDataSource();  // E_Nothing, Rows 0
  rs.TableName = "Items";
  log.Clear();
  EXPECT_FALSE(rs.RefreshDataSource());
  EXPECT_EQ(log.Joined(),
            "EditStatusChange,SysDataSourceRefresh,DataSourceRefresh,RecordPointerChange");
  rs.TableName = "NoSuchTable";
  rs.InitDataSource();
  rs.TableName = "Items";
  rs.InitDataSource();
  EXPECT_EQ(watch.rows, (std::vector<int32_t>{0, 0, 3, 3}));
}

TEST_P(DataSourceLoad, RefreshSavesAPendingEditFirst) {
  Load();
  ASSERT_FALSE(rs.Modify("Qty", Variant(int32_t{99}), 2));
  answering.answer = E_Defeat;
  log.Clear();
  EXPECT_FALSE(rs.RefreshDataSource());
  EXPECT_TRUE(log.Saw("UserUpdateRecord"));
  EXPECT_EQ(rs.EditStatus(), E_Modify);
  EXPECT_EQ(rs.Item("Qty")->GetValue(2).ToLong(), 99);  // not reloaded
  answering.answer = E_Succeed;
  EXPECT_FALSE(rs.RefreshDataSource());
  EXPECT_EQ(rs.EditStatus(), E_Default);
  EXPECT_EQ(rs.Item("Qty")->GetValue(2).ToLong(), 20);  // the client did not write it
}

TEST_P(DataSourceLoad, CloseForgetsTheConfigurationButKeepsValues) {
  rs.UserOpenMode = U_User;
  rs.DefaultCondition = "[Id]>0";
  rs.OrderByField1 = "[Id]";
  rs.OrderByAscending1 = Descending;
  rs.Tag = "screen";
  Load();
  rs.SysSetMutliSelectRows(true, 2, Ctrl);
  const std::shared_ptr<db::Connection> connection = rs.SFConnection;
  log.Clear();
  EXPECT_FALSE(rs.CloseDataSource());
  EXPECT_EQ(log.Joined(), "");
  EXPECT_EQ(connection->State(), 1);  // dropped, not closed
  EXPECT_EQ(rs.SFConnection, nullptr);
  EXPECT_EQ(rs.SFRecordset, nullptr);
  for (const std::string* text :
       {&rs.ConnectString, &rs.TableName, &rs.DefaultCondition, &rs.OrderByField1, &rs.Tag}) {
    EXPECT_EQ(*text, "");
  }
  EXPECT_EQ(rs.OrderByAscending1, Ascending);
  EXPECT_EQ(rs.SelectState(), S_None);
  EXPECT_EQ(rs.Rows(), 0);
  EXPECT_EQ(rs.AbsolutePosition(), 0);
  EXPECT_EQ(rs.Item("Name")->GetValue(2), Variant("Nut"));
}

VARNEL_ON_EVERY_PROVIDER(DataSourceLoad);

}  // namespace
}  // namespace varnel::testing
