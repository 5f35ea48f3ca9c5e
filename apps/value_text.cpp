#include "value_text.h"

#include <fmt/format.h>

#include <cstdlib>

namespace varnel::app {
namespace {

const char* DatePattern(Enum_DateType type) {
  switch (type) {
    case D_YMDHN:
      return "yyyy-mm-dd hh:nn";
    case D_YMD:
      return "yyyy-mm-dd";
    case D_HNS:
      return "hh:nn:ss";
    case D_HN:
      return "hh:nn";
    default:
      return "yyyy-mm-dd hh:nn:ss";
  }
}

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
      return Format(value, DatePattern(field.DateType));
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
