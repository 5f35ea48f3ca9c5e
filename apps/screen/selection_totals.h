// The totals the status bar shows: every summed field over all rows and over
// the selected rows, as the library keeps them, one amount per currency sign.
#pragma once

#include <QString>

#include "varnel/varnel.h"

namespace varnel::screen {

struct SelectionTotals {
  QString all;       // "Qty 30   Fee $400.00 + ¥400.00 + €700.00"; "" when no field is summed
  QString selected;  // the same over the selected rows (the current row when none is marked)
};

SelectionTotals TotalsOf(ClsRecordset& Recordset);

// How many rows are marked selected; 1 for the current row when none is (S_None), 0 without rows.
int32_t SelectedRowCount(ClsRecordset& Recordset);

}  // namespace varnel::screen
