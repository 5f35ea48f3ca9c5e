// The run-time errors raised by the database access layer, numbered as ADO
// numbers them. Every db error is raised through these functions:
//   3001  arguments of the wrong type or out of range (a filter that does not parse)
//   3021  no current record (Bof or Eof)
//   3265  item not found in the collection (a field index or name)
//   3704  operation not allowed when the object is closed
//   3705  operation not allowed when the object is open
//   3706  provider cannot be found
//   -2147467259  the database's own failure, with its message and what was being done
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace varnel::db::internal {

inline constexpr int32_t kErrBadArguments = 3001;
inline constexpr int32_t kErrNoCurrentRecord = 3021;
inline constexpr int32_t kErrItemNotFound = 3265;
inline constexpr int32_t kErrObjectClosed = 3704;
inline constexpr int32_t kErrObjectOpen = 3705;
inline constexpr int32_t kErrProviderNotFound = 3706;
inline constexpr int32_t kErrProvider = -2147467259;

// Raises Number with ADO's standard description, followed by Detail when given.
[[noreturn]] void RaiseDbError(int32_t number, std::string_view detail = {});

// Raises the provider error -2147467259 with Message as its description.
[[noreturn]] void RaiseProviderError(std::string message);

// What was being done, for a provider error: "preparing 'SELECT ...'" (long
// statements cut to their first 200 characters).
std::string DescribeSql(std::string_view verb, std::string_view sql);

}  // namespace varnel::db::internal
