#include "messages/error_trap.h"

#include <stdexcept>
#include <string>

#include "varnel/messages.h"
#include "varnel/variant.h"

namespace varnel::internal {
namespace {

// The platform's own description of error 5, for failures that carry none.
std::string InvalidCallDescription() {
  try {
    RaiseError(5);
  } catch (const VbError& e) {
    return e.Description();
  }
}

}  // namespace

CaughtError DescribeCurrentException() {
  CaughtError caught;
  try {
    throw;
  } catch (const VbError& e) {
    caught.number = e.Number();
    caught.description = e.Description();
  } catch (const std::exception& e) {
    caught.description = e.what();
  } catch (...) {
    caught.description = InvalidCallDescription();
  }
  return caught;
}

void ReportCurrentException(bool& sys_err_state) {
  if (!std::current_exception()) {
    return;  // not inside a catch: nothing to report
  }
  const CaughtError caught = DescribeCurrentException();
  MdlProcess::ShowErr(LoadResString(101), caught.number, caught.description, sys_err_state);
}

}  // namespace varnel::internal
