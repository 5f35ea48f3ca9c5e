#include "lock_marks.h"

namespace varnel::app {

void LockMarks::Apply() {
  std::shared_ptr<ClsFields> lock;
  for (const auto& field : recordset_) {
    if (field->FieldType == F_Locked) {
      lock = field;
      break;
    }
  }
  if (!lock) {
    return;
  }
  for (int32_t row = 1; row <= recordset_.Rows(); ++row) {
    const Variant value = lock->GetValue(row);
    if (value.IsBlank() || (IsNumeric(value) && value.ToDouble() == 0)) {
      continue;  // an unlocked row: its mark is already set
    }
    // Storing the value anew runs the lock rule for the row: blank, then back.
    lock->SetValue(Variant::Null(), row);
    lock->SetValue(value, row);
  }
}

void LockMarks::DeleteRecordBefore(bool& Cancel) {
  if (!Cancel && !recordset_.GetEdit()) {
    Cancel = true;
    MdlProcess::ShowInfor(LoadResString(150), recordset_.SysErrState);
  }
}

}  // namespace varnel::app
