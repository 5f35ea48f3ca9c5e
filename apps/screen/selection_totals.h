// The totals the status bar shows: every summed field over all rows (its
// SumValue) and over the selected rows.
#pragma once

#include <QString>

#include "varnel/varnel.h"

namespace varnel::screen {

struct SelectionTotals {
  QString all;            // "Quantity 1,204  Amount $5,120.00"; "" when no field is summed
  QString selected;       // the same over the selected rows
  int selected_rows = 0;  // rows counted as selected (the current one when none is marked)
};

SelectionTotals TotalsOf(ClsRecordset& Recordset);

}  // namespace varnel::screen
