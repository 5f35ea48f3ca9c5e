// Progress of long loads, on a terminal only: "Loading Orders: 120000 of
// 500000 rows", redrawn in place on standard error while the rows are read.
//
// The recordset announces a load (DataSourceInitUser, DataSourceRefreshUser)
// with its condition, so the total is counted first; the rows read are those
// the connection reports (db::Connection::OnRowsRead), on every database.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

#include "varnel/varnel.h"

namespace varnel::app {

class LoadProgress : public ClsRecordsetEvents {
 public:
  // Shows the loads of Recordset, which reads through Connection; construct
  // it only when standard error is a terminal. REQUIRES: Connection outlives it.
  LoadProgress(ClsRecordset& recordset, db::Connection& connection);
  ~LoadProgress() override;  // the connection stops reporting to it
  LoadProgress(const LoadProgress&) = delete;
  LoadProgress& operator=(const LoadProgress&) = delete;

  void DataSourceInitUser(const std::string& OutCondition, const std::string& OutOrderBy) override;
  void DataSourceRefreshUser(const std::string& OutCondition,
                             const std::string& OutOrderBy) override;
  void SysDataSourceInit() override;
  void SysDataSourceRefresh() override;

 private:
  using Clock = std::chrono::steady_clock;

  void Begin(const std::string& condition);
  void RowsRead(int64_t rows);
  void Draw();
  void End();

  ClsRecordset& recordset_;
  db::Connection& connection_;
  // The load being shown; active only between Begin and End.
  bool active_ = false;
  bool drawn_ = false;
  int64_t done_ = 0;
  int64_t total_ = 0;
  Clock::time_point start_;
  Clock::time_point last_draw_;
};

class ReopenOnRefresh : public ClsRecordsetEvents {
 public:
  explicit ReopenOnRefresh(ClsRecordset& recordset) : recordset_(recordset) {}
  void DataSourceRefreshUser(const std::string& OutCondition,
                             const std::string& OutOrderBy) override;

 private:
  ClsRecordset& recordset_;
};

}  // namespace varnel::app
