// Locked rows are read-only from the moment they are loaded. The recordset
// sets a row's edit mark from its lock field (F_Locked) only when that value
// changes; a load marks every row editable. This sink runs the lock rule on
// every loaded row whose lock value is set, right after each load.
#pragma once

#include "varnel/varnel.h"

namespace varnel::app {

class LockMarks : public ClsRecordsetEvents {
 public:
  explicit LockMarks(ClsRecordset& recordset) : recordset_(recordset) {}
  void DataSourceInit() override { Apply(); }
  void DataSourceRefresh() override { Apply(); }

 private:
  void Apply();

  ClsRecordset& recordset_;
};

}  // namespace varnel::app
