// Varnel on a real table: load, edit and save through TableWriter, then query
// by form. Creates orders-example.db in the current directory.
#include <cstdio>
#include <iostream>

#include "varnel/varnel.h"

using varnel::Variant;

int main() {
  std::remove("orders-example.db");
  auto cn = std::make_shared<varnel::db::Connection>();
  cn->Open("Provider=SQLite;Create=True;Data Source=orders-example.db");
  cn->Execute(
      "CREATE TABLE Orders (Id INTEGER PRIMARY KEY, Customer VARCHAR(40), "
      "Qty INTEGER, Price CURRENCY, Sign VARCHAR(3), Ordered DATETIME)");
  cn->Execute("INSERT INTO Orders (Customer, Qty, Price, Sign, Ordered) VALUES (?,?,?,?,?)",
              {Variant("Smith & Co"), Variant(int32_t{3}), Variant(varnel::Currency{125000}),
               Variant("$"), Variant(varnel::Date{45300.5})});
  cn->Execute("INSERT INTO Orders (Customer, Qty, Price, Sign, Ordered) VALUES (?,?,?,?,?)",
              {Variant("Oakridge Bakery"), Variant(int32_t{40}), Variant(varnel::Currency{69000}),
               Variant("$"), Variant(varnel::Date{45301.25})});

  varnel::ClsRecordset rs;
  rs.ConnectString = "Provider=SQLite;Data Source=orders-example.db";
  rs.UserOpenMode = varnel::U_Auto;  // each load opens, reads and closes
  rs.TableName = "Orders";
  rs.OrderByField1 = "Id";
  for (const char* name : {"Id", "Customer", "Qty", "Price", "Sign", "Ordered"}) {
    rs.Add(name)->SaveToDB = true;
  }
  rs.Item("Id")->FieldType = varnel::F_Numeral;
  rs.Item("Customer")->FieldType = varnel::F_Text;
  rs.Item("Qty")->FieldType = varnel::F_Numeral;
  rs.Item("Price")->FieldType = varnel::F_Currency;
  rs.Item("Price")->SymbolName = "Sign";  // the currency sign lives in column Sign
  rs.Item("Ordered")->FieldType = varnel::F_Date;
  rs.Item("Ordered")->DateType = varnel::D_YMD;
  auto amount = rs.Add("Amount");  // computed, not a column
  amount->IsData = false;
  amount->ComputeString = "Qty*Price";
  amount->IsSum = true;

  varnel::TableWriter writer(rs);  // saves rows by the table's primary key
  if (rs.InitDataSource()) {
    return 1;
  }
  std::cout << rs.Rows() << " rows, total " << varnel::CStr(amount->SumValue) << "\n";

  rs.MoveFirst();
  rs.Modify("Qty", int32_t{5});  // Amount follows at once
  std::cout << "Amount of row 1: " << varnel::CStr(amount->GetValue()) << "\n";
  if (rs.UpdateRecord() != varnel::E_Succeed) {
    return 1;
  }

  rs.NewQuery();  // query by form: criteria typed into fields
  rs.Modify("Qty", ">=10 AND <100");
  rs.ExecuteQuery();
  std::cout << "Query " << rs.RecordsetCondition() << " found " << rs.Rows()
            << " row(s): " << varnel::CStr(rs.Item("Customer")->GetValue(1)) << "\n";

  varnel::db::Recordset check;
  check.Open("SELECT Qty FROM Orders WHERE Id = 1", cn);
  std::cout << "Qty of order 1 in the database: " << varnel::CStr(check.Fields()[0].Value())
            << "\n";
  return 0;
}
