// Recordset: the fields of the current row, GetRows and the filter.
#include "db/db_errors.h"
#include "db/filter_match.h"
#include "db/filter_parser.h"
#include "db/recordset_data.h"
#include "varnel/db.h"

namespace varnel::db {
namespace {

// The column of a Field; a Field made with an index out of range names none.
const internal::ColumnInfo& ColumnOf(const Recordset& owner, int32_t index) {
  const std::vector<internal::ColumnInfo>& columns = internal::RecordsetAccess::Columns(owner);
  if (index < 0 || static_cast<size_t>(index) >= columns.size()) {
    internal::RaiseDbError(internal::kErrItemNotFound, "(Field " + std::to_string(index) + ".)");
  }
  return columns[index];
}

}  // namespace

int32_t Fields::Count() const {
  return static_cast<int32_t>(internal::RecordsetAccess::Columns(*owner_).size());
}

Field Fields::Item(int32_t Index) const {
  if (Index < 0 || Index >= Count()) {
    internal::RaiseDbError(internal::kErrItemNotFound, "(Field " + std::to_string(Index) + ".)");
  }
  return Field(owner_, Index);
}

Field Fields::Item(const std::string& Name) const {
  return Field(owner_, owner_->d_->ColumnIndex(Name));
}

const std::string& Field::Name() const { return ColumnOf(*owner_, index_).name; }

int32_t Field::DefinedSize() const { return ColumnOf(*owner_, index_).defined_size; }

Variant Field::Value() const {
  ColumnOf(*owner_, index_);
  internal::RecordsetData& data = *owner_->d_;
  data.EnsureLoaded();
  return data.values[index_][data.CurrentRow()];
}

std::vector<std::vector<Variant>> Recordset::GetRows(int32_t Rows,
                                                     const std::vector<std::string>& FieldNames) {
  internal::RecordsetData& data = *d_;
  data.EnsureLoaded();
  if (Rows < -1) {
    internal::RaiseDbError(internal::kErrBadArguments, "(GetRows takes -1 or a row count.)");
  }
  std::vector<int32_t> columns;
  if (FieldNames.empty()) {
    for (int32_t i = 0; i < static_cast<int32_t>(data.values.size()); ++i) {
      columns.push_back(i);
    }
  }
  for (const std::string& name : FieldNames) {
    columns.push_back(data.ColumnIndex(name));
  }
  const int32_t first = std::max(data.position, 0);
  const int32_t left = std::max(data.Count() - first, 0);
  const int32_t taken = Rows == -1 ? left : std::min(Rows, left);
  std::vector<std::vector<Variant>> table(columns.size());
  for (size_t c = 0; c < columns.size(); ++c) {
    const std::vector<Variant>& source = data.values[columns[c]];
    table[c].reserve(taken);
    for (int32_t at = first; at < first + taken; ++at) {
      table[c].push_back(source[data.RowAt(at)]);
    }
  }
  data.position = first + taken;
  return table;
}

const std::string& Recordset::Filter() const { return d_->filter; }

void Recordset::Filter(const std::string& Criteria) {
  internal::RecordsetData& data = *d_;
  data.EnsureLoaded();
  if (Criteria.find_first_not_of(" \t\r\n") == std::string::npos) {
    data.filtered = false;
    data.visible.clear();
    data.filter.clear();
    data.position = 0;
    return;
  }
  internal::FilterContext context(Criteria);
  std::optional<internal::FilterExpr> expr = internal::ParseFilter(Criteria, context);
  std::optional<internal::CompiledFilter> compiled;
  std::vector<int32_t> rows;
  if (expr) {
    compiled = internal::CompiledFilter::Compile(*expr, data.statement->Columns(), context);
  }
  if (compiled) {
    rows = compiled->MatchingRows(data.values, data.row_count, context);
  }
  if (context.failed()) {
    internal::RaiseDbError(internal::kErrBadArguments,
                           "(The filter cannot be applied: " + context.Describe() + ".)");
  }
  data.visible = std::move(rows);
  data.filtered = true;
  data.filter = Criteria;
  data.position = 0;
}

}  // namespace varnel::db
