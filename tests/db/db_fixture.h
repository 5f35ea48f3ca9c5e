// Shared set-up of the database tests: a fresh database file per test and a
// way to catch the VbError an operation raises.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "support/temp_dir.h"
#include "varnel/db.h"

namespace varnel::testing {

// The VbError that Body raises; fails the test (and returns number 0) when
// Body raises nothing.
template <class Body>
VbError ErrorOf(Body&& body) {
  try {
    body();
  } catch (const VbError& error) {
    return error;
  }
  ADD_FAILURE() << "expected a VbError";
  return VbError(0, "no error");
}

// A database suite on a new SQLite file. The connection strings are made here
// only, so that the suites can be run on another provider from this spot.
class DbTest : public ::testing::Test {
 protected:
  // A connection string for a new database called Name in this test's folder.
  std::string ConnectionString(const std::string& name = "test.db") const {
    return dir_.SqliteConnection(name);
  }

  std::shared_ptr<db::Connection> Connect(const std::string& name = "test.db") const {
    auto connection = std::make_shared<db::Connection>();
    connection->Open(ConnectionString(name));
    return connection;
  }

  std::shared_ptr<db::Recordset> Query(const std::string& source) const {
    auto rs = std::make_shared<db::Recordset>();
    rs->Open(source, cn_);
    return rs;
  }

  const std::shared_ptr<db::Connection>& cn() const { return cn_; }

 private:
  TempDir dir_;
  std::shared_ptr<db::Connection> cn_ = Connect();
};

}  // namespace varnel::testing
