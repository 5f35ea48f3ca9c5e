// The normal form of a value for each field kind.
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

#include "fields/format_value.h"
#include "fields/value_formats.h"
#include "varnel/fields.h"
#include "varnel/messages.h"

namespace varnel::internal {
namespace {

// A Long when the number is whole and fits, else a Double.
Variant WholeOrDouble(double number) {
  if (number == std::nearbyint(number) && number >= std::numeric_limits<int32_t>::min() &&
      number <= std::numeric_limits<int32_t>::max()) {
    return Variant(Variant(number).ToLong());
  }
  return Variant(number);
}

// A whole number in the narrowest of Long, LongLong and Double that holds it.
Variant WholeNumber(const Variant& number) {
  switch (number.VarType()) {
    case vbLongLong:
    case vbDecimal:
      try {
        const int64_t whole = number.ToLongLong();
        return whole >= std::numeric_limits<int32_t>::min() &&
                       whole <= std::numeric_limits<int32_t>::max()
                   ? Variant(static_cast<int32_t>(whole))
                   : Variant(whole);
      } catch (const VbError&) {
        return WholeOrDouble(std::nearbyint(number.ToDouble()));  // beyond 8 bytes
      }
    default:
      return WholeOrDouble(std::nearbyint(number.ToDouble()));
  }
}

// Characters (not bytes) of UTF-8 text: the unit of a column's defined size.
size_t CharacterCount(std::string_view text) {
  size_t count = 0;
  for (const char c : text) {
    count += (static_cast<unsigned char>(c) & 0xC0) != 0x80 ? 1 : 0;
  }
  return count;
}

struct BooleanWord {
  std::string_view word;  // ASCII letters compared without regard to case
  bool value;
};

// The words for True and False in both languages of the string table.
constexpr std::array kBooleanWords = {
    BooleanWord{"TRUE", true},          BooleanWord{"FALSE", false},       BooleanWord{"YES", true},
    BooleanWord{"NO", false},           BooleanWord{"\xE7\x9C\x9F", true},  // 真
    BooleanWord{"\xE5\x81\x87", false},                                     // 假
    BooleanWord{"\xE6\x98\xAF", true},                                      // 是
    BooleanWord{"\xE5\x90\xA6", false},                                     // 否
};

std::optional<bool> BooleanOfText(std::string_view text) {
  const size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) {
    return std::nullopt;
  }
  text = text.substr(first, text.find_last_not_of(' ') - first + 1);
  std::string upper(text);
  for (char& c : upper) {
    c = (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c;
  }
  for (const BooleanWord& entry : kBooleanWords) {
    if (upper == entry.word) {
      return entry.value;
    }
  }
  const std::optional<double> number = ReadNumber(Variant(text));
  return number ? std::optional<bool>(*number != 0) : std::nullopt;
}

}  // namespace

std::optional<Refusal> FormatText(const ClsFields& field, Variant& value) {
  const std::string text = value.IsString() ? std::string(value.StringView()) : CStr(value);
  const std::string_view kept = std::string_view(text).substr(0, text.find_last_not_of(' ') + 1);
  if (field.DefinedSize > 0 && CharacterCount(kept) > static_cast<size_t>(field.DefinedSize)) {
    return TypeMismatch();  // the column cannot hold it
  }
  value = Variant(kept);
  return std::nullopt;
}

std::optional<Refusal> FormatNumeral(const ClsFields& field, Variant& value) {
  if (field.NumType == N_Percent) {
    const std::optional<double> fraction = ReadPercent(value);
    if (!fraction) {
      return TypeMismatch();
    }
    if (*fraction < 0 || *fraction > 1) {
      return Notice("'" + ShownName(field) + "' " + LoadResString(113));
    }
    value = Variant(*fraction);
    return std::nullopt;
  }
  const std::optional<Variant> number = ReadExactNumber(value);
  if (!number) {
    return TypeMismatch();
  }
  value = field.NumType == N_Integer ? WholeNumber(*number) : *number;
  return std::nullopt;
}

std::optional<Refusal> FormatCurrency(const ClsFields& field, Variant& value, int32_t row) {
  std::string symbol;
  if (!field.SymbolName.empty()) {
    // An amount means nothing until the row says in which currency.
    const Variant sign = field.GetSymbol(row);
    symbol = sign.IsBlank() ? std::string() : CStr(sign);
    if (symbol.find_first_not_of(' ') == std::string::npos) {
      return Notice(LoadResString(115) + ShownName(field) + LoadResString(116));
    }
  }
  const std::optional<Currency> amount = ReadCurrency(value, symbol);
  if (!amount) {
    return TypeMismatch();
  }
  value = Variant(*amount);
  return std::nullopt;
}

std::optional<Refusal> FormatDate(const ClsFields& field, Variant& value) {
  const std::optional<Date> date = value.VarType() == vbBoolean ? std::nullopt : ReadDate(value);
  if (!date) {
    return TypeMismatch();
  }
  value = Variant(CutToDateType(*date, field.DateType));
  return std::nullopt;
}

std::optional<Refusal> FormatBoolean(Variant& value) {
  std::optional<bool> truth;
  if (value.VarType() == vbBoolean) {
    truth = value.AsBoolean();
  } else if (value.IsString()) {
    truth = BooleanOfText(value.StringView());
  } else if (value.IsNumber()) {
    truth = value.ToDouble() != 0;
  }
  if (!truth) {
    return TypeMismatch();
  }
  value = Variant(*truth);
  return std::nullopt;
}

std::optional<Refusal> FormatLocked(Variant& value) {
  if (value.VarType() == vbBoolean || value.IsNumber()) {
    return std::nullopt;
  }
  const std::optional<double> number = value.IsString() ? ReadNumber(value) : std::nullopt;
  if (!number) {
    return TypeMismatch();
  }
  value = WholeOrDouble(*number);
  return std::nullopt;
}

}  // namespace varnel::internal
