#include "db/postgres/pg_table_catalog.h"

#include <memory>

#include "db/driver.h"
#include "db/postgres/pg_values.h"
#include "db/sql_quote.h"

namespace varnel::db::internal {
namespace {

// The table called Table as an unquoted or bracketed name finds it: the one
// of that exact name, else the one its lower-case form names.
std::string TableOid(const std::string& table) {
  const std::string name = TextLiteral(UnquoteName(table));
  return "(SELECT c.oid FROM pg_catalog.pg_class c WHERE pg_catalog.pg_table_is_visible(c.oid)"
         " AND c.relname IN (" +
         name + ", lower(" + name + ")) ORDER BY c.relname = " + name + " DESC LIMIT 1)";
}

// The to_char pattern that keeps what a comparison at that precision keeps.
const char* ToCharPattern(DatePrecision precision) {
  switch (precision) {
    case DatePrecision::kMinute:
      return "YYYY-MM-DD HH24:MI";
    case DatePrecision::kDay:
      return "YYYY-MM-DD";
    case DatePrecision::kTimeSecond:
      return "HH24:MI:SS";
    case DatePrecision::kTimeMinute:
      return "HH24:MI";
    case DatePrecision::kSecond:
      break;
  }
  return "YYYY-MM-DD HH24:MI:SS";
}

// A value as to_char reads it: a time of day on a fixed day, so that time
// columns and timestamps compare alike.
std::string DateText(const std::string& value, DatePrecision precision) {
  const std::string pattern = ToCharPattern(precision);
  if (precision == DatePrecision::kTimeSecond || precision == DatePrecision::kTimeMinute) {
    return "to_char(DATE '2000-01-01' + CAST(" + value + " AS time), '" + pattern + "')";
  }
  return "to_char(CAST(" + value + " AS timestamp), '" + pattern + "')";
}

constexpr Oid kDateOid = 1082, kTimeOid = 1083, kTimeTzOid = 1266;

// The kind of a column of type Type with modifier Modifier, read as the
// driver reads its values.
ColumnKind KindOf(Oid type, int modifier) {
  switch (ClassifyPgType(type, modifier).kind) {
    case PgCellKind::kText:
      return ColumnKind::kText;
    case PgCellKind::kBoolean:
      return ColumnKind::kBoolean;
    case PgCellKind::kMoney:
      return ColumnKind::kMoney;
    case PgCellKind::kDate:
    case PgCellKind::kDateZoned:
      return type == kDateOid                         ? ColumnKind::kDate
             : type == kTimeOid || type == kTimeTzOid ? ColumnKind::kTime
                                                      : ColumnKind::kDateTime;
    case PgCellKind::kLong:
      return ColumnKind::kInteger;
    default:
      return ColumnKind::kReal;
  }
}

}  // namespace

std::vector<TableColumn> PgTableCatalog::Columns(const std::string& table) {
  const std::unique_ptr<Statement> info = driver_.Prepare(
      "SELECT a.attname, a.atttypid::int8, a.atttypmod, a.attnotnull,"
      " pg_catalog.pg_get_expr(d.adbin, d.adrelid),"
      " CASE WHEN a.attnum = ANY (i.indkey) THEN array_position(i.indkey::int2[], a.attnum)"
      " - array_lower(i.indkey::int2[], 1) + 1 ELSE 0 END,"
      " a.attidentity <> '' OR coalesce(pg_catalog.pg_get_expr(d.adbin, d.adrelid), '')"
      " LIKE 'nextval(%'"
      " FROM pg_catalog.pg_attribute a"
      " LEFT JOIN pg_catalog.pg_attrdef d ON d.adrelid = a.attrelid AND d.adnum = a.attnum"
      " LEFT JOIN pg_catalog.pg_index i ON i.indrelid = a.attrelid AND i.indisprimary"
      " WHERE a.attrelid = " +
      TableOid(table) + " AND a.attnum > 0 AND NOT a.attisdropped ORDER BY a.attnum");
  std::vector<TableColumn> columns;
  while (info->Step()) {
    TableColumn column;
    column.name = info->Value(0).ToString();
    const auto type = static_cast<Oid>(info->Value(1).ToDouble());
    const int modifier = info->Value(2).ToLong();
    column.kind = KindOf(type, modifier);
    column.defined_size = ClassifyPgType(type, modifier).defined_size;
    column.not_null = info->Value(3).ToBool();
    if (!info->Value(4).IsNull()) {
      column.default_sql = info->Value(4).ToString();
    }
    column.key_position = info->Value(5).ToLong();
    column.generated = info->Value(6).ToBool();
    columns.push_back(std::move(column));
  }
  return columns;
}

std::vector<std::string> PgTableCatalog::PrimaryKey(const std::string& table) {
  return FirstColumnTexts(
      driver_,
      "SELECT a.attname FROM pg_catalog.pg_index i JOIN pg_catalog.pg_attribute a"
      " ON a.attrelid = i.indrelid AND a.attnum = ANY (i.indkey)"
      " WHERE i.indisprimary AND i.indrelid = " +
          TableOid(table) + " ORDER BY array_position(i.indkey::int2[], a.attnum)");
}

std::string PgTableCatalog::EqualsParameter(const std::string& quoted_column,
                                            std::optional<DatePrecision> precision) const {
  if (!precision) {
    return quoted_column + " = ?";
  }
  return DateText(quoted_column, *precision) + " = " + DateText("?", *precision);
}

std::optional<std::vector<Variant>> PgTableCatalog::InsertedRowKey(
    const std::string& table, const std::vector<std::string>& key_columns) {
  if (key_columns.size() != 1) {
    return std::nullopt;  // a sequence fills one column
  }
  // The value the INSERT just drew from the key's sequence (serial or identity).
  const std::string& key = key_columns[0];
  const std::string column = TextLiteral(UnquoteName(key));
  const std::string sql = "SELECT " + key + " FROM " + table + " WHERE " + key +
                          " = currval(pg_catalog.pg_get_serial_sequence(" + TableOid(table) +
                          "::regclass::text, " + column + "))";
  return FirstRowOrNothing(driver_, sql, 1);
}

}  // namespace varnel::db::internal
