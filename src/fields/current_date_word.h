// The words that make a date field's DefaultValue mean "the current date":
// NewRecord fills such a field with the current date cut to its DateType, and
// ReadFieldsInformation keeps the word as a date field's default.
//
//   if (field.FieldType == F_Date && internal::IsCurrentDateWord(field.DefaultValue)) { ... }
#pragma once

#include "varnel/variant.h"

namespace varnel::internal {

// True for text that is "Now" or "Today" in any case, with blanks around it
// allowed (not inside it); false for any other value, text or not.
bool IsCurrentDateWord(const Variant& value);

}  // namespace varnel::internal
