// Field values as the binding shows them, for a client's own labels.
#pragma once

#include <QString>
#include <cstdint>

#include "varnel/export.h"
#include "varnel/varnel.h"

VARNEL_API_BEGIN

namespace varnel::qt {

/// Value of Field as a grid cell shows it: dates by DateType, currency with the
/// sign of Row (0 = current row), percent, numbers; "" for Null, Empty and Boolean.
QString DisplayText(const ClsFields& Field, const Variant& Value, int32_t Row = 0);

/// Amount as currency cells show it, with Sign before it: "$1250.00", "-€3.10",
/// two decimals or up to four when it has them; "" for a blank Amount. Raises
/// VbError 13 or 6 for a value that is no amount.
QString AmountText(const Variant& Amount, const QString& Sign = QString());

}  // namespace varnel::qt

VARNEL_API_END
