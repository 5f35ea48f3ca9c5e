#include "varnel/qt/load_progress_dialog.h"

#include <QCoreApplication>
#include <QLocale>
#include <QProgressDialog>

#include "qt/texts.h"
#include "qt/value_convert.h"

namespace varnel::qt {

using detail::Tr;

namespace {
constexpr int64_t kRowsPerReport = 2048;
}

LoadProgressDialog::LoadProgressDialog(ClsRecordset& Recordset, db::Connection& Connection,
                                       QWidget* Parent)
    : QObject(Parent), rs_(Recordset), connection_(Connection), parent_(Parent) {
  cookie_ = rs_.Advise(this);
  connection_.OnRowsRead([this](int64_t rows) { Progress(rows); }, kRowsPerReport);
}

LoadProgressDialog::~LoadProgressDialog() {
  connection_.OnRowsRead(nullptr);
  rs_.Unadvise(cookie_);
  delete dialog_;
}

void LoadProgressDialog::SetRowCounter(std::function<int64_t(const std::string&)> Counter) {
  counter_ = std::move(Counter);
}

void LoadProgressDialog::DataSourceInitUser(const std::string& OutCondition, const std::string&) {
  Begin(OutCondition);
}

void LoadProgressDialog::DataSourceRefreshUser(const std::string& OutCondition,
                                               const std::string&) {
  Begin(OutCondition);
}

void LoadProgressDialog::SysDataSourceInit() { End(); }
void LoadProgressDialog::SysDataSourceRefresh() { End(); }

void LoadProgressDialog::Begin(const std::string& condition) {
  total_ = counter_ ? counter_(condition) : 0;
  cancelled_ = false;
  active_ = true;
  clock_.start();
}

void LoadProgressDialog::Progress(int64_t rows) {
  if (!active_ || clock_.elapsed() < delay_ms_) {
    return;
  }
  if (dialog_ == nullptr) {
    dialog_ = new QProgressDialog(parent_);
    dialog_->setObjectName("LoadProgress");
    dialog_->setWindowModality(Qt::ApplicationModal);  // nothing else may touch the recordset
    dialog_->setMinimumDuration(0);
    dialog_->setAutoClose(false);
    dialog_->setAutoReset(false);
  }
  dialog_->setWindowTitle(Tr("Loading"));
  dialog_->setCancelButtonText(Tr("Cancel"));
  dialog_->setRange(0, total_ > 0 ? 1000 : 0);
  if (total_ > 0) {
    dialog_->setValue(static_cast<int>(std::min<int64_t>(1000, rows * 1000 / total_)));
  }
  dialog_->setLabelText(Tr("Loading %1: %2 rows read")
                            .arg(detail::ToQString(rs_.TableName))
                            .arg(QLocale().toString(static_cast<qlonglong>(rows))));
  dialog_->show();
  emit RowsRead(rows);
  QCoreApplication::processEvents();  // paints, and lets Cancel be pressed
  if (dialog_->wasCanceled()) {
    cancelled_ = true;
    active_ = false;
    dialog_->hide();
    dialog_->reset();
    // Number 0: the load fails without an error report; the user asked for it.
    throw VbError(0, Tr("Loading cancelled").toStdString());
  }
}

void LoadProgressDialog::End() {
  active_ = false;
  if (dialog_ != nullptr) {
    dialog_->hide();
    dialog_->reset();
  }
}

}  // namespace varnel::qt
