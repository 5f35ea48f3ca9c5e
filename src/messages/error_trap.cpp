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

void ReportCurrentException(bool& sys_err_state) {
  if (!std::current_exception()) {
    return;  // not inside a catch: nothing to report
  }
  int32_t number = 5;
  std::string description;
  try {
    throw;
  } catch (const VbError& e) {
    number = e.Number();
    description = e.Description();
  } catch (const std::exception& e) {
    description = e.what();
  } catch (...) {
    description = InvalidCallDescription();
  }
  MdlProcess::ShowErr(LoadResString(101), number, description, sys_err_state);
}

}  // namespace varnel::internal
