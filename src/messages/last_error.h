// The thread's last error (varnel/errors.h): which public operation is running,
// which field it is working on, and what was reported while it ran. The error
// trap and the message procedures are the only writers.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "varnel/errors.h"

namespace varnel::internal {

// A public operation in progress, named by the function that holds the scope
// (a compiler's function signature, or a bare procedure name). The outermost
// scope of the thread empties the last error when it starts.
class OperationScope {
 public:
  explicit OperationScope(const char* function) noexcept;
  ~OperationScope();
  OperationScope(const OperationScope&) = delete;
  OperationScope& operator=(const OperationScope&) = delete;
};

// The field an operation is working on, named in what is reported meanwhile,
// also when an exception leaves the scope before the trap reports it.
class ErrorFieldScope {
 public:
  explicit ErrorFieldScope(std::string_view field_name);
  ~ErrorFieldScope();
  ErrorFieldScope(const ErrorFieldScope&) = delete;
  ErrorFieldScope& operator=(const ErrorFieldScope&) = delete;

 private:
  int exceptions_on_entry_;
};

// True while a public operation of the library runs on this thread.
bool InLibraryOperation() noexcept;

// Records what was reported, unless the running operation has already
// recorded something (the first report is the cause).
void RecordReport(Enum_ErrorKind kind, int32_t number, std::string_view description) noexcept;

// The public operation named in a function signature: "UpdateRecord" for
// "varnel::Enum_EditRecord varnel::ClsRecordset::UpdateRecord()"; the name
// itself for a bare identifier; "" for engine functions.
std::string_view PublicOperationName(std::string_view function) noexcept;

}  // namespace varnel::internal
