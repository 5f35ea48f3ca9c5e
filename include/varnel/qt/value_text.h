// Field values as the binding shows them, for a client's own labels.
#pragma once

#include <QString>
#include <cstdint>

#include "varnel/varnel.h"

namespace varnel::qt {

/// Value of Field as a grid cell shows it: dates by DateType, currency with the
/// sign of Row (0 = current row), percent, numbers; "" for Null, Empty and Boolean.
QString DisplayText(const ClsFields& Field, const Variant& Value, int32_t Row = 0);

}  // namespace varnel::qt
