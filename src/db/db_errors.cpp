#include "db/db_errors.h"

#include "varnel/variant.h"

namespace varnel::db::internal {
namespace {

std::string_view StandardDescription(int32_t number) {
  switch (number) {
    case kErrBadArguments:
      return "Arguments are of the wrong type, are out of acceptable range, or are in conflict "
             "with one another.";
    case kErrNoCurrentRecord:
      return "Either BOF or EOF is True, or the current record has been deleted. Requested "
             "operation requires a current record.";
    case kErrItemNotFound:
      return "Item cannot be found in the collection corresponding to the requested name or "
             "ordinal.";
    case kErrObjectClosed:
      return "Operation is not allowed when the object is closed.";
    case kErrObjectOpen:
      return "Operation is not allowed when the object is open.";
    case kErrProviderNotFound:
      return "Provider cannot be found. It may not be properly installed.";
    default:
      return "Unspecified error";
  }
}

}  // namespace

void RaiseDbError(int32_t number, std::string_view detail) {
  std::string description(StandardDescription(number));
  if (!detail.empty()) {
    description += ' ';
    description += detail;
  }
  throw VbError(number, std::move(description));
}

void RaiseProviderError(std::string message) { throw VbError(kErrProvider, std::move(message)); }

std::string DescribeSql(std::string_view verb, std::string_view sql) {
  constexpr size_t kShown = 200;
  std::string text(verb);
  text += " '";
  text += sql.substr(0, kShown);
  text += sql.size() > kShown ? "...'" : "'";
  return text;
}

}  // namespace varnel::db::internal
