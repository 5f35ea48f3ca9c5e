// Progress of long loads, on a terminal only: "Loading Orders: 120000 of
// 500000 rows", redrawn in place on standard error while the rows are read.
//
// The recordset announces a load (DataSourceInitUser, DataSourceRefreshUser)
// with its condition, so the total is counted first; the rows read are
// counted as SQLite produces them, through a row trace installed on every
// SQLite connection the process opens. Other databases load without progress.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "varnel/varnel.h"

namespace varnel::app {

class LoadProgress : public ClsRecordsetEvents {
 public:
  // Installs the row counter for SQLite connections opened from now on. Call
  // once, before the first connection is opened, and only for a terminal.
  static void InstallRowCounter();

  explicit LoadProgress(ClsRecordset& recordset) : recordset_(recordset) {}

  void DataSourceInitUser(const std::string& OutCondition, const std::string& OutOrderBy) override;
  void DataSourceRefreshUser(const std::string& OutCondition,
                             const std::string& OutOrderBy) override;
  void SysDataSourceInit() override;
  void SysDataSourceRefresh() override;

 private:
  void Begin(const std::string& condition);
  void End();

  ClsRecordset& recordset_;
};

// Reopens the recordset's SELECT on every refresh: a recordset kept open
// (U_User) is otherwise reused as it is, so a new query condition would not
// take effect.
class ReopenOnRefresh : public ClsRecordsetEvents {
 public:
  explicit ReopenOnRefresh(ClsRecordset& recordset) : recordset_(recordset) {}
  void DataSourceRefreshUser(const std::string& OutCondition,
                             const std::string& OutOrderBy) override;

 private:
  ClsRecordset& recordset_;
};

}  // namespace varnel::app
