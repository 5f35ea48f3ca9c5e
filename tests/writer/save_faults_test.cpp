// Every kind of save against every point where the database can fail, on
// every provider, through the real drivers with faults injected: the table
// holds the row fully written or not at all, the recordset keeps what was
// typed with its pending status, and saving again writes it exactly once.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "support/capture_ui.h"
#include "support/fault_driver.h"
#include "support/test_database.h"
#include "varnel/table_writer.h"
#include "varnel/varnel.h"

namespace varnel::testing {
namespace {

using Rows = std::vector<std::vector<Variant>>;

class SaveFaultsTest : public ::testing::TestWithParam<TestProvider> {
 protected:
  SaveFaultsTest() : db_(GetParam()) {
    other_->Open(db_.ConnectionString());  // before the faults: never wrapped
    const char* key =
        GetParam() == TestProvider::kSqlite ? "INTEGER PRIMARY KEY" : "SERIAL PRIMARY KEY";
    other_->Execute(std::string("CREATE TABLE Items (\"Id\" ") + key +
                    ", \"Name\" VARCHAR(20) NOT NULL, \"Qty\" INTEGER)");
    // without a key: a row is known by all its values
    other_->Execute(
        "CREATE TABLE Loose (\"Id\" INTEGER, \"Name\" VARCHAR(20) NOT NULL, "
        "\"Qty\" INTEGER)");
  }

  void Reset(ClsRecordset& rs, bool keyless) {
    table_ = keyless ? "Loose" : "Items";
    other_->Execute("DELETE FROM " + table_);
    other_->Execute(keyless ? "INSERT INTO Loose VALUES (1, 'bolt', 10), (2, 'nut', 20)"
                            : "INSERT INTO Items ([Name], [Qty]) VALUES ('bolt', 10), ('nut', 20)");
    rs.ConnectString = db_.ConnectionString();
    rs.TableName = table_;
    rs.OrderByField1 = "[Id]";
    if (rs.Count() == 0) {
      for (const char* name : {"Id", "Name", "Qty"}) {
        auto field = rs.Add(name);
        field->FieldType = std::string(name) == "Name" ? F_Text : F_Numeral;
        field->IsData = field->SaveToDB = field->Edit = field->EnableNull = field->Copy = true;
      }
      rs.Item("Id")->Copy = false;
    }
    ASSERT_FALSE(rs.InitDataSource());
  }

  Rows Table() {
    db::Recordset table;
    // a new row of Loose has no Id: last, as in the recordset
    table.Open("SELECT [Id], [Name], [Qty] FROM " + table_ + " ORDER BY COALESCE([Id], 99)",
               other_);
    Rows rows;
    for (; !table.Eof(); table.MoveNext()) {
      rows.push_back({table.Fields().Item(0).Value(), table.Fields().Item(1).Value(),
                      table.Fields().Item(2).Value()});
    }
    return rows;
  }

  static std::vector<Variant> RowOf(ClsRecordset& rs, int32_t row) {
    return {rs.Item("Id")->GetValue(row), rs.Item("Name")->GetValue(row),
            rs.Item("Qty")->GetValue(row)};
  }

  static Rows Memory(ClsRecordset& rs) {
    Rows rows;
    for (int32_t r = 1; r <= rs.Rows(); ++r) {
      rows.push_back(RowOf(rs, r));
    }
    return rows;
  }

  std::string table_;
  TestDatabase db_;
  CaptureScope capture_;
  std::shared_ptr<db::Connection> other_ = std::make_shared<db::Connection>();
};

struct SaveKind {
  const char* name;
  std::function<void(ClsRecordset&)> edit;
  Enum_EditStatus status;
  int32_t rows_added;  // to the table by the save
};

struct FaultCase {
  const char* name;
  Fault fault;
};

TEST_P(SaveFaultsTest, EverySaveSurvivesEveryFailurePoint) {
  const SaveKind kinds[] = {
      {"insert", [](ClsRecordset& rs) { rs.NewRecord("Name", Variant("spring")); }, E_AddNew, 1},
      {"update", [](ClsRecordset& rs) { rs.Modify("Qty", int32_t{25}); }, E_Modify, 0},
      {"delete", [](ClsRecordset& rs) { rs.DeleteRecord(); }, E_Delete, -1},
      {"copy", [](ClsRecordset& rs) { rs.MoveLast(), rs.CopyRecord(); }, E_Copy, 1},
  };
  const FaultCase faults[] = {
      {"statement refused", Fault::kStatement},     {"commit refused", Fault::kCommit},
      {"commit lost", Fault::kCommitLost},          {"connection dropped", Fault::kDropConnection},
      {"unexpected exception", Fault::kUnexpected},
  };
  FaultScope scope;
  for (const bool keyless : {false, true}) {
    for (const SaveKind& kind : kinds) {
      for (const FaultCase& fault : faults) {
        SCOPED_TRACE(std::string(kind.name) + ", " + fault.name + (keyless ? ", no key" : ""));
        ClsRecordset rs;
        Reset(rs, keyless);
        TableWriter writer(rs);
        const Rows before = Table();
        kind.edit(rs);
        ASSERT_EQ(rs.EditStatus(), kind.status);
        const Rows typed = Memory(rs);
        scope.Arm(fault.fault);
        EXPECT_EQ(rs.UpdateRecord(), E_Defeat);
        scope.Disarm();
        EXPECT_FALSE(capture_.LastText().empty());
        EXPECT_EQ(rs.EditStatus(), kind.status);
        EXPECT_EQ(Memory(rs), typed);
        const Rows failed = Table();
        if (fault.fault == Fault::kCommitLost) {
          EXPECT_EQ(failed.size(), before.size() + kind.rows_added);  // written, all of it
        } else {
          EXPECT_EQ(failed, before);  // nothing of it
        }
        EXPECT_EQ(rs.UpdateRecord(), E_Succeed) << capture_.LastText();
        EXPECT_EQ(rs.EditStatus(), E_Default);
        EXPECT_EQ(Table().size(), before.size() + kind.rows_added);
        EXPECT_EQ(Table(), Memory(rs));
      }
    }
  }
}

VARNEL_ON_EVERY_PROVIDER(SaveFaultsTest);

}  // namespace
}  // namespace varnel::testing
