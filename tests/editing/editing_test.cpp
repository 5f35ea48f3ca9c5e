// Editing one row at a time: the events of each operation, the permissions,
// the values a new row takes, the undo layers and the save's refusals.
#include <algorithm>
#include <cmath>
#include <functional>
#include <stdexcept>

#include "recordset/fixtures.h"

namespace varnel::testing {
namespace {

using RecordEditing = OrderScreen;

// Answers SystemTime with 2003-05-06 14:30:15.6 (the fraction is dropped, not rounded).
class FixedClock : public ClsRecordsetEvents {
 public:
  void SystemTime(Date& SysTime) override { SysTime = Date{37747.0 + 52215.6 / 86400.0}; }
};

TEST_F(RecordEditing, ModifyAndDeleteKeepTheValuesBeforeAndSaveAnotherRowFirst) {
  EXPECT_TRUE(rs.GetModifyValue("Name").IsEmpty());
  EXPECT_TRUE(rs.GetDeleteValue("Name").IsEmpty());
  EXPECT_FALSE(rs.Modify("Name", "Zed", 2));
  EXPECT_EQ(Column(name), "Ann,Zed,Cy");
  EXPECT_EQ(rs.GetModifyValue("Name"), Variant("Bo"));
  EXPECT_EQ(rs.AbsolutePosition(), 1);
  EXPECT_FALSE(rs.Modify("Name", "Yul", 3));  // another row: row 2 is saved first
  EXPECT_EQ(client.asked, 1);
  EXPECT_EQ(rs.GetModifyValue("Name"), Variant("Cy"));
  client.answer = E_Defeat;
  EXPECT_TRUE(rs.Modify("Name", "Xia", 1));  // row 3 cannot be saved: row 1 stays
  EXPECT_EQ(Column(name), "Ann,Zed,Yul");
  client.answer = E_Succeed;
  rs.Modify("Qty", int32_t{7});
  EXPECT_EQ(rs.GetModifyValue(Variant(int32_t{3})).ToLong(), 2);
  EXPECT_TRUE(rs.GetModifyValue("NoSuchField").IsEmpty());
  rs.UpdateRecord();
  rs.DeleteRecord();
  EXPECT_EQ(rs.GetDeleteValue("Qty").ToLong(), 7);
  qty->Col = 42;  // a Col outside the collection finds nothing
  EXPECT_TRUE(rs.GetDeleteValue("Qty").IsEmpty());
  EXPECT_TRUE(capture.shown().empty());
}

TEST_F(RecordEditing, ModifyPermissionTable) {
  const struct {
    Enum_EditStatus status;
    bool add_new, modify, field_edit, row_mark, locked;
    int32_t row;
    bool refused;
  } cases[] = {
      {E_Default, 1, 1, 1, 1, 0, 0, false}, {E_Default, 1, 0, 1, 1, 0, 0, true},
      {E_Modify, 1, 0, 1, 1, 0, 0, true},   {E_AddNew, 0, 1, 1, 1, 0, 0, true},
      {E_Copy, 0, 1, 1, 1, 0, 0, true},     {E_AddNew, 1, 0, 1, 1, 0, 0, false},
      {E_Default, 1, 1, 0, 1, 0, 0, true},  {E_Default, 1, 1, 1, 0, 0, 0, true},
      {E_Default, 1, 1, 1, 1, 1, 0, true},  {E_Default, 1, 1, 1, 1, 1, 3, false},
      {E_Query, 0, 0, 0, 0, 1, 0, false},  // query mode ignores every mark
      {E_Delete, 1, 0, 1, 1, 0, 0, false},  {E_AddNewDelete, 1, 0, 1, 1, 0, 0, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(&c - cases);
    Fill({{1, "Ann", 2, 1.5}, {2, "Bo", 3, 2.0}, {3, "Cy", 4, 0.5}});
    State().edit_status = c.status;
    State().current_row = 3;
    State().edit_marks[3] = c.row_mark;
    State().locked = c.locked;
    rs.EditAddNew = c.add_new;
    rs.EditModify = c.modify;
    name->Edit = c.field_edit;
    capture.ui().shown.clear();
    EXPECT_EQ(rs.Modify("Name", "Zed", c.row), c.refused);
    EXPECT_EQ(capture.LastText(), c.refused ? "You can not update the read only field." : "");
    EXPECT_EQ(name->GetValue(3), Variant(c.refused ? "Cy" : "Zed"));
    if (c.refused) {
      EXPECT_EQ(rs.EditStatus(), c.status);
    }
  }
}

// A cancelled or rejected change stores nothing; in query mode the raw
// criterion is stored whatever the client or the marks say.
TEST_F(RecordEditing, CancelledOrRejectedChangeStoresNothingExceptAQueryCriterion) {
  client.cancel = true;
  EXPECT_TRUE(rs.Modify("Name", "Zed", 3));
  EXPECT_EQ(State().saved_row, 3);  // the snapshot is replaced all the same
  client.cancel = false;
  qty->InputMax = Variant(int32_t{100});
  EXPECT_TRUE(rs.Modify("Qty", int32_t{1000}));
  EXPECT_EQ(capture.shown().size(), 1u);
  EXPECT_EQ(EditingEvents(log), "ModifyBefore,ModifyBefore");
  EXPECT_EQ(Column(name) + " " + Column(qty), "Ann,Bo,Cy 2,3,4");
  EXPECT_EQ(rs.EditStatus(), E_Default);
  log.Clear();
  State().edit_status = E_Query;
  client.cancel = true;
  name->Edit = false;
  EXPECT_FALSE(rs.Modify("Name", "not smith", 2));
  EXPECT_EQ(name->QueryValue, "not smith");
  EXPECT_EQ(internal::FieldAccess::Values(*name)[2], Variant("Bo"));
  EXPECT_EQ(EditingEvents(log), "ModifyBefore,ValueQueryChange,SysModifyAfter,ModifyAfter");
}

TEST_F(RecordEditing, RefusedOperationsChangeNothing) {
  State().edit_status = E_Nothing;
  EXPECT_FALSE(rs.Modify("Name", "Zed"));
  EXPECT_TRUE(rs.NewRecord());
  EXPECT_EQ(rs.UpdateRecord(), E_Succeed);
  State().edit_status = E_Query;
  EXPECT_TRUE(rs.NewRecord());
  EXPECT_TRUE(rs.CopyRecord());
  EXPECT_TRUE(rs.DeleteRecord());
  EXPECT_EQ(rs.UpdateRecord(), E_Succeed);
  State().edit_status = E_Default;
  rs.EditAddNew = rs.EditCopy = rs.EditDelete = false;
  EXPECT_TRUE(rs.NewRecord());
  EXPECT_TRUE(rs.CopyRecord());
  EXPECT_TRUE(rs.DeleteRecord());
  EXPECT_EQ(EditingEvents(log), "");
  EXPECT_TRUE(capture.shown().empty());
  EXPECT_TRUE(rs.Modify("Nope", "Zed"));
  EXPECT_TRUE(rs.Modify("Name", "Zed", 9));
  EXPECT_EQ(capture.shown().size(), 2u);
  EXPECT_EQ(Column(name), "Ann,Bo,Cy");
  client.cancel = true;
  rs.EditAddNew = true;
  EXPECT_FALSE(rs.NewRecord());
  EXPECT_EQ(rs.Rows(), 3);
  client.cancel = false;
  EXPECT_FALSE(rs.NewRecord());
  EXPECT_FALSE(rs.DeleteRecord());  // a row never saved may always go
  EXPECT_EQ(rs.EditStatus(), E_AddNewDelete);
}

TEST_F(RecordEditing, CopyTakesTheCopiedFieldsAndDefaultsTheOthers) {
  name->DefaultValue = Variant("copy");
  price->Copy = false;
  price->DefaultValue = Variant(1.0);
  amount->Copy = true;  // copied, and then computed from the new row all the same
  qty->IsSum = false;   // switched off: no stale total stays
  State().current_row = 2;
  EXPECT_FALSE(rs.CopyRecord());
  EXPECT_EQ(Column(name) + " " + Column(amount) + " " + Column(id),
            "Ann,Bo,Cy,copy 3,6,2,3 1,2,3,Null");
  EXPECT_EQ(rs.AbsolutePosition(), 4);
  EXPECT_EQ(amount->SumValue.ToDouble(), 14);
  EXPECT_TRUE(qty->SumValue.IsNull());
}

// A deletion keeps the row's values and moves to the next row; kept rows go
// back field by field after fields were added or removed.
TEST_F(RecordEditing, DeletionKeepsTheRowAndKeptRowsGoBackFieldByField) {
  State().current_row = 2;
  EXPECT_FALSE(rs.DeleteRecord());
  EXPECT_EQ(rs.GetDeleteValue("Name"), Variant("Bo"));
  EXPECT_EQ(rs.AbsolutePosition(), 2);
  auto note = rs.Add("Note");
  EXPECT_TRUE(rs.GetDeleteValue("Note").IsEmpty());
  EXPECT_FALSE(rs.UndoRecord());
  EXPECT_EQ(Column(name) + " " + Column(note), "Ann,Bo,Cy ,,");  // Note was never kept
  rs.DeleteRecord();
  rs.DeleteRecord();  // saves the first deletion, then deletes the last row
  EXPECT_EQ(rs.AbsolutePosition(), 1);
  Fill({{1, "Ann", 2, 1.5}, {2, "Bo", 3, 2.0}, {3, "Cy", 4, 0.5}});
  rs.Modify("Name", "Zed", 3);
  rs.Remove("Id");
  client.answer = E_OtherErr;
  EXPECT_EQ(rs.UpdateRecord(), E_OtherErr);
  EXPECT_EQ(Column(name), "Ann,Bo,Cy");
  Fill({});
  log.Clear();
  EXPECT_FALSE(rs.DeleteRecord());
  EXPECT_EQ(EditingEvents(log), "");
}

TEST_F(RecordEditing, UndoPeelsOneLayerPerCallAndKeepsTheRowsEditMark) {
  rs.Modify("Name", "Zed", 2);
  State().current_row = 2;
  rs.DeleteRecord();
  const std::pair<Enum_EditStatus, const char*> layers[] = {
      {E_Modify, "Ann,Zed,Cy"}, {E_Default, "Ann,Bo,Cy"}, {E_Default, "Ann,Bo,Cy"}};
  for (const auto& [status, names] : layers) {
    EXPECT_FALSE(rs.UndoRecord());
    EXPECT_EQ(rs.EditStatus(), status);
    EXPECT_EQ(Column(name), names);
    EXPECT_EQ(rs.AbsolutePosition(), 2);
  }
  EXPECT_EQ(std::count(log.names.begin(), log.names.end(), "UndoRecordAfter"), 2);
  rs.EditStatus(E_Modify);  // no snapshot: only the status goes back
  EXPECT_FALSE(rs.UndoRecord());
  EXPECT_EQ(rs.EditStatus(), E_Default);
  rs.DeleteRecord();
  client.cancel = true;
  log.Clear();
  EXPECT_FALSE(rs.UndoRecord());
  EXPECT_EQ(EditingEvents(log), "UndoRecordBefore");
  EXPECT_EQ(rs.Rows(), 2);
  client.cancel = false;  // an undone row keeps its edit mark
  Fill({{1, "Ann", 2, 1.5}, {2, "Bo", 3, 2.0}, {3, "Cy", 4, 0.5}});
  auto lock = rs.Add("Lock");
  lock->FieldType = F_Locked;
  rs.Modify("Lock", int32_t{1});  // locks row 1
  EXPECT_FALSE(rs.GetEdit(1));
  rs.UndoRecord();
  EXPECT_TRUE(rs.GetEdit(1));
  State().edit_marks[2] = 0;
  State().current_row = 2;
  rs.DeleteRecord();
  rs.UndoRecord();
  EXPECT_FALSE(rs.GetEdit(2));
  EXPECT_TRUE(rs.GetEdit(3));
}

TEST_F(RecordEditing, MissingRequiredValueIsReportedAndSavingTheOnlyRowAnnouncesTheMain) {
  Fill({});
  EXPECT_FALSE(rs.NewRecord());
  log.Clear();
  EXPECT_EQ(rs.UpdateRecord(), E_Defeat);
  EXPECT_EQ(EditingEvents(log), "UpdateRecordBefore");
  ASSERT_EQ(capture.shown().size(), 1u);
  EXPECT_EQ(capture.shown()[0].kind, ShownMessage::Error);
  EXPECT_EQ(capture.shown()[0].caption, "Error");
  EXPECT_NE(capture.shown()[0].title.find("94"), std::string::npos);
  EXPECT_EQ(capture.LastText(), "Please enter value 'Amount' can not be null.");
  EXPECT_EQ(rs.EditStatus(), E_AddNew);
  rs.Modify("Qty", int32_t{2});
  rs.Modify("Price", 1.0);
  log.Clear();
  EXPECT_EQ(rs.UpdateRecord(), E_Succeed);
  EXPECT_EQ(EditingEvents(log),  // the only row: the main field is announced
            "UpdateRecordBefore,UserUpdateRecord,MainFieldChange,EditStatusChange,"
            "SysUpdateRecordAfter,UpdateRecordAfter,RecordPointerChange,RecordPointerChange2");
}

// A save that is cancelled or cannot be made; and the save that an operation
// runs first fails: the operation gives up with False (UpdateRecord with
// E_Defeat), the error is shown once, the edit stays.
TEST_F(RecordEditing, CancelledDiscardedOrFailingSaveKeepsOrDropsTheEditAsItShould) {
  // A cancelled save asks no one; a locked or uneditable row discards the edit.
  rs.Modify("Name", "Zed");
  client.cancel_update = true;
  EXPECT_EQ(rs.UpdateRecord(), E_Defeat);
  EXPECT_EQ(rs.EditStatus(), E_Modify);
  client.cancel_update = false;
  rs.Locked(true);
  log.Clear();
  EXPECT_EQ(rs.UpdateRecord(), E_Succeed);
  EXPECT_EQ(EditingEvents(log), "UpdateRecordBefore,EditStatusChange,RecordPointerChange2");
  EXPECT_EQ(client.asked, 0);
  EXPECT_EQ(Column(name), "Ann,Bo,Cy");
  rs.Locked(false);
  rs.NewRecord();
  State().edit_marks[4] = 0;
  EXPECT_EQ(rs.UpdateRecord(), E_Succeed);
  EXPECT_EQ(rs.Rows(), 3);
  struct Throwing : ClsRecordsetEvents {
    void UserUpdateRecord(Enum_EditRecord&) override { throw std::runtime_error("disk full"); }
  } thrower;
  rs.Advise(&thrower);
  const std::function<bool()> operations[] = {
      [&] { return rs.UpdateRecord() != E_Defeat; },
      [&] { return rs.Modify("Name", "Zed"); },
      [&] { return rs.DeleteRecord(); },
      [&] { return rs.CopyRecord(); },
      [&] { return rs.NewRecord(); },
      [&] { return rs.NewQuery(); },
  };
  for (const auto& operation : operations) {
    Fill({{1, "Ann", 2, 1.5}, {2, "Bo", 3, 2.0}, {3, "Cy", 4, 0.5}});
    rs.DeleteRecord();
    capture.ui().shown.clear();
    EXPECT_FALSE(operation());
    EXPECT_EQ(capture.shown().size(), 1u);
    EXPECT_EQ(capture.LastText(), "disk full");
    EXPECT_EQ(rs.EditStatus(), E_Delete);
    EXPECT_EQ(Column(name), "Bo,Cy");
  }
}

TEST_F(RecordEditing, SystemTimeIsCutToWholeSecondsAndANewRowTakesItsValuesInOrder) {
  const Date now = rs.GetSysTime();
  EXPECT_GT(now.Value, 43831);  // after 2020-01-01
  EXPECT_NEAR(std::round(now.Value * 86400.0), now.Value * 86400.0, 1e-3);
  FixedClock clock;
  rs.Advise(&clock);
  log.Clear();
  EXPECT_EQ(rs.GetSysTime(), Date{37747.0 + 52215.0 / 86400.0});
  EXPECT_EQ(log.Joined(), "SystemTime");
  const std::pair<Enum_DateType, double> cases[] = {
      {D_YMDHNS, 37747.0 + 52215.0 / 86400.0},
      {D_YMDHN, 37747.0 + 52200.0 / 86400.0},
      {D_YMD, 37747.0},
      {D_HNS, 52215.0 / 86400.0},
      {D_HN, 52200.0 / 86400.0},
      {static_cast<Enum_DateType>(-1), 37747.0 + 52215.0 / 86400.0}};
  for (const auto& [kind, value] : cases) {
    EXPECT_NEAR(MdlDataInterface::CurrentDateValue(rs, kind).Value, value, 1e-9) << kind;
  }
  log.Clear();
  rs.CallUserEvent();
  EXPECT_EQ(log.Joined(), "UserEvent");
  log.Clear();  // a new row appends an editable row and takes its values in order
  auto ordered = rs.Add("Ordered");
  ordered->FieldType = F_Date;
  ordered->DateType = D_YMD;
  ordered->DefaultValue = Variant(" toDAY ");
  price->DefaultValue = Variant(2.5);
  name->DefaultValue = Variant("new");
  amount->DefaultValue = Variant(int32_t{99});  // the computed value wins over it
  EXPECT_FALSE(rs.NewRecord("Qty", int32_t{4}));
  EXPECT_EQ(log.names[3], "SystemTime");  // asked for the date default, before the status changes
  EXPECT_EQ(rs.AbsolutePosition(), 4);
  EXPECT_TRUE(rs.GetEdit(4));
  EXPECT_FALSE(rs.GetSelectRow(4));
  EXPECT_EQ(name->GetValue(4), Variant("new"));
  EXPECT_EQ(ordered->GetValue(4), Variant(Date{37747}));
  EXPECT_EQ(amount->GetValue(4).ToDouble(), 10);  // computed from the argument
  EXPECT_EQ(amount->SumValue.ToDouble(), 21);
  rs.UndoRecord();
  EXPECT_FALSE(rs.NewRecord("Amount", int32_t{7}));  // the argument beats the computation
  EXPECT_EQ(amount->GetValue(4).ToLong(), 7);
}

TEST_F(RecordEditing, MainFieldStoresOneAndItsRowIsTheFirstPresentNonZeroValue) {
  EXPECT_FALSE(rs.Modify("Main", false));
  EXPECT_EQ(main->GetValue(1).VarType(), vbInteger);
  EXPECT_EQ(main->GetValue(1).ToLong(), 1);
  EXPECT_EQ(EditingEvents(log), "ModifyBefore,MainFieldChange,SysModifyAfter,ModifyAfter");
  EXPECT_EQ(rs.EditStatus(), E_Default);
  Fill({{1, "a", 1, 1}, {2, "b", 1, 1}, {3, "c", 1, 1}, {4, "d", 1, 1}});
  const Variant none[] = {Variant(int16_t{0}), Variant::Null(), Variant(), Variant(int32_t{0})};
  for (int32_t r = 1; r <= 4; ++r) {
    main->SetValue(none[r - 1], r);
  }
  EXPECT_EQ(rs.GetIsMainRow("Main"), 0);
  main->SetValue(Variant(int16_t{1}), 3);
  main->SetValue(Variant(int16_t{1}), 4);
  EXPECT_EQ(rs.GetIsMainRow("Main"), 3);
  main->SetValue(Variant(true), 2);  // the Boolean True (-1) counts
  EXPECT_EQ(rs.GetIsMainRow(Variant(int32_t{6})), 2);
  Fill({});
  EXPECT_EQ(rs.GetIsMainRow("NoSuchField"), 0);
  EXPECT_TRUE(capture.shown().empty());
}

}  // namespace
}  // namespace varnel::testing
