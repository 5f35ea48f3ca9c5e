// The current row as a form (display name, value, symbol), the status line
// under it, and the SELECT the recordset loads with.
#pragma once

#include <ostream>
#include <string>

#include "varnel/varnel.h"

namespace varnel::app {

// One line per field: a mark (* required, - not editable), the display name,
// the value of the current row (in query mode its criterion) and its symbol.
void WriteForm(ClsRecordset& rs, std::ostream& out);

// "Row 3 of 300 | Modified | Selected: 4 | read-only row | Sum Amount: 95034.20"
std::string StatusLine(ClsRecordset& rs);

// The SELECT that loading runs, composed from the configuration and the
// current criteria as the recordset composes it.
std::string ComposedSelect(ClsRecordset& rs);

// The name a user knows a field by: its DisplayName, else its Name.
std::string ShownName(const ClsFields& field);

}  // namespace varnel::app
