// The trap of the MdlQuery procedures: like every module procedure, a failure
// is shown in a message box titled with the procedure's name, and the
// procedure returns its neutral result. Nothing reaches the caller.
#pragma once

#include <exception>
#include <string>
#include <utility>

#include "messages/error_trap.h"
#include "varnel/messages.h"
#include "varnel/variant.h"

namespace varnel::internal {

// Shows the exception in flight in a message box titled procedure (call only
// inside a catch block).
inline void ReportInBox(const char* procedure) {
  const CaughtError caught = DescribeCurrentException();
  bool showing = false;
  int16_t buttons = 0;
  MdlProcess::ShowErrBox(procedure, caught.number, caught.description, buttons, showing);
}

template <class Result, class Body>
Result ModuleTrapped(const char* procedure, Result neutral, Body&& body) {
  const OperationScope operation(procedure);
  try {
    return std::forward<Body>(body)();
  } catch (...) {
    try {
      ReportInBox(procedure);
    } catch (...) {
      // A message that cannot be shown must not turn into a failure of its own.
    }
    return neutral;
  }
}

}  // namespace varnel::internal
