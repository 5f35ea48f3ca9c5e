#include "writer/row_statements.h"

#include <strings.h>

#include <algorithm>
#include <cassert>

#include "db/sql_quote.h"

namespace varnel::internal {
namespace {

bool SameColumn(const ColumnRef& a, const ColumnRef& b) { return a.field == b.field; }

// The value as Column stores it: a date in a day-only column as the day alone.
Variant StoredForm(const ColumnRef& column, const Variant& value) {
  if (column.day_only && value.VarType() == vbDate) {
    return Variant(Format(value, "yyyy-mm-dd"));
  }
  return value;
}

// The columns that find a row: the keys, then every written column that is not
// a key, so that a row changed by someone else since it was read matches nothing.
std::vector<ColumnRef> IdentifyingColumns(const WriteLayout& layout) {
  std::vector<ColumnRef> columns = layout.keys;
  if (layout.by_key_alone && !columns.empty()) {
    return columns;
  }
  for (const ColumnRef& column : layout.written) {
    bool is_key = false;
    for (const ColumnRef& key : layout.keys) {
      is_key = is_key || SameColumn(key, column);
    }
    if (!is_key) {
      columns.push_back(column);
    }
  }
  return columns;
}

// " WHERE a = ? AND b IS NULL ...", appending the bound values to params.
std::string WhereClause(const WriteLayout& layout, const db::internal::TableCatalog& catalog,
                        const std::vector<Variant>& before, std::vector<Variant>& params) {
  std::string where;
  for (const ColumnRef& column : IdentifyingColumns(layout)) {
    where += where.empty() ? " WHERE " : " AND ";
    const std::string quoted = QuoteColumn(column.name);
    const Variant& value = before[column.field];
    if (value.IsBlank()) {
      where += quoted + " IS NULL";
    } else {
      where += catalog.EqualsParameter(quoted, column.date_precision);
      params.push_back(value);
    }
  }
  return where;
}

}  // namespace

std::string QuoteColumn(const std::string& name) { return db::internal::BracketName(name); }

void MarkDayOnlyColumns(WriteLayout& layout, db::internal::TableCatalog& catalog) {
  const bool writes_dates = std::any_of(layout.written.begin(), layout.written.end(),
                                        [](const ColumnRef& c) { return c.date_precision; });
  if (!writes_dates) {
    return;  // no catalog read for tables written without dates
  }
  const std::vector<std::string> days = db::internal::DayOnlyColumns(catalog, layout.table);
  for (ColumnRef& column : layout.written) {
    column.day_only = std::any_of(days.begin(), days.end(), [&](const std::string& day) {
      return strcasecmp(day.c_str(), column.name.c_str()) == 0;
    });
  }
}

Statement InsertStatement(const WriteLayout& layout, const std::vector<Variant>& after) {
  Statement statement;
  std::string columns;
  std::string marks;
  for (const ColumnRef& column : layout.written) {
    const Variant& value = after[column.field];
    if (value.IsBlank()) {
      continue;
    }
    columns += (columns.empty() ? "" : ", ") + QuoteColumn(column.name);
    marks += marks.empty() ? "?" : ", ?";
    statement.params.push_back(StoredForm(column, value));
  }
  statement.sql =
      "INSERT INTO " + layout.table +
      (columns.empty() ? " DEFAULT VALUES" : " (" + columns + ") VALUES (" + marks + ")");
  return statement;
}

std::optional<Statement> UpdateStatement(const WriteLayout& layout,
                                         const db::internal::TableCatalog& catalog,
                                         const std::vector<Variant>& before,
                                         const std::vector<Variant>& after) {
  Statement statement;
  std::string assignments;
  for (const ColumnRef& column : layout.written) {
    const Variant& old_value = before[column.field];
    const Variant& new_value = after[column.field];
    if (old_value.IsBlank() ? new_value.IsBlank() : ValuesEqual(old_value, new_value)) {
      continue;
    }
    assignments += (assignments.empty() ? "" : ", ") + QuoteColumn(column.name) + " = ?";
    statement.params.push_back(new_value.IsBlank() ? Variant::Null()
                                                   : StoredForm(column, new_value));
  }
  if (assignments.empty()) {
    return std::nullopt;
  }
  statement.sql = "UPDATE " + layout.table + " SET " + assignments +
                  WhereClause(layout, catalog, before, statement.params);
  return statement;
}

Statement DeleteStatement(const WriteLayout& layout, const db::internal::TableCatalog& catalog,
                          const std::vector<Variant>& before) {
  Statement statement;
  statement.sql =
      "DELETE FROM " + layout.table + WhereClause(layout, catalog, before, statement.params);
  return statement;
}

Statement SelectByKey(const WriteLayout& layout, const db::internal::TableCatalog& catalog,
                      const std::vector<Variant>& values) {
  assert(!layout.keys.empty());
  WriteLayout by_key = layout;
  by_key.by_key_alone = true;
  Statement statement;
  std::string columns;
  for (const ColumnRef& column : layout.written) {
    columns += (columns.empty() ? "" : ", ") + QuoteColumn(column.name);
  }
  statement.sql = "SELECT " + columns + " FROM " + layout.table +
                  WhereClause(by_key, catalog, values, statement.params);
  return statement;
}

Statement CountMatching(const WriteLayout& layout, const db::internal::TableCatalog& catalog,
                        const std::vector<Variant>& values) {
  Statement statement;
  statement.sql = "SELECT COUNT(*) FROM " + layout.table +
                  WhereClause(layout, catalog, values, statement.params);
  return statement;
}

}  // namespace varnel::internal
