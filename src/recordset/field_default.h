// A field's DefaultValue from a value found in the database (a cell of the
// field-information table, a column's constant DEFAULT): the one conversion
// both use.
#pragma once

#include "varnel/fields.h"
#include "varnel/variant.h"

namespace varnel::internal {

// Sets field.DefaultValue from Cell by the field's kind: 0 or 1 (integers) for
// F_Boolean, the number for the numeric kinds, the date (or the word "Now" or
// "Today", kept) for F_Date, the text for F_Text. A cell that does not fit the
// kind leaves the default as it was.
void SetDefaultValue(ClsFields& field, const Variant& cell);

}  // namespace varnel::internal
