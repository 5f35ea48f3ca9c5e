// Evaluating one expression for many rows of a recordset, read once.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "varnel/recordset.h"

namespace varnel::internal {

// For each row first..last in order: what MdlCompute::Exp_Reduced gives with
// Expression = source, CurRow = row and CurRecordset = &recordset (messages
// included), stored in out[row] (rows outside out are dropped); CurRecordset
// is no object after each row. The expression is read once, and again only
// after a row that showed a message (its handler may have changed the fields).
void EvaluateRows(ClsRecordset& recordset, const std::string& source, int32_t first, int32_t last,
                  std::vector<Variant>& out);

}  // namespace varnel::internal
