// The one way the recordset evaluates a computed field for a row.
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

}  // namespace varnel::internal
