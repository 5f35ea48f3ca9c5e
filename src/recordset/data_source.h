// The data source's engine steps: composing the SELECT, checking the field
// definitions, opening the database objects and copying the rows into the
// fields. InitDataSource and RefreshDataSource (data_source.cpp) run them in
// order; each step says how it fails.
#pragma once

#include <string>
#include <vector>

#include "recordset/recordset_state.h"

namespace varnel::internal {

// Spaces removed at both ends (the platform's Trim: blanks only, not tabs).
std::string TrimBlanks(const std::string& text);

// The sort text from DefaultOrderBy and OrderByField1..3.
std::string ComposeOrderBy(const ClsRecordset& rs);
// The condition from DefaultCondition and the fields' query predicates; stores
// the predicates' part in SysCondition. Raises VbError 94 for a field whose
// query text gives no predicate.
std::string ComposeCondition(RecordsetState& rs);
// Builds the SQL text, RecordsetCondition and RecordsetOrderBy through the
// public GetCondition and GetOrderBy (which report their own errors).
// Returns true when either failed.
[[nodiscard]] bool ComposeSql(RecordsetState& rs);

// True when the fields can be loaded; otherwise tells the user why (a message
// box titled "Check_Field", or untitled when there are no fields).
[[nodiscard]] bool CheckFields(RecordsetState& rs);

// Opens SFConnection and SFRecordset as needed. Returns true when a recordset
// is open (an already open one is reused as it is), false when there is
// nothing to open from. Raises VbError when the database refuses.
[[nodiscard]] bool OpenSource(RecordsetState& rs);

// Copies every row of the open SFRecordset into the fields, computes the
// non-data fields, numbers auto-coding fields, rebuilds the mark arrays and
// the sums. Returns the messages naming data fields that have no column, for
// the caller to show. Values go straight into the arrays, so nothing
// propagates and the bulk flag is not needed (computed fields may show an
// evaluation message, which must not run under it). REQUIRES an emptied store
// (the caller keeps the rows it replaces, and puts them back when this raises).
std::vector<std::string> LoadRows(RecordsetState& rs);

// Closes (when open) and drops SFRecordset and SFConnection.
void ReleaseSource(RecordsetState& rs);

}  // namespace varnel::internal
