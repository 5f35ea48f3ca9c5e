// Conversions between SQLite's stored values and Variants, as the table in
// sqlite_driver.h gives them. ReadCell is inline: the bulk read calls it once
// per cell with the column's kind decided before the loop.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <string_view>

#include "automation/calendar.h"
#include "automation/value_rules.h"
#include "varnel/variant.h"

namespace varnel::db::internal {

// What a column's declared type makes of its values.
enum class CellKind : uint8_t { ByStorage, Long, Double, Currency, Date, Boolean, String };

struct DeclaredType {
  CellKind kind = CellKind::ByStorage;
  int32_t defined_size = 0;  // (n) of a text type, else 0
};

// Reads a declared type such as "VARCHAR(40)" or "NUMERIC(10, 2)"; nullptr or
// "" (an expression column) gives ByStorage.
DeclaredType ClassifyDeclaredType(const char* declared);

// Binds Value to parameter Index (from 1) in the form the table gives; returns
// SQLite's result code.
int BindVariant(sqlite3_stmt* statement, int index, const Variant& value);

namespace cell_detail {

inline constexpr double kCurrencyLimit = 922337203685477.5807;

inline Variant FromInteger(sqlite3_int64 value, CellKind kind) {
  switch (kind) {
    case CellKind::Boolean:
      return Variant(value != 0);
    case CellKind::Double:
      return Variant(static_cast<double>(value));
    case CellKind::Currency:
      if (value <= static_cast<sqlite3_int64>(kCurrencyLimit) &&
          value >= -static_cast<sqlite3_int64>(kCurrencyLimit)) {
        return Variant(Currency{value * 10000});
      }
      break;
    default:
      break;
  }
  if (value >= INT32_MIN && value <= INT32_MAX) {
    return Variant(static_cast<int32_t>(value));
  }
  return Variant(static_cast<int64_t>(value));  // every digit: keys beyond 2^53 stay exact
}

inline Variant FromReal(double value, CellKind kind) {
  switch (kind) {
    case CellKind::Boolean:
      return Variant(value != 0);
    case CellKind::Currency:
      if (value < kCurrencyLimit && value > -kCurrencyLimit) {
        return Variant(varnel::internal::CurrencyFromDouble(value));
      }
      return Variant(value);
    default:
      return Variant(value);
  }
}

inline Variant FromText(std::string_view text, CellKind kind) {
  if (kind == CellKind::Date) {
    Date date;
    if (varnel::internal::ParseIsoDate(text.data(), text.size(), date)) {
      return Variant(date);
    }
  }
  return Variant(text);
}

inline std::string_view TextOf(sqlite3_stmt* statement, int column) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
  return text == nullptr ? std::string_view()
                         : std::string_view(text, sqlite3_column_bytes(statement, column));
}

}  // namespace cell_detail

// The value of Column in the statement's current row, converted for Kind.
inline Variant ReadCell(sqlite3_stmt* statement, int column, CellKind kind) {
  switch (sqlite3_column_type(statement, column)) {
    case SQLITE_NULL:
      return Variant::Null();
    case SQLITE_INTEGER:
      if (kind == CellKind::String) {
        break;
      }
      return cell_detail::FromInteger(sqlite3_column_int64(statement, column), kind);
    case SQLITE_FLOAT:
      if (kind == CellKind::String) {
        break;
      }
      return cell_detail::FromReal(sqlite3_column_double(statement, column), kind);
    default:
      break;
  }
  return cell_detail::FromText(cell_detail::TextOf(statement, column), kind);
}

}  // namespace varnel::db::internal
