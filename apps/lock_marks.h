// Locked rows are read-only from the moment they are loaded, and cannot be
// deleted either. The recordset sets a row's edit mark from its lock field
// (F_Locked) only when that value changes, and a load marks every row
// editable, so this sink runs the lock rule on every loaded row whose lock
// value is set, right after each load; and it cancels the deletion of a row
// that is not editable, with the read-only notice.
#pragma once

#include "varnel/varnel.h"

namespace varnel::app {

class LockMarks : public ClsRecordsetEvents {
 public:
  explicit LockMarks(ClsRecordset& recordset) : recordset_(recordset) {}
  void DataSourceInit() override { Apply(); }
  void DataSourceRefresh() override { Apply(); }
  void DeleteRecordBefore(bool& Cancel) override;

 private:
  void Apply();

  ClsRecordset& recordset_;
};

}  // namespace varnel::app
