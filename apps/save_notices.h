// Every save says what it did. A row is written when the user types save and
// also on their behalf (a move, a new query, quit, the end of the input):
// this sink, attached after the writer, notes each answered UserUpdateRecord
// so that the console can announce it: "Saved new row 301.", "Deleted row 12
// from the database."
#pragma once

#include <optional>
#include <string>

#include "varnel/varnel.h"

namespace varnel::app {

class SaveNotices : public ClsRecordsetEvents {
 public:
  explicit SaveNotices(ClsRecordset& recordset) : recordset_(recordset) {}
  void UserUpdateRecord(Enum_EditRecord& Update_Succeed) override;

  // The save since the last call, if one was made: whether it succeeded and,
  // when it did, its announcement.
  struct Notice {
    std::string text;
    bool saved = false;
  };
  std::optional<Notice> Take();

 private:
  ClsRecordset& recordset_;
  std::optional<Notice> notice_;
};

}  // namespace varnel::app
