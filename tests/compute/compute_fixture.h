// A recordset with two rows and the fields Qty and Price for evaluator tests, and a way to
// evaluate an expression as the recordset's callers do.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "compute/evaluate_rows.h"
#include "fields/field_access.h"
#include "support/capture_ui.h"
#include "varnel/varnel.h"

namespace varnel::testing {

class ComputeTest : public ::testing::Test {
 protected:
  ComputeTest() {
    rs.Rows(2);
    Field("Qty", int32_t{3});
    Field("Price", Currency{12500});
  }

  // Adds a field holding value in row 1.
  void Field(const std::string& name, const Variant& value) {
    const BulkScope quiet;  // no events, no recomputation
    rs.Add(name)->SetValue(value, 1);
  }

  Variant Evaluate(const std::string& expression, int32_t row = 1, ClsRecordset* in = nullptr) {
    MdlCompute::Expression = expression;
    MdlCompute::CurRow = row;
    MdlCompute::CurRecordset = in != nullptr ? in : &rs;
    Variant value = MdlCompute::Exp_Reduced();
    MdlCompute::CurRecordset = nullptr;
    return value;
  }
  std::string Text(const std::string& expression) { return CStr(Evaluate(expression)); }

  // The titles of the message boxes shown, joined by ",".
  std::string Titles() const {
    std::string titles;
    for (const ShownMessage& m : capture.shown()) {
      titles += (titles.empty() ? "" : ",") + m.caption;
    }
    return titles;
  }

  // Evaluating rows 1 to last at once gives each row's value and messages, in
  // order, as evaluating them one by one does.
  void ExpectRowsLikeOneByOne(const std::string& expression, int32_t last) {
    std::vector<Variant> one_by_one(static_cast<size_t>(last) + 1);
    capture.ui().shown.clear();
    for (int32_t row = 1; row <= last; ++row) {
      one_by_one[static_cast<size_t>(row)] = Evaluate(expression, row);
    }
    const std::string titles = Titles();
    capture.ui().shown.clear();
    std::vector<Variant> at_once(one_by_one.size(), Variant("stale"));
    at_once[0] = Variant();
    internal::EvaluateRows(rs, expression, 1, last, at_once);
    EXPECT_EQ(at_once, one_by_one) << expression;
    EXPECT_EQ(Titles(), titles) << expression;
    EXPECT_EQ(MdlCompute::CurRecordset, nullptr);
  }

  using BulkScope = internal::BulkScope;
  CaptureScope capture;
  ClsRecordset rs;
};

}  // namespace varnel::testing
