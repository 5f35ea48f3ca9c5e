// The rows as a grid around the current one, and as CSV.
#pragma once

#include <cstddef>
#include <cstdint>
#include <ostream>

#include "varnel/varnel.h"

namespace varnel::app {

// Count rows around the current row, one column per field, marked
// > current, + selected, # locked (not editable). With a Width (terminal
// columns, 0 = no limit) the widest columns are shortened, with an
// ellipsis, until each line fits.
void WriteGrid(ClsRecordset& rs, int32_t count, size_t width, std::ostream& out);

// Every row as CSV (RFC 4180): a header of display names, then the values as
// the form shows them, yes/no fields as 1 and 0.
void WriteCsv(ClsRecordset& rs, std::ostream& out);

}  // namespace varnel::app
