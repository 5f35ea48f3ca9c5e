#include "editing/order_screen.h"

namespace varnel::testing {
namespace {

using RecordModify = OrderScreen;

TEST_F(RecordModify, FirstChangeSnapshotsTheRowAndEntersModify) {
  EXPECT_FALSE(rs.Modify("Name", "Zed", 2));
  EXPECT_EQ(EditingEvents(log), "ModifyBefore,EditStatusChange,SysModifyAfter,ModifyAfter");
  EXPECT_EQ(rs.EditStatus(), E_Modify);
  EXPECT_EQ(Column(name), "Ann,Zed,Cy");
  EXPECT_EQ(rs.GetModifyValue("Name"), Variant("Bo"));
  EXPECT_EQ(State().saved_row, 2);
  EXPECT_EQ(rs.AbsolutePosition(), 1);  // the change does not move the pointer
}

TEST_F(RecordModify, RowZeroIsTheCurrentRow) {
  State().current_row = 3;
  EXPECT_FALSE(rs.Modify("Qty", int32_t{10}));
  EXPECT_EQ(State().saved_row, 3);
  EXPECT_EQ(Column(qty), "2,3,10");
  EXPECT_EQ(Column(amount), "3,6,5");  // the computed field follows
  EXPECT_EQ(qty->SumValue.ToDouble(), 15);
}

TEST_F(RecordModify, MainBooleanFieldStoresIntegerOneAndKeepsTheStatus) {
  EXPECT_FALSE(rs.Modify("Main", false));
  EXPECT_EQ(main->GetValue(1).VarType(), vbInteger);
  EXPECT_EQ(main->GetValue(1).ToLong(), 1);
  EXPECT_EQ(EditingEvents(log), "ModifyBefore,MainFieldChange,SysModifyAfter,ModifyAfter");
  EXPECT_EQ(rs.EditStatus(), E_Default);
}

struct PermissionCase {
  const char* what;
  Enum_EditStatus status;
  bool edit_add_new, edit_modify, field_edit, row_mark, locked;
  int32_t row;
  bool refused;
};

TEST_F(RecordModify, PermissionTable) {
  const PermissionCase cases[] = {
      {"default, modify allowed", E_Default, true, true, true, true, false, 0, false},
      {"default, EditModify off", E_Default, true, false, true, true, false, 0, true},
      {"modify, EditModify off", E_Modify, true, false, true, true, false, 0, true},
      {"new row, EditAddNew off", E_AddNew, false, true, true, true, false, 0, true},
      {"copied row, EditAddNew off", E_Copy, false, true, true, true, false, 0, true},
      {"new row, EditModify off", E_AddNew, true, false, true, true, false, 0, false},
      {"read-only field", E_Default, true, true, false, true, false, 0, true},
      {"row not editable", E_Default, true, true, true, false, false, 0, true},
      {"locked, current row", E_Default, true, true, true, true, true, 0, true},
      {"locked, row given", E_Default, true, true, true, true, true, 3, false},
      {"query ignores every mark", E_Query, false, false, false, false, true, 0, false},
  };
  for (const PermissionCase& c : cases) {
    SCOPED_TRACE(c.what);
    Fill({{1, "Ann", 2, 1.5}, {2, "Bo", 3, 2.0}, {3, "Cy", 4, 0.5}});
    State().edit_status = c.status;
    State().current_row = 3;
    State().edit_marks[3] = c.row_mark;
    State().locked = c.locked;
    rs.EditAddNew = c.edit_add_new;
    rs.EditModify = c.edit_modify;
    name->Edit = c.field_edit;
    capture.ui().shown.clear();
    EXPECT_EQ(rs.Modify("Name", "Zed", c.row), c.refused);
    if (c.refused) {
      EXPECT_EQ(capture.LastText(), "You can not update the read only field.");
      EXPECT_EQ(name->GetValue(3), Variant("Cy"));
      EXPECT_EQ(rs.EditStatus(), c.status);
    } else {
      EXPECT_TRUE(capture.shown().empty());
    }
  }
}

struct TransitionCase {
  const char* what;
  void (*reach)(ClsRecordset&);
  Enum_EditStatus after;
  int client_asked;
  int status_events;  // EditStatusChange raised by the Modify
};

TEST_F(RecordModify, StatusTransitionTable) {
  const TransitionCase cases[] = {
      {"default", [](ClsRecordset&) {}, E_Modify, 0, 1},
      {"modify", [](ClsRecordset& r) { r.Modify("Qty", int32_t{9}); }, E_Modify, 0, 0},
      {"new", [](ClsRecordset& r) { r.NewRecord(); }, E_AddNew, 0, 0},
      {"copy", [](ClsRecordset& r) { r.CopyRecord(); }, E_Copy, 0, 0},
      {"delete saves first", [](ClsRecordset& r) { r.DeleteRecord(); }, E_Modify, 1, 2},
      {"modify-delete saves first",
       [](ClsRecordset& r) {
         r.Modify("Qty", int32_t{9});
         r.DeleteRecord();
       },
       E_Modify, 1, 2},
      {"new-delete resets silently",
       [](ClsRecordset& r) {
         r.NewRecord();
         r.DeleteRecord();
       },
       E_Modify, 0, 1},
      {"copy-delete resets silently",
       [](ClsRecordset& r) {
         r.CopyRecord();
         r.DeleteRecord();
       },
       E_Modify, 0, 1},
  };
  for (const TransitionCase& c : cases) {
    SCOPED_TRACE(c.what);
    Fill({{1, "Ann", 2, 1.5}, {2, "Bo", 3, 2.0}, {3, "Cy", 4, 0.5}});
    State().edit_status = E_Default;
    c.reach(rs);
    log.Clear();
    client.asked = 0;
    EXPECT_FALSE(rs.Modify("Name", "Zed"));
    EXPECT_EQ(rs.EditStatus(), c.after);
    EXPECT_EQ(client.asked, c.client_asked);
    EXPECT_EQ(std::count(log.names.begin(), log.names.end(), "EditStatusChange"), c.status_events);
    EXPECT_EQ(name->GetValue(), Variant("Zed"));
  }
}

TEST_F(RecordModify, PendingDeletionThatCannotBeSavedEndsTheChangeSilently) {
  rs.DeleteRecord();
  client.answer = E_Defeat;
  log.Clear();
  EXPECT_FALSE(rs.Modify("Name", "Zed"));
  EXPECT_EQ(EditingEvents(log), "UpdateRecordBefore,UserUpdateRecord");
  EXPECT_EQ(rs.EditStatus(), E_Delete);
  EXPECT_EQ(Column(name), "Bo,Cy");
}

TEST_F(RecordModify, ChangeOfAnotherRowSavesThePendingEditFirst) {
  rs.Modify("Name", "Zed", 1);
  EXPECT_FALSE(rs.Modify("Name", "Yul", 2));
  EXPECT_EQ(client.asked, 1);
  EXPECT_EQ(State().saved_row, 2);
  EXPECT_EQ(rs.GetModifyValue("Name"), Variant("Bo"));
  client.answer = E_Defeat;
  EXPECT_TRUE(rs.Modify("Name", "Xia", 3));  // row 2 cannot be saved: row 3 stays as it is
  EXPECT_EQ(Column(name), "Zed,Yul,Cy");
  EXPECT_EQ(State().saved_row, 2);
}

TEST_F(RecordModify, CancelledChangeStillReplacesTheSnapshot) {
  client.cancel = true;
  EXPECT_TRUE(rs.Modify("Name", "Zed", 3));
  EXPECT_EQ(rs.EditStatus(), E_Default);
  EXPECT_EQ(State().saved_row, 3);
  EXPECT_EQ(EditingEvents(log), "ModifyBefore");
}

TEST_F(RecordModify, ValueRejectedByFormatValueIsNotStored) {
  qty->InputMax = Variant(int32_t{100});
  EXPECT_TRUE(rs.Modify("Qty", int32_t{1000}));
  EXPECT_EQ(qty->GetValue(1).ToLong(), 2);
  EXPECT_FALSE(capture.shown().empty());
  EXPECT_EQ(EditingEvents(log), "ModifyBefore");
}

TEST_F(RecordModify, QueryModeStoresTheRawCriterionAndIgnoresCancel) {
  State().edit_status = E_Query;
  client.cancel = true;
  name->Edit = false;
  EXPECT_FALSE(rs.Modify("Name", "not smith", 2));
  EXPECT_EQ(name->QueryValue, "not smith");
  EXPECT_EQ(internal::FieldAccess::Values(*name)[2], Variant("Bo"));
  EXPECT_EQ(EditingEvents(log), "ModifyBefore,ValueQueryChange,SysModifyAfter,ModifyAfter");
}

TEST_F(RecordModify, NothingStatusAndBadArgumentsChangeNothing) {
  State().edit_status = E_Nothing;
  EXPECT_FALSE(rs.Modify("Name", "Zed"));
  State().edit_status = E_Default;
  EXPECT_TRUE(rs.Modify("Nope", "Zed"));
  EXPECT_TRUE(rs.Modify("Name", "Zed", 9));
  EXPECT_EQ(capture.shown().size(), 2u);
  EXPECT_EQ(Column(name), "Ann,Bo,Cy");
  EXPECT_EQ(rs.EditStatus(), E_Default);
}

}  // namespace
}  // namespace varnel::testing
