// Every kind of save, unhindered and against every point where the database
// can fail, on every provider, through the real drivers with faults injected:
// the table holds the row fully written or not at all, the recordset keeps
// what was typed with its pending status, and saving again writes it exactly
// once, the key the database generated shown in the recordset.
#include <functional>
#include <string>
#include <tuple>
#include <utility>

#include "support/fault_driver.h"
#include "writer_fixture.h"

namespace varnel::testing {
namespace {

class SaveFaultsTest : public WriterTest {
 protected:
  // Id, Name, Qty and Note of every row of the table, in the recordset's
  // order: a new row of Loose has no Id, and comes last in both.
  Rows Table() {
    return Query("SELECT [Id], [Name], [Qty], [Note] FROM " + rs_.TableName +
                 " ORDER BY COALESCE([Id], 99)");
  }

  Rows Memory() {
    Rows rows;
    for (int32_t r = 1; r <= rs_.Rows(); ++r) {
      rows.push_back({rs_.Item("Id")->GetValue(r), rs_.Item("Name")->GetValue(r),
                      rs_.Item("Qty")->GetValue(r), rs_.Item("Note")->GetValue(r)});
    }
    return rows;
  }
};

TEST_P(SaveFaultsTest, EverySaveSurvivesEveryFailurePoint) {
  // A save kind, the user's edit, the status it leaves, and the rows the save adds to the table.
  const std::tuple<const char*, std::function<void(ClsRecordset&)>, Enum_EditStatus, int32_t>
      kinds[] = {
          {"insert", [](ClsRecordset& rs) { rs.NewRecord("Name", Variant("spring")); }, E_AddNew,
           1},
          {"update", [](ClsRecordset& rs) { rs.Modify("Qty", int32_t{25}); }, E_Modify, 0},
          {"delete", [](ClsRecordset& rs) { rs.DeleteRecord(); }, E_Delete, -1},  // a day, no time
          {"modify, delete", [](ClsRecordset& rs) { rs.Modify("Qty", 11), rs.DeleteRecord(); },
           E_ModifyDelete, -1},
          {"copy", [](ClsRecordset& rs) { rs.MoveNext(), rs.CopyRecord(); }, E_Copy, 1},
      };
  const std::pair<const char*, Fault> faults[] = {
      {"no fault", Fault::kNone},
      {"statement refused", Fault::kStatement},
      {"commit refused", Fault::kCommit},
      {"commit lost", Fault::kCommitLost},
      {"connection dropped", Fault::kDropConnection},
      {"unexpected exception", Fault::kUnexpected},
  };
  FaultScope scope;
  for (const bool keyless : {false, true}) {
    for (const auto& [kind, edit, status, rows_added] : kinds) {
      for (const auto& [fault_name, fault] : faults) {
        SCOPED_TRACE(std::string(kind) + ", " + fault_name + (keyless ? ", no key" : ""));
        Reload(keyless ? "Loose" : "Items");
        TableWriter writer(rs_);
        const Rows before = Table();
        edit(rs_);
        ASSERT_EQ(rs_.EditStatus(), status);
        if (fault != Fault::kNone) {
          const Rows typed = Memory();
          scope.Arm(fault);
          EXPECT_EQ(rs_.UpdateRecord(), E_Defeat);
          scope.Disarm();
          EXPECT_FALSE(capture_.LastText().empty());
          EXPECT_EQ(rs_.EditStatus(), status);
          EXPECT_EQ(Memory(), typed);
          const Rows failed = Table();
          if (fault == Fault::kCommitLost) {
            EXPECT_EQ(failed.size(), before.size() + rows_added);  // written, all of it
          } else {
            EXPECT_EQ(failed, before);  // nothing of it
          }
        }
        EXPECT_EQ(rs_.UpdateRecord(), E_Succeed) << capture_.LastText();
        EXPECT_EQ(rs_.EditStatus(), E_Default);
        EXPECT_EQ(Table().size(), before.size() + rows_added);
        EXPECT_EQ(Table(), Memory());
      }
    }
  }
}

VARNEL_ON_EVERY_PROVIDER(SaveFaultsTest);

}  // namespace
}  // namespace varnel::testing
