// Progress of loads: a connection's OnRowsRead callback hears the rows read
// by each recordset read on it, every so many rows and at the end.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "db/db_fixture.h"

namespace varnel::testing {
namespace {

class RowsRead : public DbTest {
 protected:
  void SetUp() override { cn()->Execute("CREATE TABLE T (\"Id\" INTEGER)"); }

  // T holds the rows 1..Rows.
  void Fill(int rows) {
    cn()->Execute("DELETE FROM T");
    std::string values;
    for (int id = 1; id <= rows; ++id) {
      values += (values.empty() ? "" : ", ") + ("(" + std::to_string(id) + ")");
    }
    if (!values.empty()) {
      cn()->Execute("INSERT INTO T VALUES " + values);
    }
  }

  // Every count reported from now on is added to heard_.
  void Listen(int64_t every) {
    heard_.clear();
    cn()->OnRowsRead([this](int64_t rows) { heard_.push_back(rows); }, every);
  }

  std::vector<int64_t> heard_;
};

TEST_P(RowsRead, CallbackSeesIncreasingCountsEndingAtTheRowCount) {
  struct Case {
    int rows;
    int64_t every;
    std::vector<int64_t> heard;
  };
  const Case cases[] = {
      {25, 10, {10, 20, 25}}, {20, 10, {10, 20}},               // the total is not told twice
      {3, 10, {3}},           {3, 1, {1, 2, 3}},  {3, 0, {3}},  // the total only
      {0, 10, {0}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::to_string(c.rows) + " rows, every " + std::to_string(c.every));
    Fill(c.rows);
    Listen(c.every);
    EXPECT_EQ(Query("T")->RecordCount(), c.rows);
    EXPECT_EQ(heard_, c.heard);
  }
  heard_.clear();
  cn()->OnRowsRead(nullptr);
  EXPECT_EQ(Query("T")->RecordCount(), 0);
  EXPECT_TRUE(heard_.empty()) << "an empty callback stops the reports";
}

VARNEL_ON_EVERY_PROVIDER(RowsRead);

}  // namespace
}  // namespace varnel::testing
