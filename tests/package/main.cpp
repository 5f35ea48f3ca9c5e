// Uses the installed headers and library: a computed field over two values.
#include <varnel/varnel.h>

#include <iostream>

int main() {
  varnel::ClsRecordset rs;
  rs.Add("Qty");
  rs.Add("Price");
  auto amount = rs.Add("Amount");
  amount->IsData = false;
  amount->ComputeString = "Qty*Price";
  rs.Rows(1);
  rs.Item("Qty")->SetValue(int32_t{3}, 1);
  rs.Item("Price")->SetValue(varnel::Currency{25000}, 1);
  std::cout << "Amount " << varnel::CStr(amount->GetValue(1)) << "\n";
  return 0;
}
