// The field definitions are checked before every load, so that a screen
// configured wrongly tells its developer at once instead of loading rows that
// cannot be shown or edited properly.
#include "recordset/data_source.h"
#include "varnel/messages.h"

namespace varnel::internal {
namespace {

constexpr const char* kCheckTitle = "Check_Field";

}  // namespace

bool CheckFields(RecordsetState& rs) {
  if (rs.fields.empty()) {
    MsgBox("没有指定字段！", 0, "");
    return false;
  }
  int locked_fields = 0;
  for (const std::shared_ptr<ClsFields>& field : rs.fields) {
    // A currency amount is shown with its sign, which lives in the companion field.
    if (field->FieldType == F_Currency && field->SymbolName.empty()) {
      MsgBox(LoadResString(115) + field->Name + LoadResString(116), 0, kCheckTitle);
      return false;
    }
    if (field->FieldType == F_Locked) {
      ++locked_fields;
    }
  }
  // One lock field decides each row's edit mark; two would contradict each other.
  if (locked_fields >= 2) {
    MsgBox("F_Locked 类型字段不能同时有两列！", 0, kCheckTitle);
    return false;
  }
  return true;
}

}  // namespace varnel::internal
