// Uses the installed headers and library: a computed field over two values,
// and the last error of a refused operation.
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
  if (rs.Add("Qty") != nullptr || varnel::LastError().Number != varnel::Err_DuplicateKey) {
    return 1;  // a second field of the same name is refused, and the program can tell why
  }
  return 0;
}
