// Engine operations on a field's value array that the recordset runs (the
// field's private sizing operations), and the making of fields.
//
//   auto field = internal::MakeField();      // what Add and the field reader use
//   internal::ResetValues(*field, rows);     // a load: 0..rows, every element Null
//   internal::ResizeValues(*field, rows);    // a row more or less: keeps the elements
#pragma once

#include <cstdint>
#include <memory>

#include "varnel/fields.h"

namespace varnel {

// The token that lets engine code construct a ClsFields.
struct ClsFields::Key {
  explicit Key() = default;
};

}  // namespace varnel

namespace varnel::internal {

// A new field with every property at its type default and no Parent.
std::shared_ptr<ClsFields> MakeField();

// Erases the value array; when rows is not 0, sizes it to 0..rows (rows + 1
// elements, one per row plus element 0), every element Null. VbError 9 when
// rows is negative.
void ResetValues(ClsFields& field, int32_t rows);

// Sizes the value array to 0..rows keeping the existing elements; new ones
// are Empty. VbError 9 when rows is negative.
void ResizeValues(ClsFields& field, int32_t rows);

// The companion that holds field's symbol: the last field of the Parent's
// collection whose Name equals field.SymbolName (exactly); nullptr when the
// SymbolName is empty, unknown, or the field has no Parent.
std::shared_ptr<ClsFields> FindCompanion(const ClsFields& field);

// The QueryValue of the companion field; Empty when there is none.
Variant GetSymbolQueryValue(const ClsFields& field);

}  // namespace varnel::internal
