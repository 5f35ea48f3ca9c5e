#include "writer/table_catalog.h"

#include "varnel/modules.h"

namespace varnel::internal {
namespace {

// Every row's first column of a query, read through a static recordset.
std::vector<Variant> FirstColumn(const std::shared_ptr<db::Connection>& connection,
                                 const std::string& sql) {
  db::Recordset recordset;
  recordset.Open(sql, connection);
  std::vector<Variant> values;
  while (!recordset.Eof()) {
    values.push_back(recordset.Fields().Item(0).Value());
    recordset.MoveNext();
  }
  recordset.Close();
  return values;
}

// A table name as the catalog functions want it: without [..], "..", `..`.
std::string BareName(const std::string& table) {
  if (table.size() >= 2) {
    const char first = table.front();
    const char last = table.back();
    if ((first == '[' && last == ']') || (first == '"' && last == '"') ||
        (first == '`' && last == '`')) {
      return table.substr(1, table.size() - 2);
    }
  }
  return table;
}

// The table called Table as an unquoted or bracketed name finds it: the one
// of that exact name, else the one its lower-case form names (PostgreSQL).
std::string PostgresTableOid(const std::string& table) {
  const std::string name = MdlQuery::QuoteText(Variant(BareName(table)));
  return "(SELECT c.oid FROM pg_catalog.pg_class c WHERE pg_catalog.pg_table_is_visible(c.oid)"
         " AND c.relname IN ('" +
         name + "', lower('" + name + "')) ORDER BY c.relname = '" + name + "' DESC LIMIT 1)";
}

// The to_char pattern that keeps what a field of that DateType holds.
std::string PostgresPrecision(Enum_DateType date_type) {
  switch (date_type) {
    case D_YMDHN:
      return "YYYY-MM-DD HH24:MI";
    case D_YMD:
      return "YYYY-MM-DD";
    case D_HNS:
      return "HH24:MI:SS";
    case D_HN:
      return "HH24:MI";
    default:
      return "YYYY-MM-DD HH24:MI:SS";
  }
}

// A value as PostgreSQL's to_char reads it: a time of day on a fixed day, so
// that time columns and timestamps compare alike.
std::string PostgresDateText(const std::string& value, Enum_DateType date_type) {
  const std::string pattern = PostgresPrecision(date_type);
  if (date_type == D_HNS || date_type == D_HN) {
    return "to_char(DATE '2000-01-01' + CAST(" + value + " AS time), '" + pattern + "')";
  }
  return "to_char(CAST(" + value + " AS timestamp), '" + pattern + "')";
}

// The strftime pattern that keeps what a field of that DateType holds.
std::string SqlitePrecision(Enum_DateType date_type) {
  switch (date_type) {
    case D_YMDHN:
      return "%Y-%m-%d %H:%M";
    case D_YMD:
      return "%Y-%m-%d";
    case D_HNS:
      return "%H:%M:%S";
    case D_HN:
      return "%H:%M";
    default:
      return "%Y-%m-%d %H:%M:%S";
  }
}

}  // namespace

TableCatalog TableCatalog::For(const std::shared_ptr<db::Connection>& connection) {
  TableCatalog catalog;
  // A function only that database has: when it answers, its catalog applies.
  const std::pair<const char*, Kind> probes[] = {{"SELECT sqlite_version()", Kind::kSqlite},
                                                 {"SELECT pg_backend_pid()", Kind::kPostgres}};
  for (const auto& [probe, kind] : probes) {
    try {
      if (!FirstColumn(connection, probe).empty()) {
        catalog.kind_ = kind;
        break;
      }
    } catch (const std::exception&) {
      // Not this one.
    }
  }
  return catalog;
}

std::vector<std::string> TableCatalog::PrimaryKey(const std::shared_ptr<db::Connection>& connection,
                                                  const std::string& table) const {
  std::vector<std::string> columns;
  std::string sql;
  if (kind_ == Kind::kSqlite) {
    sql = "SELECT name FROM pragma_table_info('" + MdlQuery::QuoteText(Variant(BareName(table))) +
          "') WHERE pk > 0 ORDER BY pk";
  } else if (kind_ == Kind::kPostgres) {
    sql =
        "SELECT a.attname FROM pg_catalog.pg_index i JOIN pg_catalog.pg_attribute a"
        " ON a.attrelid = i.indrelid AND a.attnum = ANY (i.indkey)"
        " WHERE i.indisprimary AND i.indrelid = " +
        PostgresTableOid(table) + " ORDER BY array_position(i.indkey::int2[], a.attnum)";
  } else {
    return columns;
  }
  for (const Variant& name : FirstColumn(connection, sql)) {
    columns.push_back(name.ToString());
  }
  return columns;
}

std::string TableCatalog::EqualsParameter(const std::string& quoted_column,
                                          std::optional<Enum_DateType> date_type) const {
  if (date_type && kind_ == Kind::kPostgres) {
    return PostgresDateText(quoted_column, *date_type) + " = " + PostgresDateText("?", *date_type);
  }
  if (date_type && kind_ == Kind::kSqlite) {
    const std::string pattern = SqlitePrecision(*date_type);
    return "strftime('" + pattern + "', " + quoted_column + ") = strftime('" + pattern + "', ?)";
  }
  return quoted_column + " = ?";
}

std::optional<std::vector<Variant>> TableCatalog::InsertedRowKey(
    const std::shared_ptr<db::Connection>& connection, const std::string& table,
    const std::vector<std::string>& key_columns) const {
  if (key_columns.empty() || kind_ == Kind::kPlain ||
      (kind_ == Kind::kPostgres && key_columns.size() != 1)) {
    return std::nullopt;
  }
  std::string sql = "SELECT ";
  for (size_t i = 0; i < key_columns.size(); ++i) {
    sql += (i == 0 ? "" : ", ") + key_columns[i];
  }
  if (kind_ == Kind::kSqlite) {
    sql += " FROM " + table + " WHERE rowid = last_insert_rowid()";
  } else {
    // The value the INSERT just drew from the key's sequence (serial or identity).
    const std::string column = MdlQuery::QuoteText(Variant(BareName(key_columns[0])));
    sql += " FROM " + table + " WHERE " + key_columns[0] +
           " = currval(pg_catalog.pg_get_serial_sequence(" + PostgresTableOid(table) +
           "::regclass::text, '" + column + "'))";
  }
  try {
    db::Recordset recordset;
    recordset.Open(sql, connection);
    if (recordset.Eof()) {
      return std::nullopt;
    }
    std::vector<Variant> values;
    for (size_t i = 0; i < key_columns.size(); ++i) {
      values.push_back(recordset.Fields().Item(static_cast<int32_t>(i)).Value());
    }
    return values;
  } catch (const std::exception&) {
    return std::nullopt;  // no rowid, no sequence: the key stays as it was
  }
}

std::string QuoteColumn(const std::string& name) { return "[" + name + "]"; }

}  // namespace varnel::internal
