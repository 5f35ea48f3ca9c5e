// The thread's cache of compiled expressions, keyed by recordset and
// expression text and checked against the recordset's field names on every
// use, so that a changed field list (added, removed or renamed fields) reads
// the expression again.
#pragma once

#include <string>

#include "compute/compiled_expression.h"
#include "varnel/recordset.h"

namespace varnel::internal {

// The compiled form of source for fields (the fields of recordset). The
// reference stays valid until the outermost CacheUse of the thread ends, even
// if a nested evaluation replaces the entry.
const CompiledExpression& CachedExpression(const ClsRecordset* recordset, const std::string& source,
                                           const FieldList& fields);

// Marks an evaluation in progress; entries replaced meanwhile are released
// when the outermost one ends.
class CacheUse {
 public:
  CacheUse();
  ~CacheUse();
  CacheUse(const CacheUse&) = delete;
  CacheUse& operator=(const CacheUse&) = delete;
};

}  // namespace varnel::internal
