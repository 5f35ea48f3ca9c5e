// The SQL of one row change: INSERT, UPDATE or DELETE text with its values
// bound as parameters, never pasted into the text.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "db/table_catalog.h"
#include "varnel/variant.h"

namespace varnel::internal {

struct Statement {
  std::string sql;
  std::vector<Variant> params;
};

struct ColumnRef {
  size_t field = 0;  // index of the field in the recordset's collection
  std::string name;  // the column's name, as the field names it
  // A date field compares at the precision its DateType loads (a D_YMD field
  // holds the day alone, whatever time the column holds).
  std::optional<db::internal::DatePrecision> date_precision;
  // The column holds a day without a time (DATE): a date is written 'yyyy-mm-dd'.
  bool day_only = false;
};

// Where a recordset's rows go: the table, the columns written (fields with
// IsData and SaveToDB) and the key columns that identify a row (empty: the
// written columns alone identify it).
struct WriteLayout {
  std::string table;
  std::vector<ColumnRef> written;
  std::vector<ColumnRef> keys;
  // A row is found by its keys alone, whatever its other columns hold now
  // (writing over someone else's change). Needs keys.
  bool by_key_alone = false;
};

// "[" name "]" (a "]" in it doubled): how the library writes a column name.
std::string QuoteColumn(const std::string& name);

// Marks the written columns that the database declares as days without a time,
// so that new values keep the shape of the ones stored.
void MarkDayOnlyColumns(WriteLayout& layout, db::internal::TableCatalog& catalog);

// INSERT of the non-blank written values of `after`; blank ones are left to
// the database (its defaults, its generated keys). No values: DEFAULT VALUES.
Statement InsertStatement(const WriteLayout& layout, const std::vector<Variant>& after);

// UPDATE of the written columns whose value changed from `before` to `after`,
// for the row that still holds `before`; nullopt when nothing changed.
std::optional<Statement> UpdateStatement(const WriteLayout& layout,
                                         const db::internal::TableCatalog& catalog,
                                         const std::vector<Variant>& before,
                                         const std::vector<Variant>& after);

// DELETE of the row that still holds `before`.
Statement DeleteStatement(const WriteLayout& layout, const db::internal::TableCatalog& catalog,
                          const std::vector<Variant>& before);

// SELECT of the written columns of the row whose keys hold the keys of
// `values`. REQUIRES: layout.keys is not empty.
Statement SelectByKey(const WriteLayout& layout, const db::internal::TableCatalog& catalog,
                      const std::vector<Variant>& values);

// SELECT COUNT(*) of the rows that hold `values`, found as an UPDATE finds them.
Statement CountMatching(const WriteLayout& layout, const db::internal::TableCatalog& catalog,
                        const std::vector<Variant>& values);

}  // namespace varnel::internal
