#include "db/sqlite/sqlite_values.h"

#include <cctype>
#include <cstdlib>
#include <string>

#include "automation/decimal_math.h"

namespace varnel::db::internal {
namespace {

struct TypeName {
  std::string base;    // upper-case words before '('
  int32_t first = 0;   // first number inside (...), 0 when none
  int32_t second = 0;  // second number inside (...), 0 when none
};

TypeName SplitTypeName(std::string_view declared) {
  TypeName name;
  const size_t open = declared.find('(');
  for (char c : declared.substr(0, open)) {
    name.base += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  }
  if (open != std::string_view::npos) {
    const std::string args(declared.substr(open + 1));
    char* end = nullptr;
    name.first = static_cast<int32_t>(std::strtol(args.c_str(), &end, 10));
    const size_t comma = args.find(',');
    if (comma != std::string::npos) {
      name.second = static_cast<int32_t>(std::strtol(args.c_str() + comma + 1, &end, 10));
    }
  }
  return name;
}

bool Has(const std::string& base, const char* word) { return base.find(word) != std::string::npos; }

bool IsWord(const std::string& base, const char* word) {
  const size_t begin = base.find_first_not_of(' ');
  const size_t end = base.find_last_not_of(' ');
  return begin != std::string::npos && base.compare(begin, end - begin + 1, word) == 0;
}

// A whole Decimal within the 8-byte range as an integer; any other as its
// exact text, which the column's affinity then stores as it can.
int BindDecimal(sqlite3_stmt* statement, int index, const Decimal& value) {
  try {
    const int64_t whole = varnel::internal::DecimalToInt(value);
    if (varnel::internal::DecimalFromInt(whole) == value) {
      return sqlite3_bind_int64(statement, index, whole);
    }
  } catch (const VbError&) {
    // beyond the 8-byte range: bound as text below
  }
  const std::string text = varnel::internal::DecimalText(value);
  return sqlite3_bind_text(statement, index, text.data(), static_cast<int>(text.size()),
                           SQLITE_TRANSIENT);
}

}  // namespace

DeclaredType ClassifyDeclaredType(const char* declared) {
  if (declared == nullptr || *declared == '\0') {
    return {};
  }
  const TypeName name = SplitTypeName(declared);
  const std::string& base = name.base;
  if (Has(base, "BOOL") || IsWord(base, "BIT")) {
    return {CellKind::Boolean, 0};
  }
  if (Has(base, "DATE") || Has(base, "TIME")) {
    return {CellKind::Date, 0};
  }
  if (Has(base, "MONEY") || Has(base, "CURRENCY")) {
    return {CellKind::Currency, 0};
  }
  if (Has(base, "INT")) {
    return {CellKind::Long, 0};
  }
  if (Has(base, "CHAR") || Has(base, "TEXT") || Has(base, "CLOB")) {
    return {CellKind::String, name.first > 0 ? name.first : 0};
  }
  if (Has(base, "REAL") || Has(base, "FLOA") || Has(base, "DOUB")) {
    return {CellKind::Double, 0};
  }
  if ((Has(base, "NUMERIC") || Has(base, "DECIMAL") || Has(base, "NUMBER")) && name.second > 0) {
    return {CellKind::Double, 0};
  }
  return {};
}

int BindVariant(sqlite3_stmt* statement, int index, const Variant& value) {
  switch (value.VarType()) {
    case vbEmpty:
    case vbNull:
      return sqlite3_bind_null(statement, index);
    case vbInteger:
      return sqlite3_bind_int64(statement, index, value.AsInteger());
    case vbLong:
      return sqlite3_bind_int64(statement, index, value.AsLong());
    case vbLongLong:
      return sqlite3_bind_int64(statement, index, value.AsLongLong());
    case vbDecimal:
      return BindDecimal(statement, index, value.AsDecimal());
    case vbBoolean:
      return sqlite3_bind_int64(statement, index, value.AsBoolean() ? 1 : 0);
    case vbDouble:
      return sqlite3_bind_double(statement, index, value.AsDouble());
    case vbCurrency:
      return sqlite3_bind_double(statement, index,
                                 varnel::internal::CurrencyToDouble(value.AsCurrency()));
    case vbDate: {
      const std::string text = IsoDate(value.AsDate());
      return sqlite3_bind_text(statement, index, text.data(), static_cast<int>(text.size()),
                               SQLITE_TRANSIENT);
    }
    case vbString:
    default: {
      const std::string_view text = value.StringView();
      // The caller's parameter vector outlives the statement's execution. A null
      // pointer would bind NULL, so an empty text points at "".
      return sqlite3_bind_text(statement, index, text.empty() ? "" : text.data(),
                               static_cast<int>(text.size()), SQLITE_STATIC);
    }
  }
}

}  // namespace varnel::db::internal
