// A sink that records the change events with their arguments, for example
// "ValueChange(2,1)" or "ValueQueryChange(Qty)", and a recordset of three rows
// with the fields Qty and Price that reports to it.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "varnel/varnel.h"

namespace varnel::testing {

class ChangeSink : public ClsRecordsetEvents {
 public:
  void ValueChange(int32_t Row, int32_t Col) override { Record("ValueChange", Row, Col); }
  void SymbolChange(int32_t Row, int32_t Col) override { Record("SymbolChange", Row, Col); }
  void ValueQueryChange(const std::string& FieldName) override {
    events.push_back("ValueQueryChange(" + FieldName + ")");
  }
  void EditStatusChange() override { events.push_back("EditStatusChange"); }
  int Count(const std::string& event) const {
    return static_cast<int>(std::count(events.begin(), events.end(), event));
  }

  std::vector<std::string> events;

 private:
  void Record(const char* name, int32_t row, int32_t col) {
    events.push_back(std::string(name) + "(" + std::to_string(row) + "," + std::to_string(col) +
                     ")");
  }
};

class ChangeTest : public ::testing::Test {
 protected:
  void SetUp() override {
    qty = rs.Add("Qty");
    price = rs.Add("Price");
    rs.Rows(3);
    rs.Advise(&sink);
  }

  ClsRecordset rs;
  ChangeSink sink;
  std::shared_ptr<ClsFields> qty, price;
};

}  // namespace varnel::testing
