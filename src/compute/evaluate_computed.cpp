// The ways the recordset evaluates a computed field: for one row, and for
// every row of a load.
#include "compute/evaluate_rows.h"
#include "fields/field_access.h"
#include "recordset/row_store.h"
#include "varnel/modules.h"

namespace varnel::internal {

Variant EvaluateComputed(RecordsetState& rs, const ClsFields& field, int32_t row) {
  MdlCompute::Expression = field.ComputeString;
  MdlCompute::CurRow = row;
  MdlCompute::CurRecordset = &rs.self;
  Variant value = MdlCompute::Exp_Reduced();  // reports its own failures, never raises
  MdlCompute::CurRecordset = nullptr;
  return value;
}

void EvaluateComputedRows(RecordsetState& rs, ClsFields& field, int32_t rows) {
  const std::string source = field.ComputeString;
  EvaluateRows(rs.self, source, 1, rows, FieldAccess::Values(field));
}

}  // namespace varnel::internal
