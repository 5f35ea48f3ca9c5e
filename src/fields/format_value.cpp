// ClsRecordset::FormatValue: the check and normal form of every value that a
// user types into a field, before Modify stores it.
#include "fields/format_value.h"

#include "messages/error_trap.h"
#include "recordset/recordset_state.h"
#include "recordset/row_store.h"
#include "varnel/messages.h"
#include "varnel/recordset.h"

namespace varnel::internal {
namespace {

bool IsBlankValue(const Variant& value) {
  return value.IsBlank() ||
         (value.IsString() && value.StringView().find_first_not_of(' ') == std::string::npos);
}

// Auto-coding numbers are the recordset's own: only the value already stored passes.
std::optional<Refusal> CheckAutoCoding(const ClsFields& field, const Variant& value, int32_t row) {
  if (ValuesEqual(value, field.GetValue(row))) {
    return std::nullopt;
  }
  return Notice(LoadResString(150));
}

void ShowRefusal(const Refusal& refusal, bool& sys_err_state) {
  if (refusal.dialog == Refusal::Dialog::kError) {
    MdlProcess::ShowErr(LoadResString(101), refusal.number, refusal.text, sys_err_state);
  } else {
    MdlProcess::ShowInfor(refusal.text, sys_err_state);
  }
}

}  // namespace

Refusal TypeMismatch() { return {Refusal::Dialog::kError, 13, LoadResString(103)}; }

Refusal Notice(std::string text) { return {Refusal::Dialog::kInformation, 0, std::move(text)}; }

std::string ShownName(const ClsFields& field) {
  return field.DisplayName.empty() ? field.Name : field.DisplayName;
}

std::optional<Refusal> FormatFieldValue(const ClsFields& field, Variant& value, int32_t row) {
  if (field.FieldType == F_AutoCoding) {
    return CheckAutoCoding(field, value, row);
  }
  if (IsBlankValue(value)) {
    value = Variant::Null();  // required values are checked when the row is saved
    return std::nullopt;
  }
  Variant normal = value;
  std::optional<Refusal> refusal;
  switch (field.FieldType) {
    case F_Text:
      refusal = FormatText(field, normal);
      break;
    case F_Numeral:
      refusal = FormatNumeral(field, normal);
      break;
    case F_Currency:
      refusal = FormatCurrency(field, normal, row);
      break;
    case F_Date:
      refusal = FormatDate(field, normal);
      break;
    case F_Boolean:
      refusal = FormatBoolean(normal);
      break;
    case F_Locked:
      refusal = FormatLocked(normal);
      break;
    default:  // F_Other and F_MultiMode take the value as it is
      break;
  }
  if (!refusal) {
    refusal = CheckRange(field, normal);
  }
  if (!refusal) {
    value = std::move(normal);
  }
  return refusal;
}

}  // namespace varnel::internal

namespace varnel {

bool ClsRecordset::FormatValue(const Variant& Field, Variant& Value, int32_t Row) {
  internal::RecordsetState& rs = internal::RecordsetAccess::State(*this);
  return internal::Trapped(SysErrState, true, [&] {
    const ClsFields& field = *rs.fields[internal::FieldIndex(rs, Field)];
    const internal::ErrorFieldScope error_field(field.Name);
    const std::optional<internal::Refusal> refusal = internal::FormatFieldValue(field, Value, Row);
    if (refusal) {
      internal::ShowRefusal(*refusal, SysErrState);
    }
    return refusal.has_value();
  });
}

}  // namespace varnel
