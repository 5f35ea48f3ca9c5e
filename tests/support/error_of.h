// The VbError an operation raises, for tests of failures.
#pragma once

#include <gtest/gtest.h>

#include "varnel/variant.h"

namespace varnel::testing {

// The VbError that Body raises; fails the test (and returns number 0) when
// Body raises nothing.
template <class Body>
VbError ErrorOf(Body&& body) {
  try {
    body();
  } catch (const VbError& error) {
    return error;
  }
  ADD_FAILURE() << "expected a VbError";
  return VbError(0, "no error");
}

}  // namespace varnel::testing
