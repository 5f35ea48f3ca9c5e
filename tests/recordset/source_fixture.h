// A recordset over a real database, on every provider (TEST_P, then
// VARNEL_ON_EVERY_PROVIDER(Suite)): the Items table with three rows, its
// fields defined as a screen would, a capturing message UI and an event log.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>

#include "support/capture_ui.h"
#include "support/event_log.h"
#include "support/test_database.h"
#include "varnel/varnel.h"

namespace varnel::testing {

// Answers UserUpdateRecord as told and counts the questions; cancels the
// Before events it is told to; keeps the query the user mode shows.
class ScriptedClient : public ClsRecordsetEvents {
 public:
  void UserUpdateRecord(Enum_EditRecord& Update_Succeed) override {
    ++asked;
    Update_Succeed = answer;
  }
  void ModifyBefore(const std::string&, const Variant&, bool& Cancel) override { Cancel = cancel; }
  void UpdateRecordBefore(bool& Cancel) override { Cancel = cancel_update; }
  void DeleteRecordBefore(bool& Cancel) override { Cancel = cancel; }
  void UndoRecordBefore(bool& Cancel) override { Cancel = cancel; }
  void NewRecordBefore(bool& Cancel) override { Cancel = cancel; }
  void MoveRecordBefore(bool& Cancel) override { Cancel = cancel_moves; }
  void ExecuteQueryBefore(bool& Cancel) override { Cancel = cancel_execute; }
  void DataSourceInitUser(const std::string& condition, const std::string& order) override {
    user_query = condition + "|" + order;
  }

  Enum_EditRecord answer = E_Succeed;
  bool cancel = false, cancel_update = false, cancel_moves = false, cancel_execute = false;
  int asked = 0;
  std::string user_query;  // what DataSourceInitUser showed: "condition|order"
};

class SourceTest : public ::testing::TestWithParam<TestProvider> {
 protected:
  SourceTest() {
    Execute(
        {"CREATE TABLE Items (\"Id\" INTEGER, \"Name\" VARCHAR(20), \"Qty\" INTEGER, "
         "\"Price\" FLOAT, \"Made\" TIMESTAMP, \"Done\" BOOLEAN)",
         "INSERT INTO Items VALUES (1, 'Bolt', 10, 1.5, '2003-05-06 14:30:15', TRUE)",
         "INSERT INTO Items VALUES (2, 'Nut', 20, 0.25, '2003-05-07 08:05:59', FALSE)",
         "INSERT INTO Items VALUES (3, 'Washer', 30, NULL, NULL, FALSE)"});
    rs.ConnectString = db.ConnectionString();
    rs.TableName = "Items";
    rs.UserOpenMode = U_Auto;
    for (const char* name : {"Id", "Name", "Qty", "Price", "Made"}) {
      rs.Add(name);
    }
    rs.Item("Qty")->FieldType = F_Numeral;
    rs.Item("Price")->FieldType = F_Numeral;
    rs.Item("Made")->FieldType = F_Date;
    rs.Advise(&log);
    rs.Advise(&client);
  }

  // Runs each statement on the test database.
  void Execute(std::initializer_list<const char*> statements) {
    db::Connection connection;
    connection.Open(db.ConnectionString());
    for (const char* sql : statements) {
      connection.Execute(sql);
    }
  }

  // Loads, then forgets the events of the load.
  void Load() {
    ASSERT_FALSE(rs.InitDataSource());
    log.Clear();
  }

  TestDatabase db{GetParam()};
  CaptureScope ui;
  EventLog log;
  ScriptedClient client;
  ClsRecordset rs;  // declared last: destroyed first, while its sinks still live
};

}  // namespace varnel::testing
