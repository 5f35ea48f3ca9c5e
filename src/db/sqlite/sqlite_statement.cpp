#include "db/sqlite/sqlite_statement.h"

#include <cassert>

#include "db/db_errors.h"

namespace varnel::db::internal {
bool OnlyBlanksLeft(const char* tail) {
  for (; tail != nullptr && *tail != '\0'; ++tail) {
    if (*tail != ';' && *tail != ' ' && *tail != '\t' && *tail != '\r' && *tail != '\n') {
      return false;
    }
  }
  return true;
}

namespace {

// True when Tail holds a statement (and not just comments).
bool HoldsStatement(sqlite3* db, const char* tail) {
  if (OnlyBlanksLeft(tail)) {
    return false;
  }
  sqlite3_stmt* next = nullptr;
  const int rc = sqlite3_prepare_v2(db, tail, -1, &next, nullptr);
  sqlite3_finalize(next);
  return rc != SQLITE_OK || next != nullptr;
}

}  // namespace

SqliteStatement::SqliteStatement(SqliteHandle handle, std::string_view sql,
                                 const std::vector<Variant>& params)
    : handle_(std::move(handle)), sql_(sql) {
  const char* tail = nullptr;
  const int rc = sqlite3_prepare_v2(handle_.get(), sql_.c_str(), static_cast<int>(sql_.size()),
                                    &statement_, &tail);
  if (rc != SQLITE_OK) {
    RaiseSqliteError(handle_.get(), rc, DescribeSql("preparing", sql_));
  }
  if (statement_ == nullptr) {
    RaiseProviderError("The query text holds no statement: '" + sql_ + "'.");
  }
  if (HoldsStatement(handle_.get(), tail)) {
    sqlite3_finalize(statement_);
    statement_ = nullptr;
    RaiseProviderError("A recordset is opened on one statement only; found more in '" + sql_ +
                       "'.");
  }
  Bind(params);
  DescribeColumns();
}

void SqliteStatement::Bind(const std::vector<Variant>& params) {
  if (static_cast<size_t>(sqlite3_bind_parameter_count(statement_)) != params.size()) {
    sqlite3_finalize(statement_);
    statement_ = nullptr;
    RaiseProviderError(std::to_string(params.size()) + " parameters were given for " +
                       DescribeSql("preparing", sql_));
  }
  for (size_t i = 0; i < params.size(); ++i) {
    const int rc = BindVariant(statement_, static_cast<int>(i + 1), params[i]);
    if (rc != SQLITE_OK) {
      const DbError error =
          SqliteError(handle_.get(), rc, DescribeSql("binding the parameters of", sql_));
      sqlite3_finalize(statement_);
      statement_ = nullptr;
      throw error;
    }
  }
}

SqliteStatement::~SqliteStatement() { sqlite3_finalize(statement_); }

void SqliteStatement::DescribeColumns() {
  const int count = sqlite3_column_count(statement_);
  columns_.reserve(count);
  kinds_.reserve(count);
  for (int i = 0; i < count; ++i) {
    const DeclaredType type = ClassifyDeclaredType(sqlite3_column_decltype(statement_, i));
    const char* name = sqlite3_column_name(statement_, i);
    columns_.push_back(ColumnInfo{name != nullptr ? name : "", type.defined_size});
    kinds_.push_back(type.kind);
  }
}

// A row was read by the last Step (sqlite reports no columns otherwise).
bool SqliteStatement::OnRow() const { return sqlite3_data_count(statement_) > 0; }

void SqliteStatement::Rewind() {
  // The result repeats the last Step's failure, which was reported then.
  sqlite3_reset(statement_);
}

bool SqliteStatement::Step() {
  const int rc = sqlite3_step(statement_);
  if (rc == SQLITE_ROW) {
    return true;
  }
  if (rc == SQLITE_DONE) {
    sqlite3_reset(statement_);  // ends the read, so no lock stays behind
    return false;
  }
  DbError error = SqliteError(handle_.get(), rc, DescribeSql("reading the rows of", sql_));
  sqlite3_reset(statement_);
  throw error;
}

Variant SqliteStatement::Value(int32_t column) const {
  assert(OnRow() && column >= 0 && static_cast<size_t>(column) < kinds_.size());
  return ReadCell(statement_, column, kinds_[column]);
}

void SqliteStatement::AppendRow(const int32_t* columns, std::vector<Variant>* const* outputs,
                                std::size_t count) const {
  assert(OnRow());
  for (std::size_t i = 0; i < count; ++i) {
    const int column = columns[i];
    assert(column >= 0 && static_cast<size_t>(column) < kinds_.size() && outputs[i] != nullptr);
    outputs[i]->push_back(ReadCell(statement_, column, kinds_[column]));
  }
}

}  // namespace varnel::db::internal
