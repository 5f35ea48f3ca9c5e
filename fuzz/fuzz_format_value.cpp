// Fuzzes the two ways a value is formatted. The first byte picks one:
// - ClsRecordset::FormatValue for every field kind. The next bytes pick the
//   kind, its options (NumType, DateType, DefinedSize, a range, a currency
//   symbol) and the type of the value offered; the rest is the value. An
//   accepted value must be in its kind's normal form and inside its range; a
//   refused one must be left as it was.
// - Format(value, pattern) with a value of every kind and any pattern: it
//   gives text or raises VbError, and a number written with a pattern of
//   digit places only holds digits, separators, a sign and "%".
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

#include "automation/calendar.h"
#include "fuzz_input.h"
#include "varnel/varnel.h"

namespace {

using varnel::Variant;
using varnel::fuzzing::FuzzInput;
using varnel::fuzzing::Violated;

constexpr varnel::Enum_FieldType kKinds[] = {
    varnel::F_Other,      varnel::F_Boolean,  varnel::F_Date,
    varnel::F_Text,       varnel::F_Currency, varnel::F_Numeral,
    varnel::F_AutoCoding, varnel::F_Locked,   varnel::F_MultiMode};

struct Subject {
  Subject() {
    field = rs.Add("F");
    symbol = rs.Add("Sym");
    rs.Rows(2);
    field->SetValue(Variant(int32_t{1}), 1);
  }
  varnel::ClsRecordset rs;
  std::shared_ptr<varnel::ClsFields> field;
  std::shared_ptr<varnel::ClsFields> symbol;
};

Variant OfferedValue(FuzzInput& input) {
  switch (input.Choice(10)) {
    case 0:
      return Variant();
    case 1:
      return Variant::Null();
    case 2:
      return Variant(input.Raw<double>());
    case 3:
      return Variant(input.Raw<int32_t>());
    case 4:
      return Variant(input.Raw<uint8_t>() % 2 == 1);
    case 5:
      return Variant(varnel::Currency{input.Raw<int64_t>()});
    case 6:
      return Variant(varnel::Date{input.Raw<double>()});
    case 7:
      return Variant(input.Raw<int64_t>());
    case 8: {
      varnel::Decimal decimal{input.Raw<uint64_t>(), input.Raw<uint32_t>()};
      decimal.Scale = static_cast<uint8_t>(input.Choice(29));
      decimal.Negative = input.Choice(2) == 1;
      return Variant(decimal);
    }
    default:
      return Variant(input.Rest());
  }
}

void SetRange(FuzzInput& input, varnel::ClsFields& field) {
  static const Variant kBounds[] = {
      Variant(),           Variant(int32_t{1}), Variant(0.25),        Variant("$100"),
      Variant("1/1/2003"), Variant("m"),        Variant(int32_t{-5}), Variant("12/31/9999"),
      Variant(1e300)};
  field.InputMin = kBounds[input.Choice(std::size(kBounds))];
  field.InputMax = kBounds[input.Choice(std::size(kBounds))];
}

// Equal, or the same bits (a NaN offered and refused is still that NaN).
bool Unchanged(const Variant& a, const Variant& b) {
  if (a.VarType() != b.VarType() ||
      (a.VarType() != varnel::vbDouble && a.VarType() != varnel::vbDate)) {
    return a == b;
  }
  const double x = a.VarType() == varnel::vbDouble ? a.AsDouble() : a.AsDate().Value;
  const double y = b.VarType() == varnel::vbDouble ? b.AsDouble() : b.AsDate().Value;
  return std::memcmp(&x, &y, sizeof x) == 0;
}

int32_t CharacterCount(std::string_view text) {
  int32_t count = 0;
  for (const char c : text) {
    count += (static_cast<unsigned char>(c) & 0xC0) != 0x80 ? 1 : 0;
  }
  return count;
}

void CheckNormalForm(const varnel::ClsFields& field, const Variant& value) {
  if (value.IsNull()) {
    return;
  }
  const varnel::VbVarType type = value.VarType();
  bool ok = true;
  switch (field.FieldType) {
    case varnel::F_Text: {
      const std::string_view text = value.IsString() ? value.StringView() : "";
      ok = value.IsString() && !text.empty() && text.back() != ' ' &&
           (field.DefinedSize <= 0 || CharacterCount(text) <= field.DefinedSize);
      break;
    }
    case varnel::F_Numeral:
      ok = (type == varnel::vbLong || type == varnel::vbDouble || type == varnel::vbLongLong ||
            type == varnel::vbDecimal) &&
           std::isfinite(value.ToDouble());
      if (field.NumType == varnel::N_Percent) {
        ok = ok && value.ToDouble() >= 0 && value.ToDouble() <= 1;
      }
      break;
    case varnel::F_Currency:
      ok = type == varnel::vbCurrency;
      break;
    case varnel::F_Date:
      ok = type == varnel::vbDate && varnel::internal::InDateRange(value.AsDate().Value) &&
           varnel::internal::CutDate(value.AsDate(), field.DateType) == value.AsDate();
      break;
    case varnel::F_Boolean:
      ok = type == varnel::vbBoolean;
      break;
    case varnel::F_Locked:
      ok = type == varnel::vbBoolean || value.IsNumber();
      break;
    default:
      break;
  }
  if (!ok) {
    Violated("value not in its kind's normal form", value.TypeName());
  }
}

// Every character of a pattern is a digit place, a separator or "%".
bool OnlyDigitPlaces(std::string_view pattern) {
  return !pattern.empty() && pattern.find_first_not_of("0#,.%") == std::string_view::npos;
}

void CheckFormat(FuzzInput& input) {
  const size_t text_size = input.Choice(24);
  Variant value = OfferedValue(input);
  std::string pattern = input.Rest();
  if (value.IsString() && text_size < value.StringView().size()) {
    pattern = std::string(value.StringView().substr(text_size)) + pattern;
    value = Variant(value.StringView().substr(0, text_size));
  }
  std::string text;
  try {
    text = varnel::Format(value, pattern);
  } catch (const varnel::VbError&) {
    return;  // refused with the platform's error: allowed
  }
  if (value.IsNumber() && OnlyDigitPlaces(pattern) &&
      text.find_first_not_of("0123456789,.%-") != std::string::npos) {
    Violated("a number pattern wrote something else than a number", text);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  varnel::fuzzing::InstallSilentUi();
  static Subject subject;
  FuzzInput input(data, size);
  if (input.Choice(2) == 1) {
    CheckFormat(input);
    return 0;
  }
  varnel::ClsFields& field = *subject.field;
  field.FieldType = kKinds[input.Choice(std::size(kKinds))];
  field.NumType = static_cast<varnel::Enum_NumType>(input.Choice(3));
  field.DateType = static_cast<varnel::Enum_DateType>(input.Choice(5));
  field.DefinedSize = static_cast<int32_t>(input.Choice(8));
  field.SymbolName = input.Choice(2) ? "Sym" : "";
  subject.symbol->SetValue(input.Choice(2) ? Variant("$") : Variant::Null(), 1);
  SetRange(input, field);
  const Variant offered = OfferedValue(input);

  Variant value = offered;
  const bool refused = subject.rs.FormatValue(Variant("F"), value, 1);
  if (subject.rs.SysErrState) {
    Violated("SysErrState left set", "");
  }
  if (refused && !Unchanged(value, offered)) {
    Violated("a refused value was changed", value.TypeName());
  }
  if (!refused) {
    CheckNormalForm(field, value);
  }
  return 0;
}
