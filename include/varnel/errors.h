/// \file
/// Errors a program can read. Every public operation that fails reports to the
/// user (an error form, a message box or an information form) and returns its
/// failure result; the thread's LastError() then says what happened, so a
/// screen can react without parsing message text:
///
///     if (rs.UpdateRecord() != varnel::E_Succeed) {
///       const varnel::ErrorInfo& e = varnel::LastError();
///       if (e.Number == varnel::Err_InvalidUseOfNull) focus(e.Field);  // a required field
///     }
///
/// The database layer (varnel::db) reports nothing: its objects throw VbError.
#pragma once

#include <cstdint>
#include <string>

#include "varnel/export.h"

VARNEL_API_BEGIN

namespace varnel {

/// Every run-time error number the library raises (VbError::Number()).
enum Enum_ErrorNumber : int32_t {
  Err_InvalidCall = 5,              ///< invalid procedure call or argument
  Err_Overflow = 6,                 ///< a value does not fit its kind
  Err_SubscriptOutOfRange = 9,      ///< no such row, field or position
  Err_DivisionByZero = 11,          ///< division by zero in arithmetic or a computed field
  Err_TypeMismatch = 13,            ///< a value that does not convert to the kind asked for
  Err_ObjectNotSet = 91,            ///< no connection or recordset where one is needed
  Err_InvalidUseOfNull = 94,        ///< Null where a value is required (a required field)
  Err_DuplicateKey = 457,           ///< a field name already in the collection
  Err_NoCurrentRecord = 2103,       ///< an operation that needs a current row found none
  Err_BadArguments = 3001,          ///< database layer: a filter that does not parse
  Err_BofOrEof = 3021,              ///< database layer: no current record (Bof or Eof)
  Err_ItemNotFound = 3265,          ///< database layer: no column of that name or index
  Err_ObjectClosed = 3704,          ///< database layer: the object is closed
  Err_ObjectOpen = 3705,            ///< database layer: the object is already open
  Err_ProviderNotFound = 3706,      ///< an unknown Provider in a connection string
  Err_RowNotLocated = -2147217864,  ///< a saved row was changed or deleted by someone else
  Err_Provider = -2147467259,       ///< the database's own failure; its message is the description
};

/// The standard English description of a run-time error number, without
/// raising it; "Application-defined or object-defined error" for a number
/// that has none.
std::string ErrorDescription(int32_t Number);

/// How the thread's last public operation ended (ErrorInfo::Kind).
enum Enum_ErrorKind : int32_t {
  K_None = 0,    ///< nothing was reported: the operation did its work
  K_Error = 1,   ///< a run-time error, shown in the error form or an error message box
  K_Notice = 2,  ///< refused with an information message (a read-only field, a value out of range)
  K_Cancelled = 3,  ///< a client's Before event handler set Cancel
};

/// What the thread's last public operation reported.
struct ErrorInfo {
  /// K_None when the operation reported nothing.
  Enum_ErrorKind Kind = K_None;
  /// The run-time error number as raised (Enum_ErrorNumber, or a database's); 0 for
  /// notices, cancels and the evaluator's message boxes, which carry none.
  int32_t Number = 0;
  /// The error's description, the notice's text, or the cancelled Before event's name.
  std::string Description;
  /// The public operation that reported it ("UpdateRecord", "SetValue"); "" for none.
  std::string Operation;
  /// The Name of the field concerned; "" when the report is not about one field.
  std::string Field;
};

/// The calling thread's last error. Each public operation of ClsRecordset,
/// ClsFields, TableWriter and MdlQuery empties it when it starts (the outermost
/// one, when they call each other) and keeps the first thing reported while it
/// runs: an error form or error message box (K_Error), an information form
/// (K_Notice), or a Before event cancelled by a handler (K_Cancelled).
/// Operation is the innermost public operation running then: "UpdateRecord"
/// when a move fails because the pending edit could not be saved. Field is the
/// Name of the field being changed or checked, when there is one. Refusals that
/// show nothing (a permission such as EditAddNew false, nothing to undo, any
/// edit in E_Nothing) leave it empty although the operation returns true.
/// Getters and the db layer leave it alone; a message procedure called outside
/// any operation replaces it.
const ErrorInfo& LastError();

/// Empties the calling thread's last error.
void ClearLastError();

}  // namespace varnel

VARNEL_API_END
