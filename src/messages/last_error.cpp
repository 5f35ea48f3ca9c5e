#include "messages/last_error.h"

#include <algorithm>
#include <array>
#include <exception>
#include <memory>
#include <mutex>
#include <vector>

namespace varnel::internal {
namespace {

struct ThreadErrors {
  std::vector<const char*> operations;  // innermost last
  std::vector<std::string> fields;      // innermost last
  std::string field_left_by_exception;  // the innermost field an exception unwound
  ErrorInfo last;
};

// A replacement for a thread whose own errors are gone, kept (reachable) until
// the process ends.
ThreadErrors& KeptForever() {
  static std::mutex* const guard = new std::mutex;
  static auto* const kept = new std::vector<std::unique_ptr<ThreadErrors>>;
  const std::lock_guard<std::mutex> lock(*guard);
  kept->push_back(std::make_unique<ThreadErrors>());
  return *kept->back();
}

// The thread's errors. A recordset destroyed after them (by a static or a
// later thread_local destructor, as a program's global recordset is at exit)
// gets a replacement instead of freed memory.
ThreadErrors& Errors() {
  thread_local bool ended = false;  // trivially destroyed: readable while the thread lives
  struct Owned {
    ThreadErrors errors;
    ~Owned() { ended = true; }
  };
  thread_local Owned owned;
  thread_local ThreadErrors* replacement = nullptr;
  if (!ended) {
    return owned.errors;
  }
  if (replacement == nullptr) {
    replacement = &KeptForever();
  }
  return *replacement;
}

bool IsIdentifierChar(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

// The innermost operation on the stack with a public name.
std::string_view InnermostPublicOperation(const ThreadErrors& errors) {
  for (auto it = errors.operations.rbegin(); it != errors.operations.rend(); ++it) {
    const std::string_view name = PublicOperationName(*it);
    if (!name.empty()) {
      return name;
    }
  }
  return {};
}

}  // namespace

std::string_view PublicOperationName(std::string_view function) noexcept {
  if (!function.empty() && std::all_of(function.begin(), function.end(), IsIdentifierChar)) {
    return function;
  }
  // The public classes and modules whose members are operations. The first
  // "Owner::Name(" in the signature names it (a template helper's signature
  // names the public member it was instantiated for).
  static constexpr std::array<std::string_view, 7> kOwners = {
      "ClsRecordset::", "ClsFields::",  "TableWriter::",     "MdlQuery::",
      "MdlCompute::",   "MdlProcess::", "MdlDataInterface::"};
  size_t best = std::string_view::npos;
  std::string_view found;
  for (const std::string_view owner : kOwners) {
    for (size_t at = function.find(owner); at != std::string_view::npos && at < best;
         at = function.find(owner, at + 1)) {
      const size_t start = at + owner.size();
      size_t end = start;
      while (end < function.size() && IsIdentifierChar(function[end])) {
        ++end;
      }
      if (end > start && end < function.size() && function[end] == '(') {
        best = at;
        found = function.substr(start, end - start);
        break;
      }
    }
  }
  return found;
}

OperationScope::OperationScope(const char* function) noexcept {
  ThreadErrors& errors = Errors();
  if (errors.operations.empty()) {
    errors.last = ErrorInfo{};
    errors.field_left_by_exception.clear();
  }
  try {
    errors.operations.push_back(function);
  } catch (...) {
    // Out of memory: the operation runs unnamed rather than not at all.
  }
}

OperationScope::~OperationScope() {
  ThreadErrors& errors = Errors();
  if (!errors.operations.empty()) {
    errors.operations.pop_back();
  }
}

ErrorFieldScope::ErrorFieldScope(std::string_view field_name)
    : exceptions_on_entry_(std::uncaught_exceptions()) {
  Errors().fields.emplace_back(field_name);
}

ErrorFieldScope::~ErrorFieldScope() {
  ThreadErrors& errors = Errors();
  if (std::uncaught_exceptions() > exceptions_on_entry_ && errors.field_left_by_exception.empty()) {
    errors.field_left_by_exception = std::move(errors.fields.back());
  }
  errors.fields.pop_back();
}

bool InLibraryOperation() noexcept { return !Errors().operations.empty(); }

void RecordReport(Enum_ErrorKind kind, int32_t number, std::string_view description) noexcept {
  ThreadErrors& errors = Errors();
  if (errors.last.Kind != K_None && !errors.operations.empty()) {
    return;  // the running operation's first report stays: it is the cause
  }
  try {
    ErrorInfo info;
    info.Kind = kind;
    info.Number = number;
    info.Description = description;
    info.Operation = InnermostPublicOperation(errors);
    info.Field = errors.fields.empty() ? errors.field_left_by_exception : errors.fields.back();
    errors.last = std::move(info);
    errors.field_left_by_exception.clear();
  } catch (...) {
    // Out of memory while recording: the report on screen is what remains.
  }
}

}  // namespace varnel::internal

namespace varnel {

const ErrorInfo& LastError() { return internal::Errors().last; }

void ClearLastError() { internal::Errors().last = ErrorInfo{}; }

}  // namespace varnel
