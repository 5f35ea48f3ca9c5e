#include <vector>

#include "compute_fixture.h"

namespace varnel::testing {
namespace {

struct Case {
  const char* expression;
  Variant expected;
  const char* titles = "";  // message boxes shown, in order
  const char* text = "";    // the last box's text, when one is shown
};

class Evaluator : public ComputeTest {
 protected:
  Evaluator() {
    Field("A", int32_t{1});
    Field("B", int32_t{2});
    Field("Text", "x");
    Field("Nothing", Variant::Null());
    Field("Zero", int32_t{0});
    Field("Net+", int32_t{10});
    Field("A-B", int32_t{100});
    Field("1", int32_t{50});
    Field("xy", int32_t{7});
  }

  void Check(const std::vector<Case>& cases) {
    for (const Case& c : cases) {
      capture.ui().shown.clear();
      EXPECT_EQ(Evaluate(c.expression), c.expected) << c.expression;
      EXPECT_EQ(Titles(), c.titles) << c.expression;
      EXPECT_EQ(capture.LastText(), c.text) << c.expression;
      ExpectRowsLikeOneByOne(c.expression, 2);
    }
  }
};

TEST_F(Evaluator, ComputesByOperatorPrecedenceAndResolvesFieldsAfterOperators) {
  Check({
      {"Qty*Price", Variant(Currency{37500})},
      {" Qty * Price ", Variant(Currency{37500})},
      {"(A+B)*2", Variant(6.0)},
      {"A+B*2", Variant(5.0)},
      {"A-B-A", Variant(int32_t{-2})},
      {"((A))+B", Variant(int32_t{3})},
      {"A&B*2", Variant("14")},
      {"Text&Nothing", Variant("x")},
      {"1+2", Variant("12")},
      {"1*2", Variant(2.0)},  // a number never names a field
      {"1.50", Variant("1.5")},
      {"1.50*2", Variant(3.0)},
      {"1,000", Variant("1")},
      {"Qty", Variant("Qty")},  // only an operator resolves a field name
      {"A/B", Variant(0.5)},
      {"Net+*2", Variant(20.0)},      // the name ends at its operator character
      {"A-B", Variant(int32_t{-1})},  // an operator inside a name is an operator
      {"x&y&A", Variant("71")},       // a text result that names a field is resolved
  });
}

TEST_F(Evaluator, MissingOperandsAndFailuresFollowTheOperatorsRules) {
  Check({
      {"Nothing+A", Variant(int32_t{1})},
      {"Nothing-A", Variant(int32_t{1})},
      {"Nothing+Nothing", Variant::Null()},
      {"Nothing*A", Variant::Null()},
      {"A/Nothing", Variant::Null()},
      {"A/Zero", Variant(), "Operate", "Division by zero\r\n1/0"},
      {"[Qty]*[Price]", Variant(), "Operate", "Type mismatch\r\n[Qty]*[Price]"},
      {"A/Zero+B", Variant(int32_t{2}), "Operate",
       "Division by zero\r\n1/0"},                                // goes on with Empty
      {"qty*2", Variant(), "Operate", "Type mismatch\r\nqty*2"},  // names are case-sensitive
      {"Text+A", Variant(), "Operate", "Type mismatch\r\nx+1"},
      {"-5", Variant("5"), "Pop", "Subscript out of range"},
      {"A-", Variant(int32_t{1}), "Pop", "Subscript out of range"},
      {"", Variant(), "GetTop", "Subscript out of range"},
      {"(A+B", Variant(), "Exp_Reduced", "Error"},
      {"A)(B", Variant(), "Exp_Reduced", "Error"},
  });
  SetThreadUILanguage(2052);
  Evaluate("(A");
  EXPECT_EQ(capture.LastText(), "错误");
}

TEST_F(Evaluator, NeedsARecordsetAndReadsTheRowItIsGiven) {
  MdlCompute::Expression = "A+B";
  MdlCompute::CurRecordset = nullptr;
  EXPECT_EQ(MdlCompute::Exp_Reduced(), Variant());
  EXPECT_EQ(Titles(), "Exp_Reduced");
  const BulkScope quiet;
  rs.Item("Qty")->SetValue(int32_t{4}, 2);
  rs.Item("Price")->SetValue(Currency{10000}, 2);
  EXPECT_EQ(Evaluate("Qty*Price", 2), Variant(Currency{40000}));
  EXPECT_EQ(Evaluate("Qty*Price", 7), Variant::Null()) << "a row outside the store is Empty";
}

// A column of "field op field" over every pair of kinds (the fast path of
// whole number times Currency among them, overflow included) gives, row by
// row, the values and messages of evaluating each row on its own.
TEST_F(ComputeTest, ColumnOfFieldTimesFieldEqualsRowByRow) {
  const Variant values[] = {Variant(int32_t{3}),
                            Variant(int16_t{-7}),
                            Variant(Currency{12500}),
                            Variant(Currency{INT64_MAX / 2}),
                            Variant(int32_t{INT32_MIN}),
                            Variant(2.5),
                            Variant::Null(),
                            Variant("4"),
                            Variant(true),
                            Variant(Currency{-1}),
                            Variant(int64_t{5}),
                            Variant()};
  const int32_t count = static_cast<int32_t>(std::size(values));
  rs.Rows(count * count);
  const BulkScope quiet;
  auto left = rs.Add("L");
  auto right = rs.Add("R");
  for (int32_t row = 1; row <= count * count; ++row) {
    left->SetValue(values[(row - 1) / count], row);
    right->SetValue(values[(row - 1) % count], row);
  }
  ExpectRowsLikeOneByOne("L*R", count * count);
  ExpectRowsLikeOneByOne("L+R", count * count);
}

}  // namespace
}  // namespace varnel::testing
