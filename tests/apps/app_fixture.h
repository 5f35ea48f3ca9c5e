// A fresh data directory per test, the sample database created by a first
// run of the program, and direct access to the database file to check what
// the program wrote.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "app_process.h"
#include "support/temp_dir.h"
#include "varnel/varnel.h"

namespace varnel::testing {

using Rows = std::vector<std::vector<Variant>>;

class AppSession : public ::testing::Test {
 protected:
  void SetUp() override;

  // Runs the sample screen in English with one command per line.
  AppRun Run(const std::vector<std::string>& lines);

  std::string SamplePath() const { return (dir_.path() / "sample.db").string(); }
  std::shared_ptr<db::Connection> Database();
  Rows Query(const std::string& sql);
  Variant Scalar(const std::string& sql);
  // The command that goes to an order's row (the screen orders by OrderDate, OrderId).
  std::string Goto(int32_t order_id);
  // The first order on the screen that matches Condition.
  int32_t FirstOrderWhere(const std::string& condition);

  TempDir dir_;

 private:
  std::shared_ptr<db::Connection> database_;
};

// --data-dir Dir --lang en, then Extra.
std::vector<std::string> AppArgs(const TempDir& dir, const std::vector<std::string>& extra = {});
// The rows that Sql reads on Connection.
Rows QueryRows(const std::shared_ptr<db::Connection>& connection, const std::string& sql);
// Counts the lines of Output that contain Text (that start with it if At_start).
int CountLines(const std::string& output, const std::string& text, bool at_start = false);
// Expects each of Lines in Output, or, for a line "!text", text nowhere in it.
void ExpectShown(const std::string& output, const std::vector<std::string>& lines);
// The value that the last form in Output shows for the field shown as Name.
std::string FieldValue(const std::string& output, const std::string& name);
// The status lines of Output ("Row 3 of 300 | Browse | ..."), in order.
std::vector<std::string> StatusLines(const std::string& output);
// The status part after the row ("Browse", "Modified", ...) of each status line.
std::vector<std::string> Statuses(const std::string& output);

}  // namespace varnel::testing
