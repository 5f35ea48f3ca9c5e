// Copying the rows of the open recordset into the fields. This is the
// library's main job, so it works column by column: each data field's value
// array is filled straight from the database (element 0 first, then the rows),
// with no intermediate row table and no per-cell SetValue. Change propagation
// is suspended during a load anyway, so writing the arrays directly changes
// nothing that anyone could observe.
#include <cassert>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "automation/calendar.h"
#include "db/recordset_access.h"
#include "fields/field_access.h"
#include "fields/value_formats.h"
#include "recordset/data_source.h"
#include "recordset/row_store.h"
#include "varnel/messages.h"

namespace varnel::internal {
namespace {

using db::internal::ColumnInfo;

// Which recordset column fills which data field.
struct ColumnPlan {
  std::vector<int32_t> columns;       // 0-based recordset column per loaded field
  std::vector<size_t> loaded_fields;  // index of the field each column fills
  std::vector<std::string> missing;   // the message for each field without a column
};

std::optional<int32_t> FindColumn(const std::vector<ColumnInfo>& columns, const std::string& name) {
  for (size_t i = 0; i < columns.size(); ++i) {
    if (columns[i].name == name) {  // exact, case-sensitive
      return static_cast<int32_t>(i);
    }
  }
  return std::nullopt;
}

std::string MissingColumnText(const ClsFields& field, const std::vector<ColumnInfo>& columns) {
  std::string text = "'" + field.Name + LoadResString(117);
  for (const ColumnInfo& column : columns) {
    text += "\n" + column.name;
  }
  return text;
}

// Matches every data field to its column. A field without a column keeps
// Null in every row (the user is told after the load); the others still load.
ColumnPlan PlanColumns(RecordsetState& rs, const std::vector<ColumnInfo>& columns) {
  ColumnPlan plan;
  for (size_t i = 0; i < rs.fields.size(); ++i) {
    ClsFields& field = *rs.fields[i];
    if (!field.IsData) {
      continue;
    }
    const std::optional<int32_t> column = FindColumn(columns, field.Name);
    if (!column) {
      plan.missing.push_back(MissingColumnText(field, columns));
      continue;
    }
    // The database's declared length is what the column can hold.
    if (columns[*column].defined_size > 0) {
      field.DefinedSize = columns[*column].defined_size;
    }
    plan.columns.push_back(*column);
    plan.loaded_fields.push_back(i);
  }
  return plan;
}

// Every field holds Null in rows 0..rows, and the marks are sized to match.
void ResetStore(RecordsetState& rs, int32_t rows) {
  for (const std::shared_ptr<ClsFields>& field : rs.fields) {
    FieldAccess::Values(*field).assign(static_cast<size_t>(rows) + 1, Variant::Null());
  }
  rs.select_marks.assign(static_cast<size_t>(rows) + 1, 0);
  rs.edit_marks.assign(static_cast<size_t>(rows) + 1, 0);
}

// Reads the planned columns; returns the number of rows read.
int32_t ReadColumns(RecordsetState& rs, const ColumnPlan& plan) {
  std::vector<std::vector<Variant>*> outputs;
  outputs.reserve(plan.loaded_fields.size());
  for (size_t index : plan.loaded_fields) {
    std::vector<Variant>& values = FieldAccess::Values(*rs.fields[index]);
    values.clear();
    values.emplace_back(Variant::Null());  // element 0 holds no row
    outputs.push_back(&values);
  }
  return db::internal::RecordsetAccess::AppendColumns(*rs.self.SFRecordset, plan.columns, outputs);
}

// Dates keep only the part their DateType shows.
void CutDates(RecordsetState& rs, const ColumnPlan& plan) {
  for (size_t index : plan.loaded_fields) {
    ClsFields& field = *rs.fields[index];
    if (field.FieldType != F_Date) {
      continue;
    }
    std::vector<Variant>& values = FieldAccess::Values(field);
    for (size_t row = 1; row < values.size(); ++row) {
      values[row] = AsLoaded(field, values[row]);
    }
  }
}

// Fields that are not loaded (non-data fields, data fields without a column)
// start with Null in every row.
void SizeUnloadedFields(RecordsetState& rs, const ColumnPlan& plan, int32_t rows) {
  std::vector<bool> loaded(rs.fields.size(), false);
  for (size_t index : plan.loaded_fields) {
    loaded[index] = true;
  }
  for (size_t i = 0; i < rs.fields.size(); ++i) {
    if (!loaded[i]) {
      FieldAccess::Values(*rs.fields[i]).assign(static_cast<size_t>(rows) + 1, Variant::Null());
    }
  }
}

// Non-data fields take their values from their ComputeString, row by row.
// They read the loaded values, also when a query's reload runs while the
// status is still E_Query (where fields would read their criteria instead).
void ComputeNonDataFields(RecordsetState& rs, int32_t rows) {
  struct StatusOutsideQuery {
    RecordsetState& rs;
    Enum_EditStatus kept = std::exchange(rs.edit_status, E_Default);
    ~StatusOutsideQuery() { rs.edit_status = kept; }
  } outside_query{rs};
  for (const std::shared_ptr<ClsFields>& field : rs.fields) {
    if (field->IsData || field->ComputeString.empty()) {
      continue;
    }
    EvaluateComputedRows(rs, *field, rows);
  }
}

// Every loaded row starts editable and unselected.
void ResetMarks(RecordsetState& rs, int32_t rows) {
  rs.select_marks.assign(static_cast<size_t>(rows) + 1, 0);
  rs.edit_marks.assign(static_cast<size_t>(rows) + 1, 1);
  rs.edit_marks[0] = 0;  // element 0 holds no row
}

void FillRows(RecordsetState& rs, const ColumnPlan& plan, int32_t rows) {
  CutDates(rs, plan);
  SizeUnloadedFields(rs, plan, rows);
  ResetMarks(rs, rows);
  NumberAutoCodingRows(rs);
  ComputeNonDataFields(rs, rows);
}

}  // namespace

std::vector<std::string> LoadRows(RecordsetState& rs) {
  assert(rs.Rows() == 0);
  const ColumnPlan plan =
      PlanColumns(rs, db::internal::RecordsetAccess::Columns(*rs.self.SFRecordset));
  const int32_t rows = ReadColumns(rs, plan);
  if (rows == 0) {
    ResetStore(rs, 0);
    for (const std::shared_ptr<ClsFields>& field : rs.fields) {
      field->SumValue = Variant();
    }
  } else {
    FillRows(rs, plan, rows);
  }
  RecomputeAllSums(rs);
  return plan.missing;
}

}  // namespace varnel::internal
