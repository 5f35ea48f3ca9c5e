#include <stdexcept>

#include "editing/order_screen.h"

namespace varnel::testing {
namespace {

// New rows get a price, so that their Amount (required) can be computed.
class RecordUpdate : public OrderScreen {
 protected:
  RecordUpdate() { price->DefaultValue = Variant(1.0); }
};

constexpr const char* kSaved =
    "UpdateRecordBefore,UserUpdateRecord,EditStatusChange,SysUpdateRecordAfter,"
    "UpdateRecordAfter,RecordPointerChange,RecordPointerChange2";

struct SaveCase {
  const char* what;
  void (*reach)(ClsRecordset&);
  const char* events;                 // of UpdateRecord answered E_Succeed
  const char* names_after_roll_back;  // when answered E_OtherErr instead ("" = not asked)
};

const SaveCase kSaveCases[] = {
    {"default", [](ClsRecordset&) {}, "UpdateRecordBefore,RecordPointerChange2", ""},
    {"modify", [](ClsRecordset& r) { r.Modify("Name", "Zed", 2); }, kSaved, "Ann,Bo,Cy"},
    {"new", [](ClsRecordset& r) { r.NewRecord("Qty", int32_t{1}); }, kSaved, "Ann,Bo,Cy"},
    {"copy", [](ClsRecordset& r) { r.CopyRecord(); }, kSaved, "Ann,Bo,Cy"},
    {"delete", [](ClsRecordset& r) { r.DeleteRecord(); }, kSaved, "Ann,Bo,Cy"},
    {"modify-delete",
     [](ClsRecordset& r) {
       r.Modify("Name", "Zed");
       r.DeleteRecord();
     },
     "UpdateRecordBefore,UserUpdateRecord,EditStatusChange,SysUpdateRecordAfter,"
     "UpdateRecordAfter,RecordPointerChange",
     "Ann,Bo,Cy"},
    {"new-delete",
     [](ClsRecordset& r) {
       r.NewRecord();
       r.DeleteRecord();
     },
     "UpdateRecordBefore,EditStatusChange,RecordPointerChange2", ""},
    {"copy-delete",
     [](ClsRecordset& r) {
       r.CopyRecord();
       r.DeleteRecord();
     },
     "UpdateRecordBefore,EditStatusChange,RecordPointerChange2", ""},
};

TEST_F(RecordUpdate, CommitTable) {
  for (const SaveCase& c : kSaveCases) {
    SCOPED_TRACE(c.what);
    Fill({{1, "Ann", 2, 1.5}, {2, "Bo", 3, 2.0}, {3, "Cy", 4, 0.5}});
    State().edit_status = E_Default;
    c.reach(rs);
    log.Clear();
    EXPECT_EQ(rs.UpdateRecord(), E_Succeed);
    EXPECT_EQ(EditingEvents(log), c.events);
    EXPECT_EQ(rs.EditStatus(), E_Default);
  }
}

TEST_F(RecordUpdate, SavingTheOnlyRowAnnouncesTheMainField) {
  Fill({});
  rs.NewRecord("Qty", int32_t{1});
  log.Clear();
  EXPECT_EQ(rs.UpdateRecord(), E_Succeed);
  EXPECT_EQ(EditingEvents(log),
            "UpdateRecordBefore,UserUpdateRecord,MainFieldChange,EditStatusChange,"
            "SysUpdateRecordAfter,UpdateRecordAfter,RecordPointerChange,RecordPointerChange2");
}

TEST_F(RecordUpdate, OtherErrorRollsBackSoMemoryMatchesTheDatabase) {
  client.answer = E_OtherErr;
  for (const SaveCase& c : kSaveCases) {
    if (*c.names_after_roll_back == '\0') {
      continue;
    }
    SCOPED_TRACE(c.what);
    Fill({{1, "Ann", 2, 1.5}, {2, "Bo", 3, 2.0}, {3, "Cy", 4, 0.5}});
    State().edit_status = E_Default;
    c.reach(rs);
    log.Clear();
    EXPECT_EQ(rs.UpdateRecord(), E_OtherErr);
    EXPECT_EQ(EditingEvents(log), kSaved);
    EXPECT_EQ(Column(name), c.names_after_roll_back);
    EXPECT_EQ(Column(qty), "2,3,4");
    EXPECT_EQ(Column(amount), "3,6,2");
    EXPECT_EQ(qty->SumValue.ToDouble(), 9);
    EXPECT_TRUE(State().edit_marks[1]);
    EXPECT_EQ(rs.EditStatus(), E_Default);
    EXPECT_FALSE(State().saved_values || State().deleted_values);
  }
}

TEST_F(RecordUpdate, DefeatKeepsTheEditPending) {
  rs.Modify("Name", "Zed");
  client.answer = E_Defeat;
  log.Clear();
  EXPECT_EQ(rs.UpdateRecord(), E_Defeat);
  EXPECT_EQ(EditingEvents(log), "UpdateRecordBefore,UserUpdateRecord");
  EXPECT_EQ(rs.EditStatus(), E_Modify);
  EXPECT_EQ(rs.GetModifyValue("Name"), Variant("Ann"));
  client.cancel_update = true;
  EXPECT_EQ(rs.UpdateRecord(), E_Defeat);
  EXPECT_EQ(client.asked, 1);
}

TEST_F(RecordUpdate, MissingRequiredValueIsReportedAndKeepsTheRow) {
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
  EXPECT_EQ(rs.Rows(), 4);
  rs.Modify("Qty", int32_t{2});
  rs.Modify("Price", 1.0);
  EXPECT_EQ(rs.UpdateRecord(), E_Succeed);
}

TEST_F(RecordUpdate, LockedOrUneditableRowDiscardsTheEditInMemory) {
  rs.Modify("Name", "Zed");
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
  EXPECT_EQ(rs.EditStatus(), E_Default);
}

TEST_F(RecordUpdate, QueryAndNothingReturnAtOnce) {
  for (Enum_EditStatus status : {E_Query, E_Nothing}) {
    State().edit_status = status;
    EXPECT_EQ(rs.UpdateRecord(), E_Succeed);
  }
  EXPECT_EQ(EditingEvents(log), "");
}

class ThrowingClient : public ClsRecordsetEvents {
 public:
  void UserUpdateRecord(Enum_EditRecord&) override { throw std::runtime_error("disk full"); }
};

TEST_F(RecordUpdate, FailingHandlerIsReportedAndKeepsTheEdit) {
  ThrowingClient thrower;
  rs.Advise(&thrower);
  rs.Modify("Name", "Zed");
  EXPECT_EQ(rs.UpdateRecord(), E_Defeat);
  EXPECT_EQ(capture.shown().size(), 1u);
  EXPECT_EQ(rs.EditStatus(), E_Modify);
  EXPECT_EQ(Column(name), "Zed,Bo,Cy");
}

}  // namespace
}  // namespace varnel::testing
