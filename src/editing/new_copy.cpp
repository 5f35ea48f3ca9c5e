// NewRecord and CopyRecord: a row is appended in memory and waits, in
// E_AddNew or E_Copy, for UpdateRecord to have the client insert it.
#include <vector>

#include "recordset/edit_state.h"
#include "editing/editing.h"
#include "editing/row_work.h"
#include "fields/current_date_word.h"
#include "fields/field_access.h"
#include "messages/error_trap.h"
#include "recordset/row_store.h"
#include "recordset/save_step.h"
#include "varnel/messages.h"
#include "varnel/modules.h"

namespace varnel::internal {
namespace {

// What a new row holds in a field before computed values: its DefaultValue,
// or the current date cut to its kind when a date field's default asks for it.
Variant DefaultFor(RecordsetState& rs, const ClsFields& field) {
  if (field.FieldType == F_Date && IsCurrentDateWord(field.DefaultValue)) {
    return Variant(MdlDataInterface::CurrentDateValue(rs.self, field.DateType));
  }
  return field.DefaultValue;
}

// The values of the new row before computed fields; `source` (copying) gives
// the fields marked Copy their value in that row. The argument wins.
std::vector<Variant> StartingValues(RecordsetState& rs, std::optional<int32_t> source,
                                    std::optional<size_t> argument_index, const Variant& argument) {
  std::vector<Variant> values;
  if (source) {
    values = RowValues(rs, *source);
  } else {
    values.resize(rs.fields.size());
  }
  for (size_t i = 0; i < rs.fields.size(); ++i) {
    const ClsFields& field = *rs.fields[i];
    if (argument_index == i) {
      values[i] = argument;
    } else if (!source || !field.Copy) {
      values[i] = DefaultFor(rs, field);
    }
  }
  return values;
}

// Computed fields that took no argument are evaluated for the new row, in
// field order, after every input is in place; a copied computed field too,
// since its expression may read fields that were not copied.
void ComputeNewRow(RecordsetState& rs, int32_t row, std::optional<size_t> argument_index) {
  for (size_t i = 0; i < rs.fields.size(); ++i) {
    ClsFields& field = *rs.fields[i];
    if (field.ComputeString.empty() || argument_index == i) {
      continue;
    }
    FieldAccess::Values(field)[row] = EvaluateComputed(rs, field, row);
  }
}

struct InsertPlan {
  EditOp op;  // kNewRecord or kCopyRecord
  std::optional<size_t> argument_index;
  Variant argument;
};

void AppendPlannedRow(RecordsetState& rs, const InsertPlan& plan) {
  const std::optional<int32_t> source =
      plan.op == EditOp::kCopyRecord ? std::optional<int32_t>(ClampedCurrentRow(rs)) : std::nullopt;
  std::vector<Variant> values = StartingValues(rs, source, plan.argument_index, plan.argument);
  // Values are written straight into the arrays: nothing propagates, and the
  // bulk flag stays down because the evaluator may show a message.
  const int32_t row = AppendRow(rs);
  WriteRowValues(rs, row, values);
  ComputeNewRow(rs, row, plan.argument_index);
  rs.current_row = row;
  TotalsAfterAppend(rs, row);
}

bool InsertRecord(RecordsetState& rs, const InsertPlan& plan) {
  if (SaveStep(rs) != E_Succeed) {
    return false;
  }
  const bool copy = plan.op == EditOp::kCopyRecord;
  if (copy && ClampedCurrentRow(rs) < 1) {
    throw VbError(2103, LoadResString(102));  // nothing to copy
  }
  bool cancel = false;
  if (copy) {
    rs.Raise(Ev_CopyRecordBefore, &ClsRecordsetEvents::CopyRecordBefore, cancel);
  } else {
    rs.Raise(Ev_NewRecordBefore, &ClsRecordsetEvents::NewRecordBefore, cancel);
  }
  if (cancel) {
    return false;
  }
  AppendPlannedRow(rs, plan);
  MoveStatus(rs, plan.op);
  if (copy) {
    rs.Raise(Ev_SysCopyRecordAfter, &ClsRecordsetEvents::SysCopyRecordAfter);
    rs.Raise(Ev_CopyRecordAfter, &ClsRecordsetEvents::CopyRecordAfter);
  } else {
    rs.Raise(Ev_SysNewRecordAfter, &ClsRecordsetEvents::SysNewRecordAfter);
    rs.Raise(Ev_NewRecordAfter, &ClsRecordsetEvents::NewRecordAfter);
  }
  rs.Raise(Ev_RecordPointerChange, &ClsRecordsetEvents::RecordPointerChange);
  return false;
}

bool InsertRefused(const RecordsetState& rs, EditOp op, bool permitted) {
  return !PlanMove(rs.edit_status, op).to || !permitted;
}

}  // namespace

bool InsertNewRow(RecordsetState& rs, const std::optional<FieldArgument>& argument) {
  if (InsertRefused(rs, EditOp::kNewRecord, rs.self.EditAddNew)) {
    return true;
  }
  InsertPlan plan{EditOp::kNewRecord, std::nullopt, Variant()};
  if (argument && !argument->field_name.empty()) {  // an empty name passes no argument
    plan.argument_index = FieldIndex(rs, Variant(argument->field_name));
    plan.argument = argument->value;
  }
  return InsertRecord(rs, plan);
}

bool InsertCopiedRow(RecordsetState& rs) {
  if (InsertRefused(rs, EditOp::kCopyRecord, rs.self.EditCopy)) {
    return true;
  }
  return InsertRecord(rs, InsertPlan{EditOp::kCopyRecord, std::nullopt, Variant()});
}

}  // namespace varnel::internal

namespace varnel {

bool ClsRecordset::NewRecord() {
  internal::RecordsetState& rs = internal::RecordsetAccess::State(*this);
  internal::ValidScope valid(rs);
  return internal::Trapped(SysErrState, true,
                           [&] { return internal::InsertNewRow(rs, std::nullopt); });
}

bool ClsRecordset::NewRecord(const std::string& FieldName, const Variant& Value) {
  internal::RecordsetState& rs = internal::RecordsetAccess::State(*this);
  internal::ValidScope valid(rs);
  return internal::Trapped(SysErrState, true, [&] {
    return internal::InsertNewRow(rs, internal::FieldArgument{FieldName, Value});
  });
}

bool ClsRecordset::CopyRecord() {
  internal::RecordsetState& rs = internal::RecordsetAccess::State(*this);
  internal::ValidScope valid(rs);
  return internal::Trapped(SysErrState, true, [&] { return internal::InsertCopiedRow(rs); });
}

}  // namespace varnel
