// The writer's own messages, in the thread's UI language (English or Chinese),
// and the error numbers they are reported under.
#pragma once

#include <cstdint>
#include <string>

namespace varnel::internal {

// The provider's "row cannot be located for updating" error: the row was
// changed or deleted by someone else, or does not identify one row.
inline constexpr int32_t kRowNotLocatedError = -2147217864;
// ADO's "item cannot be found in the collection": a key column without field.
inline constexpr int32_t kItemNotFoundError = 3265;

enum class WriterText {
  RowChanged,    // nothing matched the row as it was read
  RowNotUnique,  // {n}: more than one row matched
  KeyNotField,   // {name}: a key column that is not a field
  NoTable,       // neither TableName nor the recordset's TableName is set
  NoConnection,  // no open connection and no connection string
};

// The text in the thread's UI language, with {n} or {name} replaced by Arg.
std::string WriterMessage(WriterText id, const std::string& arg = "");

}  // namespace varnel::internal
