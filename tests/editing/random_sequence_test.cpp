// A long seeded random sequence of edits, saves and moves against a real
// table, written by a TableWriter whose database fails now and then (faults
// injected into the real driver) and whose client sometimes rolls a save
// back. Whenever nothing is pending, the rows in memory must be the rows in
// the table; every change the user made and did not take back (Undo, a
// roll-back, a discard) must have reached the table; and a save that failed
// must leave the edit pending exactly as it was typed.
#include <map>
#include <random>

#include "support/capture_ui.h"
#include "support/fault_driver.h"
#include "support/test_database.h"
#include "varnel/table_writer.h"
#include "varnel/varnel.h"

namespace varnel::testing {
namespace {

const char* const kNames[] = {"Ann", "Bo", "Cy", "Di", "Ed", "Flo"};

// A table Items (Id INTEGER PRIMARY KEY, Name TEXT, Qty INTEGER, Price DOUBLE
// PRECISION) of 30 rows, a recordset loaded from it, and a comparison of
// memory with it.
bool SameCell(const Variant& a, const Variant& b) {
  return a.IsBlank() == b.IsBlank() && (a.IsBlank() || ValuesEqual(a, b));
}

class ItemsTable {
 public:
  static constexpr const char* kColumns[] = {"Id", "Name", "Qty", "Price"};

  explicit ItemsTable(TestProvider provider)
      : db(provider), connection_string(db.ConnectionString("items.db")) {
    connection->Open(connection_string);
    if (provider == TestProvider::kSqlite) {
      connection->Execute("PRAGMA synchronous=OFF");
    }
    connection->Execute(
        "CREATE TABLE Items (\"Id\" INTEGER PRIMARY KEY, \"Name\" TEXT, \"Qty\" INTEGER, "
        "\"Price\" DOUBLE PRECISION)");
    for (int32_t id = 1; id <= 30; ++id) {
      connection->Execute("INSERT INTO Items ([Id], [Name], [Qty], [Price]) VALUES (?,?,?,?)",
                          {Variant(id), Variant(kNames[id % 6]), Variant(id), Variant(id / 4.0)});
    }
  }

  // Defines Id (read-only key), Name (not Null), Qty and Price (copied), all
  // saved, on rs and loads the table.
  void Load(ClsRecordset& rs) const {
    rs.ConnectString = connection_string;
    rs.TableName = "Items";
    rs.UserOpenMode = U_Auto;
    rs.OrderByField1 = "[Id]";
    for (const char* column : kColumns) {
      auto field = rs.Add(column);
      field->FieldType = std::string(column) == "Name" ? F_Text : F_Numeral;
      field->IsData = field->SaveToDB = true;
    }
    rs.Item("Id")->Edit = rs.Item("Name")->EnableNull = false;  // a Null name fails validation
    rs.Item("Qty")->Copy = rs.Item("Price")->Copy = true;
    rs.Item("Price")->NumType = N_Float;
    ASSERT_FALSE(rs.InitDataSource());
  }

  // The table's rows by Id: Name, Qty, Price.
  std::map<int32_t, std::vector<Variant>> Rows() const {
    db::Recordset table;
    table.Open("SELECT [Id], [Name], [Qty], [Price] FROM Items", connection);
    std::map<int32_t, std::vector<Variant>> out;
    std::vector<std::vector<Variant>> columns(1);
    if (table.RecordCount() > 0) {
      columns = table.GetRows();
    }
    for (size_t r = 0; r < columns[0].size(); ++r) {
      out[columns[0][r].ToLong()] = {columns[1][r], columns[2][r], columns[3][r]};
    }
    return out;
  }

  // Empty when the rows in memory are the rows in the table, else what differs.
  std::string Difference(ClsRecordset& rs) const {
    std::map<int32_t, std::vector<Variant>> table = Rows();
    for (int32_t r = 1; r <= rs.Rows(); ++r) {
      const Variant key = rs.Item("Id")->GetValue(r);
      const auto found = key.IsBlank() ? table.end() : table.find(key.ToLong());
      if (found == table.end()) {
        return "row " + std::to_string(r) + " (Id " + CStr(Concat(key, "")) + ") not in the table";
      }
      for (size_t c = 1; c < 4; ++c) {
        if (!SameCell(rs.Item(kColumns[c])->GetValue(r), found->second[c - 1])) {
          return "Id " + CStr(key) + " " + kColumns[c] + " differs";
        }
      }
      table.erase(found);
    }
    return table.empty() ? "" : "Id " + std::to_string(table.begin()->first) + " only in the table";
  }

  TestDatabase db;
  std::string connection_string;
  std::shared_ptr<db::Connection> connection = std::make_shared<db::Connection>();
};

constexpr Fault kFaults[] = {Fault::kStatement, Fault::kCommit, Fault::kCommitLost,
                             Fault::kDropConnection, Fault::kUnexpected};

// The client before a TableWriter: gives a new row its Id and sometimes rolls
// the save back (E_OtherErr) or injects a fault into the writer's database.
// The writer answers E_Succeed or E_Defeat: a save asked for and not ended by
// SysUpdateRecordAfter when the step is over was defeated.
class WritingClient : public ClsRecordsetEvents {
 public:
  WritingClient(ClsRecordset& rs, ItemsTable& table, std::mt19937& random, FaultScope& faults)
      : rs_(rs), table_(table), random_(random), faults_(faults) {}

  void UserUpdateRecord(Enum_EditRecord& Update_Succeed) override {
    faults_.Disarm();
    fired_ = faults_.fired();
    asked_ = true;
    rolled_back_ = false;
    if ((rs_.EditStatus() == E_AddNew || rs_.EditStatus() == E_Copy) &&
        rs_.Item("Id")->GetValue(rs_.Rows()).IsBlank()) {
      rs_.Item("Id")->SetValue(Variant(next_id_++), rs_.Rows());
    }
    typed_ = Memory();
    const int draw = static_cast<int>(random_() % 10);
    if (draw == 9 && !outcome_unknown) {
      Update_Succeed = E_OtherErr;
      rolled_back_ = true;
    } else if (draw >= 6) {
      fault_ = kFaults[random_() % 5];
      faults_.Arm(fault_);
    }
  }

  // A save or a roll-back has just ended: a committed change must be in the table.
  void SysUpdateRecordAfter() override {
    asked_ = outcome_unknown = false;
    ++answers;
    if (!rolled_back_) {
      const auto rows = table_.Rows();
      for (const auto& [cell, value] : changes_) {
        const auto found = rows.find(cell.first);
        const size_t column = cell.second == "Name" ? 0 : cell.second == "Qty" ? 1 : 2;
        if (found != rows.end() && !SameCell(found->second[column], value)) {
          Fail("the change of " + cell.second + " in Id " + std::to_string(cell.first) +
               " was lost");
        }
      }
      changes_.clear();
    }
    CheckSettled();
  }
  void RecordPointerChange2() override { CheckSettled(); }

  void CheckSettled() {
    if (rs_.EditStatus() == E_Default) {
      ++checks;
      Fail(table_.Difference(rs_));
      changes_.clear();  // saved, taken back, rolled back or discarded
    }
  }

  // After a step whose save failed: a fault made it fail, and the edit is
  // pending as it was typed.
  void CheckKept() {
    if (!asked_) {
      return;
    }
    asked_ = false;
    ++answers;
    ++kept;
    if (faults_.fired() == fired_) {
      Fail("a save failed without a fault");
    } else if (fault_ == Fault::kCommitLost) {
      outcome_unknown = true;
    }
    if (Memory() != typed_) {
      Fail("a failed save changed what was typed");
    }
  }

  // The user's change of field in the row being modified, as memory holds it now.
  void RememberChange(const std::string& field) {
    const Variant key = rs_.GetModifyValue("Id");
    if (rs_.EditStatus() == E_Modify && RowOf(key) > 0) {
      changes_[{key.ToLong(), field}] = rs_.Item(field)->GetValue(RowOf(key));
    }
  }

  int answers = 0, checks = 0, kept = 0;
  // The last commit was lost: until a save settles it, the edit must be saved
  // again, not taken back.
  bool outcome_unknown = false;
  std::string first_difference;

 private:
  void Fail(const std::string& difference) {
    if (first_difference.empty()) {
      first_difference = difference;
    }
  }

  int32_t RowOf(const Variant& key) const {
    for (int32_t r = 1; r <= rs_.Rows(); ++r) {
      if (ValuesEqual(rs_.Item("Id")->GetValue(r), key)) {
        return r;
      }
    }
    return 0;
  }

  // Every row in memory, and the edit status.
  std::vector<Variant> Memory() const {
    std::vector<Variant> values{Variant(static_cast<int32_t>(rs_.EditStatus()))};
    for (int32_t r = 1; r <= rs_.Rows(); ++r) {
      for (const char* column : ItemsTable::kColumns) {
        values.push_back(rs_.Item(column)->GetValue(r));
      }
    }
    return values;
  }

  ClsRecordset& rs_;
  ItemsTable& table_;
  std::mt19937& random_;
  FaultScope& faults_;
  Fault fault_ = Fault::kNone;
  int fired_ = 0;
  bool asked_ = false, rolled_back_ = false;
  std::vector<Variant> typed_;
  int32_t next_id_ = 1000;
  std::map<std::pair<int32_t, std::string>, Variant> changes_;
};

class RandomEditingSequence : public ::testing::TestWithParam<TestProvider> {};

TEST_P(RandomEditingSequence, MemoryAndTableAgreeAfterEverySave) {
  CaptureScope capture;
  std::mt19937 random(20030506);
  const auto below = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
  const auto value = [&](const std::string& field) {
    return below(10) == 0     ? Variant::Null()
           : field == "Name"  ? Variant(kNames[below(6)])
           : field == "Price" ? Variant(below(400) / 4.0)
                              : Variant(int32_t{below(50)});
  };
  ItemsTable table(GetParam());
  FaultScope faults;  // after the table's own connection: that one is never faulted
  ClsRecordset rs;
  table.Load(rs);
  WritingClient client(rs, table, random, faults);
  const int32_t cookie = rs.Advise(&client);
  TableWriter writer(rs);
  writer.Connection = std::make_shared<db::Connection>();
  writer.Connection->Open(table.connection_string);
  bool (ClsRecordset::*const moves[])() = {&ClsRecordset::MoveNext, &ClsRecordset::MovePrevious,
                                           &ClsRecordset::MoveFirst, &ClsRecordset::MoveLast};

  for (int step = 0; step < 5000; ++step) {
    if (rs.Locked() && below(3) == 0) {
      rs.Locked(false);  // locked spells stay short
    }
    if (client.outcome_unknown) {
      rs.Locked(false);  // the save that settles it is not discarded
    }
    const int op = client.outcome_unknown ? 60 : below(100);
    if (op < 30) {
      const std::string field = ItemsTable::kColumns[3 - below(4)];
      const int32_t row = below(5) == 0 && rs.Rows() > 0 ? 1 + below(rs.Rows()) : 0;
      if (!rs.Modify(field, value(field), row)) {
        client.RememberChange(field);
      }
    } else if (op < 38) {
      below(2) ? rs.NewRecord() : rs.NewRecord("Name", value("Name"));
    } else if (op < 44) {
      rs.CopyRecord();
    } else if (op < 52) {
      rs.DeleteRecord();
    } else if (op < 60) {
      rs.UndoRecord();
    } else if (op < 72) {
      rs.UpdateRecord();
    } else if (op < 90) {
      (rs.*moves[below(4)])();
    } else if (op < 94) {
      rs.AbsolutePosition(1 + below(std::max(rs.Rows(), 1)));
    } else if (op < 96) {
      rs.Locked(true);
    } else if (rs.Rows() > 0) {
      rs.SetEdit(below(3) != 0, 1 + below(rs.Rows()));
    }
    client.CheckKept();
    client.CheckSettled();
    ASSERT_EQ(client.first_difference, "") << "after step " << step << ": " << capture.LastText();
  }
  rs.Locked(false);
  for (int attempt = 0; attempt < 50 && rs.EditStatus() != E_Default; ++attempt) {
    if (rs.UpdateRecord() != E_Succeed) {
      rs.UndoRecord();
    }
  }
  ASSERT_EQ(rs.EditStatus(), E_Default);
  EXPECT_EQ(table.Difference(rs), "");
  EXPECT_GT(client.answers, 300);
  EXPECT_GT(client.checks, 1000);
  EXPECT_GT(client.kept, 50);
  rs.Unadvise(cookie);
}

VARNEL_ON_EVERY_PROVIDER(RandomEditingSequence);

}  // namespace
}  // namespace varnel::testing
