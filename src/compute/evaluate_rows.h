// Evaluating one expression for many rows of a recordset, read once.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "varnel/recordset.h"

namespace varnel::internal {

// For each row first..last in order: what MdlCompute::Exp_Reduced gives with
// Expression = source, CurRow = row and CurRecordset = &recordset (messages
// included), handed to store(row, value); CurRecordset is no object after each
// row. The expression is read once, and again only after a row that showed a
// message (its handler may have changed the fields).
void EvaluateRows(ClsRecordset& recordset, const std::string& source, int32_t first, int32_t last,
                  const std::function<void(int32_t, Variant)>& store);

}  // namespace varnel::internal
