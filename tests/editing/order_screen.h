// An order screen held in memory for the editing tests: Id (number, read-only),
// Name (text), Qty (number, summed, copied), Price (number, copied), Amount
// (= Qty*Price, summed, required, shown as "Amount"), Main (main Boolean
// marker); three editable rows, an event log and captured messages.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fields/field_access.h"
#include "recordset/recordset_state.h"
#include "recordset/row_store.h"
#include "recordset/source_fixture.h"
#include "varnel/varnel.h"

namespace varnel::testing {

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
