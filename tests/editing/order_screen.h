// An order screen held in memory, for the editing tests: six fields over three
// rows, every row editable, an event log connected and messages captured.
//
//   Id (number, read-only), Name (text), Qty (number, summed, copied),
//   Price (number, copied), Amount (= Qty*Price, summed, required, shown as
//   "Amount"), Main (main Boolean marker).
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "fields/field_access.h"
#include "recordset/recordset_state.h"
#include "recordset/row_store.h"
#include "support/capture_ui.h"
#include "support/event_log.h"
#include "varnel/varnel.h"

namespace varnel::testing {

// Every event of the log but the value-store ones (ValueChange, SymbolChange).
inline std::string EditingEvents(const EventLog& log) {
  std::string out;
  for (const std::string& name : log.names) {
    if (name == "ValueChange" || name == "SymbolChange") {
      continue;
    }
    out += (out.empty() ? "" : ",") + name;
  }
  return out;
}

// A client that answers UserUpdateRecord as told, counts the questions and
// can cancel the Before events.
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

  Enum_EditRecord answer = E_Succeed;
  bool cancel = false;
  bool cancel_update = false;
  int asked = 0;
};

class OrderScreen : public ::testing::Test {
 protected:
  OrderScreen() {
    id = Define("Id", F_Numeral, false);
    name = Define("Name", F_Text, true);
    qty = Define("Qty", F_Numeral, true);
    price = Define("Price", F_Numeral, true);
    amount = Define("Amount", F_Numeral, false);
    main = Define("Main", F_Boolean, true);
    qty->IsSum = amount->IsSum = true;
    qty->Copy = price->Copy = true;
    price->NumType = N_Float;
    amount->ComputeString = "Qty*Price";
    amount->IsData = false;
    amount->EnableNull = false;
    amount->DisplayName = "Amount";
    main->IsMain = true;
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

  // Replaces the rows and their totals (silently, as a load does); every row
  // editable; row 1 current.
  void Fill(const std::vector<Row>& rows) {
    rs.Rows(static_cast<int32_t>(rows.size()));
    internal::RecordsetState& state = internal::RecordsetAccess::State(rs);
    internal::BulkScope bulk;
    for (size_t i = 0; i < rows.size(); ++i) {
      const int32_t r = static_cast<int32_t>(i) + 1;
      id->SetValue(rows[i].id, r);
      name->SetValue(rows[i].name, r);
      qty->SetValue(rows[i].qty, r);
      price->SetValue(rows[i].price, r);
      amount->SetValue(rows[i].qty * rows[i].price, r);
      state.edit_marks[r] = 1;
    }
    internal::RecomputeAllSums(state);
    state.current_row = rows.empty() ? 0 : 1;
  }

  // Values of a field in rows 1..Rows, as text ("Null" for Null).
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

 private:
  std::shared_ptr<ClsFields> Define(const std::string& field_name, Enum_FieldType type,
                                    bool editable) {
    auto field = rs.Add(field_name);
    field->FieldType = type;
    field->Edit = editable;
    field->EnableNull = true;
    field->IsData = true;
    return field;
  }
};

}  // namespace varnel::testing
