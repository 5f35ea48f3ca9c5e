// How the console writes a field's value: dates in ISO form cut to the
// field's DateType, currency with two decimals (four when needed), Booleans
// as [x] and [ ].
#pragma once

#include <string>

#include "varnel/fields.h"
#include "varnel/variant.h"

namespace varnel::app {

// The value as the form and the list show it for Field; "" for a blank value.
std::string ValueText(const ClsFields& field, const Variant& value);

// A sum or any other number shown with the same rules as a value of Field.
std::string SumText(const ClsFields& field);

}  // namespace varnel::app
