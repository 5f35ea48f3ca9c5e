#include "value_text.h"

#include <fmt/format.h>

#include <cstdlib>

#include "varnel/date_display.h"

namespace varnel::app {
namespace {

// Two decimals, or up to four when the amount has them: 12.50, 0.1234.
std::string CurrencyText(Currency amount) {
  const int64_t units = amount.Value;
  const int decimals = (units % 100 == 0) ? 2 : (units % 10 == 0 ? 3 : 4);
  return fmt::format("{:.{}f}", static_cast<double>(units) / 10000.0, decimals);
}

}  // namespace

std::string ValueText(const ClsFields& field, const Variant& value) {
  if (value.IsBlank()) {
    return "";
  }
  try {
    if (value.VarType() == vbBoolean || field.FieldType == F_Boolean) {
      return value.ToBool() ? "[x]" : "[ ]";
    }
    if (value.VarType() == vbDate) {
      return DateDisplayText(value, field.DateType);
    }
    if (value.VarType() == vbCurrency) {
      return CurrencyText(value.AsCurrency());
    }
    if (field.FieldType == F_Currency && value.IsNumber()) {
      return CurrencyText(value.ToCurrency());
    }
    return CStr(value);
  } catch (const std::exception&) {
    return CStr(value);  // a value that does not fit its field is shown as it is
  }
}

std::string SumText(const ClsFields& field) { return ValueText(field, field.SumValue); }

}  // namespace varnel::app
