// Whole-row operations on the store. Rows are inserted and erased column by
// column (one shift per field and per mark array), so a row at the top of a
// large store costs one memmove of each column, not a copy of every row.
#include "recordset/row_store.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <type_traits>
#include <utility>

#include "fields/field_access.h"
#include "fields/field_values.h"
#include "recordset/column_total.h"
#include "recordset/field_lookup.h"

namespace varnel::internal {
namespace {

size_t ElementCount(int32_t rows) { return static_cast<size_t>(rows) + 1; }

// A Variant is relocatable by its bytes: it holds numbers, inline text or a
// pointer to text on the heap, never a pointer into itself, and nothing
// refers to its address. So a column shifts by one memmove instead of a
// move-assignment per element. Whoever gives Variant a member that points
// into the Variant (or registers its address) must drop these two shifts.
static_assert(sizeof(Variant) == 16 && std::is_nothrow_move_constructible_v<Variant>,
              "the row shifts rely on a 16-byte Variant relocatable by its bytes");

// Erases values[at] by shifting the elements after it down one place.
void EraseShifting(std::vector<Variant>& values, size_t at) {
  values[at].~Variant();
  Variant* first = values.data() + at;
  std::memmove(static_cast<void*>(first), static_cast<const void*>(first + 1),
               (values.size() - at - 1) * sizeof(Variant));
  new (values.data() + values.size() - 1) Variant();  // the last bytes now live one place up
  values.pop_back();
}

// Inserts an Empty value at `at` by shifting the elements from there up one place.
void InsertEmptyShifting(std::vector<Variant>& values, size_t at) {
  values.emplace_back();  // Empty: its bytes own nothing and may be overwritten
  Variant* first = values.data() + at;
  std::memmove(static_cast<void*>(first + 1), static_cast<const void*>(first),
               (values.size() - at - 1) * sizeof(Variant));
  new (first) Variant();  // the old bytes now live one place up
}

// Every value array has Rows + 1 elements; one that fell short (a field
// added while no row was loaded) is brought to length, new elements Empty.
std::vector<Variant>& RowValuesOf(ClsFields& field, int32_t rows) {
  std::vector<Variant>& values = FieldAccess::Values(field);
  if (values.size() < ElementCount(rows)) {
    values.resize(ElementCount(rows));
  }
  return values;
}

}  // namespace

void ResizeRows(RecordsetState& rs, int32_t rows) {
  if (rows < 0) {
    RaiseError(9);
  }
  const bool drops_rows = rows < rs.Rows();
  const size_t marks_before = rs.select_marks.size();
  rs.select_marks.resize(ElementCount(rows), 0);
  rs.edit_marks.resize(ElementCount(rows), 0);
  for (const auto& field : rs.fields) {
    ResizeValues(*field, rows);
  }
  if (drops_rows) {
    RecomputeAllSums(rs);  // the totals of the rows that remain
  } else {
    FollowRowCount(rs, marks_before);  // new rows are blank and unselected
  }
  const int32_t count = rs.Rows();
  if (count == 0) {
    rs.current_row = 0;
  } else if (rs.current_row == 0 || count < 1) {
    rs.current_row = 1;
  } else if (rs.current_row > count) {
    rs.current_row = count;
  }
}

void SwapRows(RecordsetState& rs, RowStorage& storage) {
  assert(storage.values.empty() || storage.values.size() == rs.fields.size());
  storage.values.resize(rs.fields.size());
  storage.sums.resize(rs.fields.size());
  for (size_t i = 0; i < rs.fields.size(); ++i) {
    std::swap(FieldAccess::Values(*rs.fields[i]), storage.values[i]);
    std::swap(rs.fields[i]->SumValue, storage.sums[i]);
  }
  std::swap(rs.select_marks, storage.select_marks);
  std::swap(rs.edit_marks, storage.edit_marks);
  std::swap(rs.column_totals, storage.column_totals);
}

void InsertRow(RecordsetState& rs, int32_t at) {
  const int32_t rows = rs.Rows();
  if (at < 1 || at > rows + 1) {
    RaiseError(9);
  }
  const size_t marks_before = rs.select_marks.size();
  if (rs.select_marks.empty()) {
    rs.select_marks.assign(1, 0);
    rs.edit_marks.assign(1, 0);
  }
  rs.select_marks.insert(rs.select_marks.begin() + at, 0);
  rs.edit_marks.insert(rs.edit_marks.begin() + at, 0);
  for (const auto& field : rs.fields) {
    InsertEmptyShifting(RowValuesOf(*field, rows), static_cast<size_t>(at));
  }
  FollowRowCount(rs, marks_before);
}

void EraseRow(RecordsetState& rs, int32_t at) {
  if (at < 1 || at > rs.Rows()) {
    RaiseError(9);
  }
  RowLeavesTotals(rs, at);
  const size_t marks_before = rs.select_marks.size();
  rs.select_marks.erase(rs.select_marks.begin() + at);
  rs.edit_marks.erase(rs.edit_marks.begin() + at);
  for (const auto& field : rs.fields) {
    std::vector<Variant>& values = FieldAccess::Values(*field);
    if (static_cast<size_t>(at) < values.size()) {
      EraseShifting(values, static_cast<size_t>(at));
    }
  }
  FollowRowCount(rs, marks_before);
}

std::vector<Variant> RowValues(const RecordsetState& rs, int32_t row) {
  std::vector<Variant> out;
  out.reserve(rs.fields.size());
  for (const auto& field : rs.fields) {
    const std::vector<Variant>& values = FieldAccess::Values(*field);
    const bool in_store = row >= 0 && static_cast<size_t>(row) < values.size();
    out.push_back(in_store ? values[row] : Variant());
  }
  return out;
}

void WriteRowValues(RecordsetState& rs, int32_t row, const std::vector<Variant>& values) {
  const int32_t rows = rs.Rows();
  if (row < 0 || row > rows) {
    RaiseError(9);
  }
  const size_t count = std::min(values.size(), rs.fields.size());
  for (size_t i = 0; i < count; ++i) {
    RowValuesOf(*rs.fields[i], rows)[row] = values[i];
  }
}

void RecomputeAllSums(RecordsetState& rs) {
  for (size_t i = 0; i < rs.fields.size(); ++i) {
    RecountTotal(rs, i);
  }
}

void NumberAutoCodingRows(RecordsetState& rs) {
  const int32_t rows = rs.Rows();
  for (const auto& field : rs.fields) {
    if (field->FieldType != F_AutoCoding) {
      continue;
    }
    std::vector<Variant>& values = RowValuesOf(*field, rows);
    for (int32_t row = 1; row <= rows; ++row) {
      values[row] = Variant(row);
    }
  }
}

std::string MainFieldName(const RecordsetState& rs) {
  for (const auto& field : rs.fields) {
    if (field->IsMain && field->FieldType == F_Boolean) {
      return field->Name;
    }
  }
  return "";
}

size_t FieldIndex(const RecordsetState& rs, const Variant& key) {
  const std::optional<size_t> index = FindField(rs, key);
  if (!index) {
    RaiseError(5);
  }
  return *index;
}

int32_t ResolveRow(RecordsetState& rs, int32_t row) {
  return row == 0 ? ClampedCurrentRow(rs) : row;
}

// A pointer left out of range by a shrinking store is brought back here.
int32_t ClampedCurrentRow(RecordsetState& rs) {
  const int32_t rows = rs.Rows();
  int32_t p = rs.current_row;
  if (p > rows && rows > 0) {
    p = rows;
  } else if (p < 1 && rows > 0) {
    p = 1;
  } else if (rows < 0) {
    p = 0;
  }
  rs.current_row = p;
  return p;
}

}  // namespace varnel::internal
