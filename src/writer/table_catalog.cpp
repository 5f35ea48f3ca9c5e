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
  try {
    // A function only SQLite has: it answers, so SQLite's catalog applies.
    catalog.sqlite_ = !FirstColumn(connection, "SELECT sqlite_version()").empty();
  } catch (const std::exception&) {
    catalog.sqlite_ = false;
  }
  return catalog;
}

std::vector<std::string> TableCatalog::PrimaryKey(const std::shared_ptr<db::Connection>& connection,
                                                  const std::string& table) const {
  std::vector<std::string> columns;
  if (!sqlite_) {
    return columns;
  }
  const std::string sql = "SELECT name FROM pragma_table_info('" +
                          MdlQuery::QuoteText(Variant(BareName(table))) +
                          "') WHERE pk > 0 ORDER BY pk";
  for (const Variant& name : FirstColumn(connection, sql)) {
    columns.push_back(name.ToString());
  }
  return columns;
}

std::string TableCatalog::EqualsParameter(const std::string& quoted_column,
                                          std::optional<Enum_DateType> date_type) const {
  if (date_type && sqlite_) {
    const std::string pattern = SqlitePrecision(*date_type);
    return "strftime('" + pattern + "', " + quoted_column + ") = strftime('" + pattern + "', ?)";
  }
  return quoted_column + " = ?";
}

std::optional<std::vector<Variant>> TableCatalog::InsertedRowKey(
    const std::shared_ptr<db::Connection>& connection, const std::string& table,
    const std::vector<std::string>& key_columns) const {
  if (!sqlite_ || key_columns.empty()) {
    return std::nullopt;
  }
  std::string sql = "SELECT ";
  for (size_t i = 0; i < key_columns.size(); ++i) {
    sql += (i == 0 ? "" : ", ") + key_columns[i];
  }
  sql += " FROM " + table + " WHERE rowid = last_insert_rowid()";
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
    return std::nullopt;  // a table without rowid: the key stays as it was
  }
}

std::string QuoteColumn(const std::string& name) { return "[" + name + "]"; }

}  // namespace varnel::internal
