// The databases the database-facing suites run on, one suite for all:
//
//   class LoadTest : public ::testing::TestWithParam<TestProvider> {
//     TestDatabase db{GetParam()};   // db.ConnectionString() for the recordset
//   };
//   VARNEL_ON_EVERY_PROVIDER(LoadTest);
//
// SQLite: files in a temporary folder. PostgreSQL: a schema of its own, on
// the server whose connection string is in VARNEL_TEST_PG (scripts/test.sh
// starts one for the test run); without it the test fails and says why. SQL
// written for both keeps to what both read: types INTEGER, VARCHAR(n), TEXT,
// FLOAT, NUMERIC(p,s), MONEY, DATE, TIMESTAMP, BOOLEAN (TRUE/FALSE literals),
// and column names in double quotes where their case matters ("Id").
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "support/temp_dir.h"

namespace varnel::testing {

enum class TestProvider { kSqlite, kPostgres };

// How a test's parameter reads in test lists: "SQLite", "PostgreSQL".
void PrintTo(TestProvider provider, std::ostream* out);

// Every provider, for ::testing::ValuesIn.
std::vector<TestProvider> AllTestProviders();

// "SQLite", "PostgreSQL": the parameter's part of a test's name.
std::string TestProviderName(const ::testing::TestParamInfo<TestProvider>& info);

// The connection string of the test PostgreSQL server (VARNEL_TEST_PG);
// raises std::runtime_error, saying how to get one, when it is not set.
std::string TestPostgresServer();

// Fresh, empty databases for one test, removed at its end (destroy the
// connections to them first).
class TestDatabase {
 public:
  explicit TestDatabase(TestProvider provider);
  ~TestDatabase();
  TestDatabase(const TestDatabase&) = delete;
  TestDatabase& operator=(const TestDatabase&) = delete;

  TestProvider provider() const { return provider_; }
  // The connection string of the database called Name: each name is a
  // database of its own, made on first use.
  std::string ConnectionString(const std::string& name = "test.db");

 private:
  TestProvider provider_;
  TempDir dir_;
  std::string server_;                          // PostgreSQL: the test server
  std::map<std::string, std::string> schemas_;  // PostgreSQL: name -> schema
};

}  // namespace varnel::testing

// Runs every TEST_P of Suite once per provider.
#define VARNEL_ON_EVERY_PROVIDER(Suite)                                                \
  INSTANTIATE_TEST_SUITE_P(Providers, Suite,                                           \
                           ::testing::ValuesIn(::varnel::testing::AllTestProviders()), \
                           ::varnel::testing::TestProviderName)
