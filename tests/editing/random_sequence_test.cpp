// A long seeded random sequence of edits, saves and moves against a real
// table, with a client that writes every saved row through the database and
// sometimes fails. Whenever nothing is pending, the rows in memory must be the
// rows in the table; and every change the user made and did not take back
// (Undo, a failed save, a discard) must have reached the table.
#include <random>

#include "editing/items_table.h"
#include "support/capture_ui.h"

namespace varnel::testing {
namespace {

const char* const kNames[] = {"Ann", "Bo", "Cy", "Di", "Ed", "Flo"};

// Writes the pending row in one transaction and answers, mostly E_Succeed.
class WritingClient : public ClsRecordsetEvents {
 public:
  WritingClient(ClsRecordset& rs, ItemsTable& table, std::mt19937& random)
      : rs_(rs), table_(table), random_(random) {}

  void UserUpdateRecord(Enum_EditRecord& Update_Succeed) override {
    db::Connection& cn = *table_.connection;
    cn.BeginTrans();
    Write(rs_.EditStatus());
    const int draw = static_cast<int>(random_() % 10);
    last_answer = Update_Succeed = draw < 8 ? E_Succeed : draw < 9 ? E_Defeat : E_OtherErr;
    if (Update_Succeed == E_Succeed) {
      cn.CommitTrans();
    } else {
      cn.RollbackTrans();
    }
    ++answers;
  }

  // A save or a roll-back has just ended: a committed change must be in the table.
  void SysUpdateRecordAfter() override {
    if (last_answer == E_Succeed) {
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

  // The user's change of field in the row being modified, as memory holds it now.
  void RememberChange(const std::string& field) {
    const Variant key = rs_.GetModifyValue("Id");
    if (rs_.EditStatus() == E_Modify && RowOf(key) > 0) {
      changes_[{key.ToLong(), field}] = rs_.Item(field)->GetValue(RowOf(key));
    }
  }

  Enum_EditRecord last_answer = E_Succeed;
  int answers = 0, checks = 0;
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

  std::vector<Variant> Values(int32_t row) const {
    return {rs_.Item("Name")->GetValue(row), rs_.Item("Qty")->GetValue(row),
            rs_.Item("Price")->GetValue(row), rs_.Item("Id")->GetValue(row)};
  }

  void Write(Enum_EditStatus status) {
    db::Connection& cn = *table_.connection;
    if (status == E_Modify) {
      cn.Execute("UPDATE Items SET [Name]=?, [Qty]=?, [Price]=? WHERE [Id]=?",
                 Values(RowOf(rs_.GetModifyValue("Id"))));
    } else if (status == E_AddNew || status == E_Copy) {
      const int32_t row = rs_.Rows();  // the inserted row is the last
      if (rs_.Item("Id")->GetValue(row).IsBlank()) {
        rs_.Item("Id")->SetValue(Variant(next_id_++), row);
      }
      cn.Execute("INSERT INTO Items ([Name], [Qty], [Price], [Id]) VALUES (?,?,?,?)", Values(row));
    } else if (status == E_Delete || status == E_ModifyDelete) {
      cn.Execute("DELETE FROM Items WHERE [Id]=?", {rs_.GetDeleteValue("Id")});
    }
  }

  ClsRecordset& rs_;
  ItemsTable& table_;
  std::mt19937& random_;
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
  std::vector<ItemRow> rows;
  for (int32_t id = 1; id <= 30; ++id) {
    rows.push_back({id, Variant(kNames[id % 6]), Variant(id), Variant(id / 4.0)});
  }
  ItemsTable table(rows, GetParam());
  ClsRecordset rs;
  table.Load(rs);
  rs.Item("Name")->EnableNull = false;  // a Null name fails validation
  rs.Item("Qty")->Copy = rs.Item("Price")->Copy = true;
  WritingClient client(rs, table, random);
  const int32_t cookie = rs.Advise(&client);
  bool (ClsRecordset::*const moves[])() = {&ClsRecordset::MoveNext, &ClsRecordset::MovePrevious,
                                           &ClsRecordset::MoveFirst, &ClsRecordset::MoveLast};

  for (int step = 0; step < 5000; ++step) {
    if (rs.Locked() && below(3) == 0) {
      rs.Locked(false);  // locked spells stay short
    }
    const int op = below(100);
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
    client.CheckSettled();
    ASSERT_EQ(client.first_difference, "") << "after step " << step;
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
  rs.Unadvise(cookie);
}

VARNEL_ON_EVERY_PROVIDER(RandomEditingSequence);

}  // namespace
}  // namespace varnel::testing
