// FormatValue in engine terms: checks a value offered for one field and row
// and rewrites it into the field's normal form, or says why it is refused.
// The façade (ClsRecordset::FormatValue) tells the user, once.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "varnel/variant.h"

namespace varnel {
class ClsFields;
}

namespace varnel::internal {

// Why a value is not acceptable, and how the user is told.
struct Refusal {
  enum class Dialog { kError, kInformation };
  Dialog dialog;
  int32_t number;  // the error number shown by an error dialog
  std::string text;
};

// The error dialog for a value of the wrong type: error 13, "Type Mismatch.".
Refusal TypeMismatch();
// An information dialog with text.
Refusal Notice(std::string text);
// The name the user knows a field by: its DisplayName, else its Name.
std::string ShownName(const ClsFields& field);

// Normalises value for field at row (0 = the current row). nullopt when it is
// accepted (value rewritten), else the refusal (value unchanged).
std::optional<Refusal> FormatFieldValue(const ClsFields& field, Variant& value, int32_t row);

// The rules of each field kind; value is not blank. Each rewrites value or
// returns its refusal.
std::optional<Refusal> FormatText(const ClsFields& field, Variant& value);
std::optional<Refusal> FormatNumeral(const ClsFields& field, Variant& value);
std::optional<Refusal> FormatCurrency(const ClsFields& field, Variant& value, int32_t row);
std::optional<Refusal> FormatDate(const ClsFields& field, Variant& value);
std::optional<Refusal> FormatBoolean(Variant& value);
std::optional<Refusal> FormatLocked(Variant& value);

// The InputMin/InputMax check of a normalised value; raises VbError 13 when a
// bound cannot be read as the field's kind.
std::optional<Refusal> CheckRange(const ClsFields& field, const Variant& value);

}  // namespace varnel::internal
