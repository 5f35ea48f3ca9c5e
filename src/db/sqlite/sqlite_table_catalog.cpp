#include "db/sqlite/sqlite_table_catalog.h"

#include "varnel/modules.h"

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

}  // namespace

std::vector<std::string> SqliteTableCatalog::PrimaryKey(const std::string& table) {
  return FirstColumnTexts(driver_, "SELECT name FROM pragma_table_info('" +
                                       MdlQuery::QuoteText(Variant(BareName(table))) +
                                       "') WHERE pk > 0 ORDER BY pk");
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
