// The thread's cache of compiled expressions, keyed by recordset and
// expression text and checked against the recordset's field names on every
// use, so that a changed field list (added, removed or renamed fields) reads
// the expression again.
#pragma once

#include <string>

#include "compute/compiled_expression.h"
#include "varnel/recordset.h"

namespace varnel::internal {

struct TokenCache;

// The thread's cache for the span of one evaluation. Entries replaced while
// evaluations are in progress (a nested one started from a message box) are
// released when the outermost one ends, so references handed out stay valid.
class CacheUse {
 public:
  CacheUse();
  ~CacheUse();
  CacheUse(const CacheUse&) = delete;
  CacheUse& operator=(const CacheUse&) = delete;

  // The compiled form of source for fields (the fields of recordset), read
  // again when not cached or when the field names changed.
  const CompiledExpression& Get(const ClsRecordset* recordset, const std::string& source,
                                const FieldList& fields);

 private:
  TokenCache& cache_;
};

}  // namespace varnel::internal
