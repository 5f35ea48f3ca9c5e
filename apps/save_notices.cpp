#include "save_notices.h"

#include "texts.h"

namespace varnel::app {

void SaveNotices::UserUpdateRecord(Enum_EditRecord& Update_Succeed) {
  const int32_t row = recordset_.AbsolutePosition();
  const Enum_EditStatus status = recordset_.EditStatus();
  Text text = Text::SavedRow;
  if (status == E_AddNew || status == E_Copy) {
    text = Text::SavedNewRow;
  } else if (status == E_Delete || status == E_ModifyDelete) {
    text = Text::DeletedRow;
  }
  notice_ = Notice{Say(text, fmt::arg("row", row)), Update_Succeed == E_Succeed};
}

std::optional<SaveNotices::Notice> SaveNotices::Take() {
  std::optional<Notice> notice = std::move(notice_);
  notice_.reset();
  return notice;
}

}  // namespace varnel::app
