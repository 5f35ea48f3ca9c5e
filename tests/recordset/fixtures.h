// The recordsets the recordset and editing tests work on, each with a
// scripted client, a capturing message UI and an event log:
// - SourceTest: a recordset over a real database, on every provider (TEST_P,
//   then VARNEL_ON_EVERY_PROVIDER(Suite)): the Items table with three rows,
//   its fields defined as a screen would;
// - OrderScreen: an order screen held in memory: Id (number, read-only), Name
//   (text), Qty (number, summed, copied), Price (number, copied), Amount
//   (= Qty*Price, summed, required, shown as "Amount"), Main (main Boolean
//   marker); three editable rows.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "fields/field_access.h"
#include "recordset/recordset_state.h"
#include "recordset/row_store.h"
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

// The log without the value-store events (ValueChange, SymbolChange).
inline std::string EditingEvents(const EventLog& log) {
  std::string out;
  for (const std::string& name : log.names) {
    if (name != "ValueChange" && name != "SymbolChange") {
      out += (out.empty() ? "" : ",") + name;
    }
  }
  return out;
}

class OrderScreen : public ::testing::Test {
 protected:
  OrderScreen() {
    for (const char* field_name : {"Id", "Name", "Qty", "Price", "Amount", "Main"}) {
      rs.Add(field_name)->FieldType = F_Numeral;
    }
    id = rs.Item("Id"), name = rs.Item("Name"), qty = rs.Item("Qty");
    price = rs.Item("Price"), amount = rs.Item("Amount"), main = rs.Item("Main");
    name->FieldType = F_Text;
    main->FieldType = F_Boolean;
    id->Edit = amount->Edit = false;
    qty->IsSum = amount->IsSum = qty->Copy = price->Copy = main->IsMain = true;
    price->NumType = N_Float;
    amount->ComputeString = "Qty*Price";
    amount->IsData = amount->EnableNull = false;
    amount->DisplayName = "Amount";
    Fill({{1, "Ann", 2, 1.5}, {2, "Bo", 3, 2.0}, {3, "Cy", 4, 0.5}});
    rs.Advise(&client);
    rs.Advise(&log);
  }

  struct Row {
    int32_t id;
    const char* name;
    int32_t qty;
    double price;
  };

  // Replaces the rows and their totals silently, as a load does; every row
  // editable, row 1 current, status E_Default.
  void Fill(const std::vector<Row>& rows) {
    rs.Rows(static_cast<int32_t>(rows.size()));
    internal::BulkScope bulk;
    for (size_t i = 0; i < rows.size(); ++i) {
      const int32_t r = static_cast<int32_t>(i) + 1;
      id->SetValue(rows[i].id, r);
      name->SetValue(rows[i].name, r);
      qty->SetValue(rows[i].qty, r);
      price->SetValue(rows[i].price, r);
      amount->SetValue(rows[i].qty * rows[i].price, r);
      State().edit_marks[r] = 1;
    }
    internal::RecomputeAllSums(State());
    State().current_row = rows.empty() ? 0 : 1;
    State().edit_status = E_Default;
  }

  // A field's values in rows 1..Rows as text, "Null" for Null.
  std::string Column(const std::shared_ptr<ClsFields>& field) const {
    std::string out;
    for (int32_t r = 1; r <= rs.Rows(); ++r) {
      const Variant v = field->GetValue(r);
      out += (r > 1 ? "," : "") + (v.IsNull() ? std::string("Null") : CStr(v));
    }
    return out;
  }

  internal::RecordsetState& State() { return internal::RecordsetAccess::State(rs); }

  CaptureScope capture;
  ScriptedClient client;
  EventLog log;
  ClsRecordset rs;
  std::shared_ptr<ClsFields> id, name, qty, price, amount, main;
};

}  // namespace varnel::testing
