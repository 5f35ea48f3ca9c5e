// A first look at Varnel without a database: fields filled in memory, a
// computed field that follows its inputs, events, and a message to the user.
#include <iostream>

#include "varnel/varnel.h"

namespace {

// Prints every event the recordset raises, by name.
class PrintingSink : public varnel::ClsRecordsetEvents {
 public:
  void OnEvent(int32_t id) override { std::cout << "  event " << varnel::EventName(id) << "\n"; }
};

void PrintRows(varnel::ClsRecordset& rs) {
  for (int32_t row = 1; row <= rs.Rows(); ++row) {
    std::cout << "  row " << row << ":";
    for (const auto& field : rs) {
      std::cout << "  " << field->Name << "=" << varnel::CStr(field->GetValue(row));
    }
    std::cout << "\n";
  }
}

}  // namespace

int main() {
  varnel::ClsRecordset rs;
  auto qty = rs.Add("Qty");
  qty->FieldType = varnel::F_Numeral;
  auto price = rs.Add("Price");
  price->FieldType = varnel::F_Numeral;
  auto amount = rs.Add("Amount");
  amount->ComputeString = "Qty*Price";
  amount->IsData = false;
  amount->IsSum = true;

  rs.Rows(3);
  const int32_t quantities[] = {2, 5, 1};
  const double prices[] = {9.5, 3.25, 120};
  for (int32_t row = 1; row <= 3; ++row) {
    qty->SetValue(quantities[row - 1], row);
    price->SetValue(prices[row - 1], row);
  }
  std::cout << "Three rows filled in memory; Amount is computed from Qty*Price:\n";
  PrintRows(rs);
  std::cout << "Sum of Amount: " << varnel::CStr(amount->SumValue) << "\n\n";

  PrintingSink sink;
  const int32_t cookie = rs.Advise(&sink);
  std::cout << "Changing Qty of row 2 to 10 raises:\n";
  qty->SetValue(int32_t{10}, 2);
  rs.Unadvise(cookie);
  PrintRows(rs);
  std::cout << "Sum of Amount: " << varnel::CStr(amount->SumValue) << "\n\n";

  std::cout << "A message to the user (the console shows it on standard error):\n";
  bool showing = false;
  varnel::MdlProcess::ShowErr(varnel::LoadResString(101), 94,
                              varnel::LoadResString(104) + "'Qty'" + varnel::LoadResString(105),
                              showing);
  return 0;
}
