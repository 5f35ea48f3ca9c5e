// Criteria on computed fields. A computed field that is not a column of the
// table (IsData false) has no column to compare; when its ComputeString is
// arithmetic over number columns, the database can compute the same value,
// so the field's predicate compares that expression instead:
//
//   Amount = Qty*Price, criterion ">=1000"  ->  (([Qty]*[Price])>=1000)
//
// Any other formula cannot be queried, and the field is named in the error.
#pragma once

#include <string>

namespace varnel {
class ClsFields;
}

namespace varnel::internal {

// True for a field whose values are computed in memory and not read from a
// column: its predicate must go through PredicateOnComputedField.
bool IsComputedOnly(const ClsFields& field);

// Predicate, translated for Field's kind over its bracketed name, rewritten to
// compare Field's formula as a SQL expression. Raises VbError naming the
// field when the formula is not arithmetic over number columns of the table.
std::string PredicateOnComputedField(const ClsFields& field, const std::string& predicate);

}  // namespace varnel::internal
