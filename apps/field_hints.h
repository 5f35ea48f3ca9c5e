// What a field accepts, in the user's language: the value forms that Modify
// takes for its kind, and the criteria that query by form reads for it. The
// criteria examples are the ones help shows, so one table serves both.
#pragma once

#include <string>
#include <vector>

#include "varnel/fields.h"

namespace varnel::app {

// "Quantity takes a whole number from 1 to 1000, e.g. 12." ("" for a field
// that takes no typed value).
std::string ValueHint(const ClsFields& field);

// "Criteria for Quantity (a number): 12 | >=10 AND <20 | ..." ("" for a field
// that cannot be queried).
std::string CriteriaHint(const ClsFields& field);

// The kinds of criteria help lists, each with its examples.
struct CriteriaKind {
  std::string name;  // "number", "amount", ...
  std::vector<std::string> examples;
};
std::vector<CriteriaKind> CriteriaKinds();

}  // namespace varnel::app
