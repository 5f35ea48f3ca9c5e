// A progress dialog for long loads (InitDataSource, RefreshDataSource,
// ExecuteQuery), fed by the connection's rows-read callback, with Cancel.
//
//   varnel::qt::LoadProgressDialog progress(rs, *connection, &window);
//   rs.InitDataSource();   // a load of more than a moment shows the dialog
//
// The dialog is application-modal and keeps the window painted while rows are
// read. Cancel stops the load as a failure that is not reported: the
// recordset's rule for a failed load decides what the rows are afterwards.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <cstdint>
#include <functional>

#include "varnel/export.h"
#include "varnel/varnel.h"

class QProgressDialog;
class QWidget;

VARNEL_API_BEGIN

namespace varnel::qt {

/// Shows the progress of the loads of one recordset reading through one connection.
class LoadProgressDialog : public QObject, private ClsRecordsetEvents {
  Q_OBJECT

 public:
  /// Watches Recordset's loads on Connection; REQUIRES both outlive the dialog.
  LoadProgressDialog(ClsRecordset& Recordset, db::Connection& Connection, QWidget* Parent);
  ~LoadProgressDialog() override;

  /// Counts the rows a load will read (for a bar with an end); the default
  /// shows a busy bar with the rows read so far. Counter gets the load's condition.
  void SetRowCounter(std::function<int64_t(const std::string& Condition)> Counter);
  /// Milliseconds a load runs before the dialog appears (default 400).
  void SetDelay(int Milliseconds) { delay_ms_ = Milliseconds; }
  /// The dialog, while a load shows it (else nullptr).
  QProgressDialog* Dialog() const { return dialog_; }
  /// True when the last load was cancelled by the user.
  bool Cancelled() const { return cancelled_; }

 signals:
  /// Rows read so far by the running load.
  void RowsRead(qint64 Rows);

 private:
  void DataSourceInitUser(const std::string& OutCondition, const std::string& OutOrderBy) override;
  void DataSourceRefreshUser(const std::string& OutCondition,
                             const std::string& OutOrderBy) override;
  void SysDataSourceInit() override;
  void SysDataSourceRefresh() override;
  void Begin(const std::string& condition);
  void Progress(int64_t rows);
  void End();

  ClsRecordset& rs_;
  db::Connection& connection_;
  QWidget* parent_;
  int32_t cookie_ = 0;
  std::function<int64_t(const std::string&)> counter_;
  QProgressDialog* dialog_ = nullptr;
  QElapsedTimer clock_;
  bool active_ = false;
  bool cancelled_ = false;
  int delay_ms_ = 400;
  int64_t total_ = 0;
};

}  // namespace varnel::qt

VARNEL_API_END
