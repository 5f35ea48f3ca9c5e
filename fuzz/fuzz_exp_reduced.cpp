// Fuzzes MdlCompute::Exp_Reduced, the evaluator of computed fields, with the
// input as the expression over a recordset of one field of each value kind.
#include <cstddef>
#include <cstdint>
#include <memory>

#include "fuzz_input.h"
#include "varnel/varnel.h"

namespace {

using varnel::Variant;

struct Subject {
  Subject() {
    Define("Qty", varnel::F_Numeral, Variant(int32_t{3}));
    Define("Price", varnel::F_Currency, Variant(varnel::Currency{12500}));
    Define("Rate", varnel::F_Numeral, Variant(0.5));
    Define("Name", varnel::F_Text, Variant("O'Brien"));
    Define("Day", varnel::F_Date, Variant(varnel::Date{37747.5}));
    Define("Paid", varnel::F_Boolean, Variant(true));
    Define("Empty", varnel::F_Other, Variant::Null());
  }
  void Define(const char* name, varnel::Enum_FieldType type, const Variant& value) {
    auto field = rs.Add(name);
    field->FieldType = type;
    rs.Rows(2);
    field->SetValue(value, 1);
  }
  varnel::ClsRecordset rs;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  varnel::fuzzing::InstallSilentUi();
  static Subject subject;
  varnel::fuzzing::FuzzInput input(data, size);
  varnel::MdlCompute::CurRow = static_cast<int32_t>(input.Choice(4));  // 0..3: rows 1, 2 and beyond
  varnel::MdlCompute::Expression = input.Rest();
  varnel::MdlCompute::CurRecordset = &subject.rs;
  const Variant result = varnel::MdlCompute::Exp_Reduced();
  varnel::MdlCompute::CurRecordset = nullptr;
  (void)result;
  return 0;
}
