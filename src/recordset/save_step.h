// The save that runs before the current row moves, the selection grows, a
// load replaces the rows, a row is inserted or deleted, or query mode starts:
// UpdateRecord's engine under its own error trap, so that an error (a
// client's handler that throws, say) is reported once, here, and answers
// E_Defeat: the edit stays pending and the operation that asked goes no
// further. Defined by the editing engine (src/editing/update.cpp).
#pragma once

#include "recordset/recordset_state.h"

namespace varnel::internal {

[[nodiscard]] Enum_EditRecord SaveStep(RecordsetState& rs);

}  // namespace varnel::internal
