#include "messages/error_trap.h"

#include <stdexcept>
#include <string>

#include "varnel/errors.h"
#include "varnel/messages.h"
#include "varnel/variant.h"

namespace varnel::internal {

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
    caught.description = ErrorDescription(Err_InvalidCall);
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
