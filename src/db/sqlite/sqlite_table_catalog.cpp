#include "db/sqlite/sqlite_table_catalog.h"

#include <strings.h>

#include <memory>

#include "db/driver.h"
#include "db/sql_quote.h"
#include "db/sqlite/sqlite_values.h"

namespace varnel::db::internal {
namespace {

// The strftime pattern that keeps what a comparison at that precision keeps.
const char* StrftimePattern(DatePrecision precision) {
  switch (precision) {
    case DatePrecision::kMinute:
      return "%Y-%m-%d %H:%M";
    case DatePrecision::kDay:
      return "%Y-%m-%d";
    case DatePrecision::kTimeSecond:
      return "%H:%M:%S";
    case DatePrecision::kTimeMinute:
      return "%H:%M";
    case DatePrecision::kSecond:
      break;
  }
  return "%Y-%m-%d %H:%M:%S";
}

// The kind of a declared type, read as the driver reads its values; a date
// type tells a day alone (DATE) from one with a time (DATETIME, TIMESTAMP)
// and a time alone (TIME).
ColumnKind KindOf(const std::string& declared) {
  std::string upper = declared;
  for (char& c : upper) {
    c = static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
  }
  switch (ClassifyDeclaredType(declared.c_str()).kind) {
    case CellKind::Long:
      return ColumnKind::kInteger;
    case CellKind::Double:
      return ColumnKind::kReal;
    case CellKind::Currency:
      return ColumnKind::kMoney;
    case CellKind::Boolean:
      return ColumnKind::kBoolean;
    case CellKind::Date:
      if (upper.find("TIME") == std::string::npos) {
        return ColumnKind::kDate;
      }
      return upper.find("DATE") == std::string::npos && upper.find("STAMP") == std::string::npos
                 ? ColumnKind::kTime
                 : ColumnKind::kDateTime;
    case CellKind::String:
      return ColumnKind::kText;
    default:
      return ColumnKind::kUntyped;
  }
}

}  // namespace

std::vector<TableColumn> SqliteTableCatalog::Columns(const std::string& table) {
  const std::unique_ptr<Statement> info =
      driver_.Prepare("SELECT name, type, \"notnull\", dflt_value, pk FROM pragma_table_info(" +
                      TextLiteral(UnquoteName(table)) + ") ORDER BY cid");
  std::vector<TableColumn> columns;
  int32_t key_columns = 0;
  while (info->Step()) {
    TableColumn column;
    column.name = info->Value(0).ToString();
    const std::string declared = info->Value(1).IsNull() ? "" : info->Value(1).ToString();
    column.kind = KindOf(declared);
    column.defined_size = ClassifyDeclaredType(declared.c_str()).defined_size;
    column.not_null = info->Value(2).ToDouble() != 0;
    if (!info->Value(3).IsNull()) {
      column.default_sql = info->Value(3).ToString();
    }
    column.key_position = static_cast<int32_t>(info->Value(4).ToDouble());
    key_columns += column.key_position > 0 ? 1 : 0;
    // INTEGER PRIMARY KEY names the rowid, which SQLite numbers itself.
    column.generated = column.key_position == 1 && strcasecmp(declared.c_str(), "INTEGER") == 0;
    columns.push_back(std::move(column));
  }
  if (key_columns > 1) {
    for (TableColumn& column : columns) {
      column.generated = false;
    }
  }
  return columns;
}

std::vector<std::string> SqliteTableCatalog::PrimaryKey(const std::string& table) {
  return FirstColumnTexts(driver_, "SELECT name FROM pragma_table_info(" +
                                       TextLiteral(UnquoteName(table)) +
                                       ") WHERE pk > 0 ORDER BY pk");
}

std::string SqliteTableCatalog::EqualsParameter(const std::string& quoted_column,
                                                std::optional<DatePrecision> precision) const {
  if (!precision) {
    return quoted_column + " = ?";
  }
  const std::string pattern = StrftimePattern(*precision);
  return "strftime('" + pattern + "', " + quoted_column + ") = strftime('" + pattern + "', ?)";
}

std::optional<std::vector<Variant>> SqliteTableCatalog::InsertedRowKey(
    const std::string& table, const std::vector<std::string>& key_columns) {
  if (key_columns.empty()) {
    return std::nullopt;
  }
  std::string sql = "SELECT ";
  for (size_t i = 0; i < key_columns.size(); ++i) {
    sql += (i == 0 ? "" : ", ") + key_columns[i];
  }
  // A table without rowid (or a view) fails here: the database cannot tell.
  sql += " FROM " + table + " WHERE rowid = last_insert_rowid()";
  return FirstRowOrNothing(driver_, sql, key_columns.size());
}

}  // namespace varnel::db::internal
