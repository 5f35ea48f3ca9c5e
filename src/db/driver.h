// The narrow interface between the database access layer and one database
// engine. Connection and Recordset talk only to a Driver and its Statements;
// every engine lives in its own folder (src/db/sqlite/, ...) and is chosen in
// one place, src/db/providers.cpp, by the connection string's Provider key.
//
//   std::unique_ptr<Driver> driver = OpenDriver(ConnectionSettings::Parse(text));
//   std::unique_ptr<Statement> st = driver->Prepare("SELECT Id, Name FROM T");
//   while (st->Step()) { Variant id = st->Value(0); }
//
// Every failure is raised as VbError; each driver converts its engine's errors
// in one function of its own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "db/dialect.h"
#include "db/recordset_access.h"  // ColumnInfo
#include "db/table_catalog.h"
#include "varnel/variant.h"

namespace varnel::db::internal {

// One prepared query: its columns are known before any row is read, and its
// rows are read forward, as Variants typed as the column's declared type says.
class Statement {
 public:
  virtual ~Statement() = default;

  // The result columns, in order.
  virtual const std::vector<ColumnInfo>& Columns() const = 0;
  // Goes back before the first row; the next Step reads the first row again.
  virtual void Rewind() = 0;
  // Moves to the next row; false after the last one (the statement then holds
  // no lock on the database).
  [[nodiscard]] virtual bool Step() = 0;
  // The value of a column of the current row. REQUIRES: the last Step was true
  // and 0 <= column < Columns().size().
  virtual Variant Value(int32_t column) const = 0;
  // Appends the current row's value of column columns[i] to *outputs[i] for
  // i < count: the bulk read, one call per row. REQUIRES: the last Step was
  // true, each columns[i] is a column (as for Value) and each outputs[i] is set.
  virtual void AppendRow(const int32_t* columns, std::vector<Variant>* const* outputs,
                         std::size_t count) const = 0;
};

// One open database connection.
class Driver {
 public:
  virtual ~Driver() = default;

  // Runs the statements of Sql with its '?' placeholders bound, in order, to
  // Params; returns the number of rows inserted, changed or deleted.
  virtual int64_t Execute(std::string_view sql, const std::vector<Variant>& params) = 0;
  // Prepares one query without reading any row.
  virtual std::unique_ptr<Statement> Prepare(std::string_view sql) = 0;
  // Prepares one query with its '?' placeholders bound, in order, to Params
  // (a row looked up by its key).
  virtual std::unique_ptr<Statement> PrepareBound(std::string_view sql,
                                                  const std::vector<Variant>& params) = 0;

  // REQUIRES !InTransaction() (transactions do not nest).
  virtual void BeginTransaction() = 0;
  // REQUIRES InTransaction().
  virtual void CommitTransaction() = 0;
  // REQUIRES InTransaction().
  virtual void RollbackTransaction() = 0;
  virtual bool InTransaction() const = 0;

  // False when text values cannot hold a NUL character (it would cut them).
  virtual bool TextHoldsNul() const { return true; }

  // What SQL composed by the library must respect on this database.
  virtual Dialect GetDialect() const = 0;

  // What writing rows asks of this database (primary keys, date comparison,
  // generated keys), answered by the driver's own catalog; owned by the driver.
  virtual TableCatalog& Catalog() = 0;

  // The translation of the library's SQL for this database; nullptr when the
  // database reads it as it is.
  virtual SqlTranslator* Translator() { return nullptr; }

  // The text to send for Sql as the library and its clients write it: the one
  // place where a database's translation is applied. Connection::Execute and
  // Recordset::Open send through it.
  std::string DatabaseSql(std::string_view sql) {
    SqlTranslator* translator = Translator();
    return translator != nullptr ? translator->ToDatabaseSql(sql) : std::string(sql);
  }
};

}  // namespace varnel::db::internal
