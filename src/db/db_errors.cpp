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

DbFailure FailureOfSqlState(std::string_view state) {
  struct Row {
    const char* state;  // a whole SQLSTATE, or a class of two characters
    DbFailure kind;
  };
  static constexpr Row kStates[] = {
      {"23502", DbFailure::kNotNull},        {"23505", DbFailure::kUnique},
      {"23514", DbFailure::kCheck},          {"23503", DbFailure::kForeignKey},
      {"40001", DbFailure::kBusy},           {"40P01", DbFailure::kBusy},
      {"55P03", DbFailure::kBusy},           {"25006", DbFailure::kReadOnly},
      {"53100", DbFailure::kDiskFull},       {"08", DbFailure::kConnectionLost},
      {"57P01", DbFailure::kConnectionLost}, {"57P02", DbFailure::kConnectionLost},
      {"57P03", DbFailure::kConnectionLost},
  };
  for (const Row& row : kStates) {
    if (state.starts_with(row.state)) {
      return row.kind;
    }
  }
  return DbFailure::kOther;
}

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
