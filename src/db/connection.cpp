// Connection: opens the driver its connection string names and forwards to it.
#include <limits>
#include <utility>

#include "db/connection_string.h"
#include "db/db_errors.h"
#include "db/driver.h"
#include "db/providers.h"
#include "varnel/db.h"

namespace varnel::db {

Connection::Connection() = default;

Connection::~Connection() {
  // Statements of open recordsets may keep the database open after the
  // connection lets go of it, so an unfinished transaction is undone here.
  if (driver_ != nullptr && driver_->InTransaction()) {
    try {
      driver_->RollbackTransaction();
    } catch (const VbError&) {
      // Nothing to report to: the connection is going away.
    }
  }
}

void Connection::Open(const std::string& ConnectionString, const std::string& UserID,
                      const std::string& Password, int32_t /*Options*/) {
  if (driver_ != nullptr) {
    internal::RaiseDbError(internal::kErrObjectOpen, "(The connection is already open.)");
  }
  const auto settings = internal::ConnectionSettings::Parse(ConnectionString);
  driver_ = internal::OpenDriver(settings, UserID, Password);
  connection_string_ = ConnectionString;
}

void Connection::Close() {
  internal::Driver& driver = Driver();
  if (driver.InTransaction()) {
    driver.RollbackTransaction();
  }
  driver_.reset();
}

int32_t Connection::State() const { return driver_ != nullptr ? 1 : 0; }

int32_t Connection::Execute(const std::string& Sql, const std::vector<Variant>& Params) {
  internal::Driver& driver = Driver();
  const int64_t affected = driver.Execute(driver.DatabaseSql(Sql), Params);
  return affected > std::numeric_limits<int32_t>::max() ? std::numeric_limits<int32_t>::max()
                                                        : static_cast<int32_t>(affected);
}

void Connection::BeginTrans() {
  internal::Driver& driver = Driver();
  if (driver.InTransaction()) {
    internal::RaiseProviderError(
        "BeginTrans: a transaction is already open on this connection (transactions do not "
        "nest).");
  }
  driver.BeginTransaction();
}

void Connection::CommitTrans() {
  internal::Driver& driver = Driver();
  if (!driver.InTransaction()) {
    internal::RaiseProviderError("CommitTrans: no transaction is open on this connection.");
  }
  driver.CommitTransaction();
}

void Connection::RollbackTrans() {
  internal::Driver& driver = Driver();
  if (!driver.InTransaction()) {
    internal::RaiseProviderError("RollbackTrans: no transaction is open on this connection.");
  }
  driver.RollbackTransaction();
}

void Connection::OnRowsRead(std::function<void(int64_t Rows)> Callback, int64_t Every) {
  on_rows_read_ = std::move(Callback);
  rows_read_every_ = Every;
}

internal::Driver& Connection::Driver() const {
  if (driver_ == nullptr) {
    internal::RaiseDbError(internal::kErrObjectClosed, "(The connection is closed.)");
  }
  return *driver_;
}

}  // namespace varnel::db
