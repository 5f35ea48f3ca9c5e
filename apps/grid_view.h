// A grid of the rows around the current one.
#pragma once

#include <cstdint>
#include <ostream>

#include "varnel/varnel.h"

namespace varnel::app {

// Count rows around the current row, one column per field, marked
// > current, + selected, # locked (not editable).
void WriteGrid(ClsRecordset& rs, int32_t count, std::ostream& out);

}  // namespace varnel::app
