#include "db/table_catalog.h"

#include <memory>

#include "db/driver.h"

namespace varnel::db::internal {

std::vector<std::string> DayOnlyColumns(TableCatalog& catalog, const std::string& table) {
  std::vector<std::string> names;
  for (const TableColumn& column : catalog.Columns(table)) {
    if (column.kind == ColumnKind::kDate) {
      names.push_back(column.name);
    }
  }
  return names;
}

std::vector<std::string> FirstColumnTexts(Driver& driver, std::string_view sql) {
  const std::unique_ptr<Statement> statement = driver.Prepare(driver.DatabaseSql(sql));
  std::vector<std::string> texts;
  while (statement->Step()) {
    texts.push_back(statement->Value(0).ToString());
  }
  return texts;
}

std::optional<std::vector<Variant>> FirstRowOrNothing(Driver& driver, std::string_view sql,
                                                      size_t count) {
  try {
    const std::unique_ptr<Statement> statement = driver.Prepare(driver.DatabaseSql(sql));
    if (!statement->Step()) {
      return std::nullopt;
    }
    std::vector<Variant> values;
    for (size_t i = 0; i < count; ++i) {
      values.push_back(statement->Value(static_cast<int32_t>(i)));
    }
    statement->Rewind();  // the row is read: let the database go
    return values;
  } catch (const std::exception&) {
    return std::nullopt;  // e.g. no rowid, no sequence: the database cannot tell
  }
}

}  // namespace varnel::db::internal
