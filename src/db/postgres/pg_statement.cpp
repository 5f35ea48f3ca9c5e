#include "db/postgres/pg_statement.h"

#include <cassert>

#include "db/db_errors.h"
#include "db/postgres/pg_error.h"

namespace varnel::db::internal {

PgStatement::PgStatement(std::shared_ptr<PgSession> session, std::string sql,
                         std::vector<std::optional<std::string>> params)
    : session_(std::move(session)), sql_(std::move(sql)), params_(std::move(params)) {
  const PgResult described = session_->Describe(sql_, DescribeSql("preparing", sql_));
  const int count = PQnfields(described.get());
  columns_.reserve(count);
  kinds_.reserve(count);
  for (int i = 0; i < count; ++i) {
    const PgColumnType type =
        ClassifyPgType(PQftype(described.get(), i), PQfmod(described.get(), i));
    columns_.push_back(ColumnInfo{PQfname(described.get(), i), type.defined_size});
    kinds_.push_back(type.kind);
  }
}

void PgStatement::Rewind() {
  rows_.reset();
  row_ = -1;
}

bool PgStatement::Step() {
  if (rows_ == nullptr) {
    rows_ = session_->Run(sql_, params_, DescribeSql("reading the rows of", sql_));
    row_ = -1;
    if (static_cast<size_t>(PQnfields(rows_.get())) != columns_.size()) {
      Rewind();
      RaiseProviderError("The columns of the query changed after it was opened: " +
                         DescribeSql("reading the rows of", sql_) + ".");
    }
  }
  if (++row_ < PQntuples(rows_.get())) {
    return true;
  }
  Rewind();  // the rows are let go of once read
  return false;
}

Variant PgStatement::Cell(int column) const {
  assert(rows_ != nullptr && row_ >= 0 && row_ < PQntuples(rows_.get()));
  assert(column >= 0 && static_cast<size_t>(column) < kinds_.size());
  if (PQgetisnull(rows_.get(), row_, column)) {
    return Variant::Null();
  }
  const std::string_view text(PQgetvalue(rows_.get(), row_, column),
                              PQgetlength(rows_.get(), row_, column));
  return ReadPgCell(text, kinds_[column]);
}

Variant PgStatement::Value(int32_t column) const { return Cell(column); }

void PgStatement::AppendRow(const int32_t* columns, std::vector<Variant>* const* outputs,
                            std::size_t count) const {
  if (row_ == 0) {  // every row has arrived: room for all of them, once
    const auto rows = static_cast<std::size_t>(PQntuples(rows_.get()));
    for (std::size_t i = 0; i < count; ++i) {
      outputs[i]->reserve(outputs[i]->size() + rows);
    }
  }
  for (std::size_t i = 0; i < count; ++i) {
    assert(outputs[i] != nullptr);
    outputs[i]->push_back(Cell(columns[i]));
  }
}

}  // namespace varnel::db::internal
