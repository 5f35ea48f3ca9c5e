#include "editing/order_screen.h"

namespace varnel::testing {
namespace {

using RecordInsert = OrderScreen;
using RecordDelete = OrderScreen;

// Answers SystemTime with a fixed moment: 2003-05-06 14:30:15.
class FixedClock : public ClsRecordsetEvents {
 public:
  void SystemTime(Date& SysTime) override { SysTime = Date{37747.0 + 52215.0 / 86400.0}; }
};

TEST_F(RecordInsert, NewRecordAppendsTheCurrentEditableRow) {
  EXPECT_FALSE(rs.NewRecord());
  EXPECT_EQ(EditingEvents(log),
            "UpdateRecordBefore,RecordPointerChange2,NewRecordBefore,EditStatusChange,"
            "SysNewRecordAfter,NewRecordAfter,RecordPointerChange");
  EXPECT_EQ(rs.EditStatus(), E_AddNew);
  EXPECT_EQ(rs.Rows(), 4);
  EXPECT_EQ(rs.AbsolutePosition(), 4);
  EXPECT_TRUE(State().edit_marks[4]);
  EXPECT_FALSE(State().select_marks[4]);
}

TEST_F(RecordInsert, NewRowTakesDefaultThenDateThenComputedThenArgument) {
  FixedClock clock;
  rs.Advise(&clock);
  auto ordered = rs.Add("Ordered");
  ordered->FieldType = F_Date;
  ordered->DateType = D_YMD;
  ordered->DefaultValue = Variant(" toDAY ");
  price->DefaultValue = Variant(2.5);
  name->DefaultValue = Variant("new");
  amount->DefaultValue = Variant(int32_t{99});  // the computed value wins over it
  EXPECT_FALSE(rs.NewRecord("Qty", int32_t{4}));
  EXPECT_EQ(name->GetValue(4), Variant("new"));
  EXPECT_EQ(ordered->GetValue(4), Variant(Date{37747}));
  EXPECT_EQ(amount->GetValue(4).ToDouble(), 10);  // computed from the argument
  EXPECT_EQ(qty->SumValue.ToDouble(), 13);
  EXPECT_EQ(amount->SumValue.ToDouble(), 21);
  rs.UndoRecord();
  EXPECT_FALSE(rs.NewRecord("Amount", int32_t{7}));  // the argument beats the computation
  EXPECT_EQ(amount->GetValue(4).ToLong(), 7);
}

TEST_F(RecordInsert, CopyTakesTheCopiedFieldsAndDefaultsTheOthers) {
  name->DefaultValue = Variant("copy");
  State().current_row = 2;
  EXPECT_FALSE(rs.CopyRecord());
  EXPECT_EQ(EditingEvents(log),
            "UpdateRecordBefore,RecordPointerChange2,CopyRecordBefore,EditStatusChange,"
            "SysCopyRecordAfter,CopyRecordAfter,RecordPointerChange");
  EXPECT_EQ(rs.EditStatus(), E_Copy);
  EXPECT_EQ(Column(name), "Ann,Bo,Cy,copy");
  EXPECT_EQ(Column(qty), "2,3,4,3");
  EXPECT_EQ(Column(amount), "3,6,2,6");
  EXPECT_EQ(Column(id), "1,2,3,Null");
  EXPECT_EQ(rs.AbsolutePosition(), 4);
}

TEST_F(RecordInsert, RefusedOrStoppedInsertionsChangeNothing) {
  State().edit_status = E_Query;
  EXPECT_TRUE(rs.NewRecord());
  EXPECT_TRUE(rs.CopyRecord());
  State().edit_status = E_Nothing;
  EXPECT_TRUE(rs.NewRecord());
  State().edit_status = E_Default;
  rs.EditAddNew = false;
  EXPECT_TRUE(rs.NewRecord());
  rs.EditCopy = false;
  EXPECT_TRUE(rs.CopyRecord());
  EXPECT_EQ(EditingEvents(log), "");
  rs.EditAddNew = true;
  rs.Modify("Name", "Zed");
  client.answer = E_Defeat;  // the pending change cannot be saved
  EXPECT_FALSE(rs.NewRecord());
  client.answer = E_Succeed;
  client.cancel = true;
  EXPECT_FALSE(rs.NewRecord());
  EXPECT_EQ(rs.Rows(), 3);
  EXPECT_TRUE(capture.shown().empty());
}

TEST_F(RecordDelete, DeletionRemovesTheRowAndKeepsIt) {
  State().current_row = 2;
  EXPECT_FALSE(rs.DeleteRecord());
  EXPECT_EQ(EditingEvents(log),
            "DeleteRecordBefore,MainFieldChange,EditStatusChange,SysDeleteRecordAfter,"
            "DeleteRecordAfter,RecordPointerChange");
  EXPECT_EQ(Column(name), "Ann,Cy");
  EXPECT_EQ(rs.GetDeleteValue("Name"), Variant("Bo"));
  EXPECT_EQ(State().deleted_row, 2);
  EXPECT_EQ(rs.AbsolutePosition(), 2);
  EXPECT_EQ(qty->SumValue.ToDouble(), 6);
  State().current_row = 2;
  rs.DeleteRecord();  // saves the first deletion, then deletes the last row
  EXPECT_EQ(client.asked, 1);
  EXPECT_EQ(rs.AbsolutePosition(), 1);
}

struct DeleteCase {
  const char* what;
  void (*reach)(ClsRecordset&);
  Enum_EditStatus after;
  int client_asked;
};

TEST_F(RecordDelete, StatusTable) {
  const DeleteCase cases[] = {
      {"default", [](ClsRecordset&) {}, E_Delete, 0},
      {"modify", [](ClsRecordset& r) { r.Modify("Qty", int32_t{9}); }, E_ModifyDelete, 0},
      {"new", [](ClsRecordset& r) { r.NewRecord(); }, E_AddNewDelete, 0},
      {"copy", [](ClsRecordset& r) { r.CopyRecord(); }, E_CopyDelete, 0},
      {"delete", [](ClsRecordset& r) { r.DeleteRecord(); }, E_Delete, 1},
      {"modify-delete",
       [](ClsRecordset& r) {
         r.Modify("Qty", int32_t{9});
         r.DeleteRecord();
       },
       E_Delete, 1},
      {"new-delete",
       [](ClsRecordset& r) {
         r.NewRecord();
         r.DeleteRecord();
       },
       E_Delete, 0},
      {"copy-delete",
       [](ClsRecordset& r) {
         r.CopyRecord();
         r.DeleteRecord();
       },
       E_Delete, 0},
      {"modify of another row is saved first",
       [](ClsRecordset& r) { r.Modify("Qty", int32_t{9}, 3); }, E_Delete, 1},
  };
  for (const DeleteCase& c : cases) {
    SCOPED_TRACE(c.what);
    Fill({{1, "Ann", 2, 1.5}, {2, "Bo", 3, 2.0}, {3, "Cy", 4, 0.5}});
    State().edit_status = E_Default;
    c.reach(rs);
    client.asked = 0;
    EXPECT_FALSE(rs.DeleteRecord());
    EXPECT_EQ(rs.EditStatus(), c.after);
    EXPECT_EQ(client.asked, c.client_asked);
  }
}

TEST_F(RecordDelete, PermissionAndEmptyStore) {
  rs.EditDelete = false;
  EXPECT_TRUE(rs.DeleteRecord());
  rs.NewRecord();
  EXPECT_FALSE(rs.DeleteRecord());  // a row never saved may always go
  EXPECT_EQ(rs.EditStatus(), E_AddNewDelete);
  rs.EditDelete = true;
  State().edit_status = E_Query;
  EXPECT_TRUE(rs.DeleteRecord());
  State().edit_status = E_Default;
  Fill({});
  log.Clear();
  EXPECT_FALSE(rs.DeleteRecord());
  EXPECT_EQ(EditingEvents(log), "");
}

}  // namespace
}  // namespace varnel::testing
