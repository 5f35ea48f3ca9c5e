// Shared set-up of the database tests: a new database per test, on every
// provider (DbTest).
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "support/error_of.h"
#include "support/test_database.h"
#include "varnel/db.h"

namespace varnel::testing {

// Whether Text holds Part; a failure shows both.
inline ::testing::AssertionResult Holds(const std::string& text, const std::string& part) {
  return (text.find(part) != std::string::npos ? ::testing::AssertionSuccess()
                                               : ::testing::AssertionFailure())
         << "'" << text << "' and '" << part << "'";
}

// What GetRows returns: the values of each column, row by row.
using Columns = std::vector<std::vector<Variant>>;

inline std::vector<Variant> Longs(std::initializer_list<int32_t> values) {
  return std::vector<Variant>(values.begin(), values.end());
}

// A database suite run on every provider, on a new database with an open
// connection: TEST_P(Suite, ...) and VARNEL_ON_EVERY_PROVIDER(Suite). The
// connection strings are made here only.
class DbTest : public ::testing::TestWithParam<TestProvider> {
 protected:
  DbTest() : db_(GetParam()), cn_(Connect()) {}

  // A connection string for a new database called Name (the same Name, the
  // same database).
  std::string ConnectionString(const std::string& name = "test.db") {
    return db_.ConnectionString(name);
  }

  std::shared_ptr<db::Connection> Connect(const std::string& name = "test.db") {
    auto connection = std::make_shared<db::Connection>();
    connection->Open(ConnectionString(name));
    return connection;
  }

  std::shared_ptr<db::Recordset> Query(const std::string& source) const {
    auto rs = std::make_shared<db::Recordset>();
    rs->Open(source, cn_);
    return rs;
  }

  // The Ids (a Long column "Id") of the rows of Rs from its current row on.
  static std::vector<int32_t> Ids(db::Recordset& rs) {
    std::vector<int32_t> ids;
    const auto rows = rs.GetRows(-1, {"Id"});
    for (const Variant& id : rows[0]) {
      ids.push_back(id.ToLong());
    }
    return ids;
  }

  const std::shared_ptr<db::Connection>& cn() const { return cn_; }
  bool OnPostgres() const { return db_.provider() == TestProvider::kPostgres; }
  // The words a provider's message holds for the same failure.
  const char* Says(const char* sqlite, const char* postgres) const {
    return OnPostgres() ? postgres : sqlite;
  }

 private:
  TestDatabase db_;  // declared first: removed after the connection closed
  std::shared_ptr<db::Connection> cn_;
};

}  // namespace varnel::testing
