#include "editing/order_screen.h"

namespace varnel::testing {
namespace {

using RecordUndo = OrderScreen;

TEST_F(RecordUndo, PeelsOneLayerPerCall) {
  rs.Modify("Name", "Zed", 2);
  State().current_row = 2;
  rs.DeleteRecord();
  log.Clear();
  EXPECT_FALSE(rs.UndoRecord());  // the deletion: the row is back, still modified
  EXPECT_EQ(EditingEvents(log),
            "UndoRecordBefore,MainFieldChange,EditStatusChange,SysUndoRecordAfter,"
            "UndoRecordAfter,RecordPointerChange");
  EXPECT_EQ(rs.EditStatus(), E_Modify);
  EXPECT_EQ(Column(name), "Ann,Zed,Cy");
  EXPECT_EQ(rs.AbsolutePosition(), 2);
  log.Clear();
  EXPECT_FALSE(rs.UndoRecord());  // the modification
  EXPECT_EQ(EditingEvents(log),
            "UndoRecordBefore,EditStatusChange,SysUndoRecordAfter,UndoRecordAfter,"
            "RecordPointerChange,RecordPointerChange2");
  EXPECT_EQ(rs.EditStatus(), E_Default);
  EXPECT_EQ(Column(name), "Ann,Bo,Cy");
  log.Clear();
  EXPECT_FALSE(rs.UndoRecord());  // nothing left
  EXPECT_EQ(EditingEvents(log), "");
}

struct UndoCase {
  const char* what;
  void (*reach)(ClsRecordset&);
  Enum_EditStatus after;
  const char* names;
  bool pointer_change2;
  double qty_sum;
};

TEST_F(RecordUndo, StatusTable) {
  const UndoCase cases[] = {
      {"modify", [](ClsRecordset& r) { r.Modify("Name", "Zed"); }, E_Default, "Ann,Bo,Cy", true, 9},
      {"new", [](ClsRecordset& r) { r.NewRecord("Name", "New"); }, E_Default, "Ann,Bo,Cy", true, 9},
      {"copy", [](ClsRecordset& r) { r.CopyRecord(); }, E_Default, "Ann,Bo,Cy", true, 9},
      {"delete", [](ClsRecordset& r) { r.DeleteRecord(); }, E_Default, "Ann,Bo,Cy", true, 9},
      {"modify-delete",
       [](ClsRecordset& r) {
         r.Modify("Name", "Zed");
         r.DeleteRecord();
       },
       E_Modify, "Zed,Bo,Cy", false, 9},
      {"new-delete",
       [](ClsRecordset& r) {
         r.NewRecord("Name", "New");
         r.DeleteRecord();
       },
       E_AddNew, "Ann,Bo,Cy,New", false, 9},
      {"copy-delete",
       [](ClsRecordset& r) {
         r.CopyRecord();
         r.DeleteRecord();
       },
       E_Copy, "Ann,Bo,Cy,Null", false, 11},
  };
  for (const UndoCase& c : cases) {
    SCOPED_TRACE(c.what);
    Fill({{1, "Ann", 2, 1.5}, {2, "Bo", 3, 2.0}, {3, "Cy", 4, 0.5}});
    State().edit_status = E_Default;
    c.reach(rs);
    log.Clear();
    EXPECT_FALSE(rs.UndoRecord());
    EXPECT_EQ(rs.EditStatus(), c.after);
    EXPECT_EQ(Column(name), c.names);
    EXPECT_EQ(log.Saw("RecordPointerChange2"), c.pointer_change2);
    EXPECT_GE(rs.AbsolutePosition(), 1);
    EXPECT_LE(rs.AbsolutePosition(), rs.Rows());
    EXPECT_EQ(qty->SumValue.ToDouble(), c.qty_sum);
  }
}

TEST_F(RecordUndo, RestoredRowKeepsItsEditMark) {
  auto lock = rs.Add("Lock");
  lock->FieldType = F_Locked;
  rs.Modify("Lock", int32_t{1});  // locks row 1
  EXPECT_FALSE(State().edit_marks[1]);
  rs.UndoRecord();
  EXPECT_TRUE(State().edit_marks[1]);
  State().edit_marks[2] = 0;
  State().current_row = 2;
  rs.DeleteRecord();
  rs.UndoRecord();
  EXPECT_FALSE(State().edit_marks[2]);
  EXPECT_TRUE(State().edit_marks[3]);
}

TEST_F(RecordUndo, ModifyWithoutSnapshotOnlyResetsTheStatus) {
  rs.EditStatus(E_Modify);
  log.Clear();
  EXPECT_FALSE(rs.UndoRecord());
  EXPECT_EQ(rs.EditStatus(), E_Default);
  EXPECT_EQ(Column(name), "Ann,Bo,Cy");
  EXPECT_TRUE(log.Saw("UndoRecordAfter"));
}

TEST_F(RecordUndo, CancelledUndoChangesNothing) {
  rs.DeleteRecord();
  client.cancel = true;
  log.Clear();
  EXPECT_FALSE(rs.UndoRecord());
  EXPECT_EQ(EditingEvents(log), "UndoRecordBefore");
  EXPECT_EQ(rs.EditStatus(), E_Delete);
  EXPECT_EQ(rs.Rows(), 2);
}

}  // namespace
}  // namespace varnel::testing
