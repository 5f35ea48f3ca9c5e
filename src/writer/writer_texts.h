// The writer's own messages, in the thread's UI language (English or Chinese),
// and the error numbers they are reported under. Every message about a save
// that did not go through says what happened and what to do next.
#pragma once

#include <cstdint>
#include <string>

namespace varnel::internal {

// The provider's "row cannot be located for updating" error: the row was
// changed or deleted by someone else, or does not identify one row.
inline constexpr int32_t kRowNotLocatedError = -2147217864;
// ADO's "item cannot be found in the collection": a key column without field.
inline constexpr int32_t kItemNotFoundError = 3265;
// "Invalid use of Null": a value the row needs is missing.
inline constexpr int32_t kInvalidUseOfNull = 94;

enum class WriterText {
  RowChanged,       // someone else changed the row since it was read
  RowDeleted,       // someone else deleted the row since it was read
  RowNotUnique,     // {n}: more than one row matched
  KeyNotField,      // {name}: a key column that is not a field
  NoTable,          // neither TableName nor the recordset's TableName is set
  NoConnection,     // no open connection and no connection string
  NotNull,          // {name}: the database wants a value
  Unique,           // {name}: the value is taken by another row
  Check,            // {name}: a CHECK rule refused the row
  ForeignKey,       // {name}: the value refers to no row, or the row is referred to
  Busy,             // another connection holds a lock
  ReadOnly,         // the database cannot be written
  DiskFull,         // no room to write
  ConnectionLost,   // the database cannot be reached
  CommitUnknown,    // the connection broke during COMMIT
  Refused,          // any other refusal by the database
  Unexpected,       // a failure that is not the database's
  EmptyKey,         // {name}: a key left empty that the database does not fill
  TextNul,          // {name}: text with a NUL the database cannot store
  NoConflict,       // a resolution asked for without a conflict
  KeylessConflict,  // no row of a table without a key holds the values read
  KeylessKeepMine,  // mine over theirs asked for a changed row of a table without a key
};

// The text in the thread's UI language, with {n} or {name} replaced by Arg.
std::string WriterMessage(WriterText id, const std::string& arg = "");

}  // namespace varnel::internal
