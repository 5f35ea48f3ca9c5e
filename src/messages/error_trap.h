// The one error trap of every public operation: run the body, and turn any
// error (a VbError from the engine, or anything a client's handler threw) into
// an error report titled "Error" and the operation's failure result. The trap
// also names the operation for the thread's last error (varnel/errors.h): the
// calling function's signature, taken where the trap is called, says which
// public member it is, so no call site spells its own name.
#pragma once

#include <cstdint>
#include <exception>
#include <source_location>
#include <string>
#include <utility>

#include "messages/last_error.h"

namespace varnel::internal {

// The run-time error number and description of the exception in flight (call
// only inside a catch block): a VbError's own, else 5 with what() or the
// platform's description of 5.
struct CaughtError {
  int32_t number = 5;
  std::string description;
};
CaughtError DescribeCurrentException();

// Shows the error of the exception in flight (call only inside a catch block).
void ReportCurrentException(bool& sys_err_state);

template <class Result, class Body>
Result Trapped(bool& sys_err_state, Result failure, Body&& body,
               std::source_location caller = std::source_location::current()) {
  const OperationScope operation(caller.function_name());
  try {
    return std::forward<Body>(body)();
  } catch (...) {
    ReportCurrentException(sys_err_state);
    return failure;
  }
}

// The same trap for an operation that reports nothing on failure.
template <class Result, class Body>
Result Quiet(Result failure, Body&& body) {
  try {
    return std::forward<Body>(body)();
  } catch (...) {
    return failure;
  }
}

}  // namespace varnel::internal
