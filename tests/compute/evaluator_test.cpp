#include "compute_fixture.h"

namespace varnel::testing {
namespace {

class Evaluator : public ComputeTest {
 protected:
  Evaluator() {
    Field("Qty", int32_t{3});
    Field("Price", Currency{12500});
    Field("A", int32_t{1});
    Field("B", int32_t{2});
    Field("Text", "x");
    Field("Nothing", Variant::Null());
    Field("Zero", int32_t{0});
  }
};

struct Case {
  const char* expression;
  Variant expected;
  const char* titles;  // message boxes shown, in order
};

TEST_F(Evaluator, ComputesByOperatorPrecedence) {
  const Case cases[] = {
      {"Qty*Price", Variant(Currency{37500}), ""},
      {" Qty * Price ", Variant(Currency{37500}), ""},
      {"(A+B)*2", Variant(6.0), ""},
      {"A+B*2", Variant(5.0), ""},
      {"A-B-A", Variant(int32_t{-2}), ""},
      {"((A))+B", Variant(int32_t{3}), ""},
      {"A&B*2", Variant("14"), ""},
      {"Text&Nothing", Variant("x"), ""},
      {"1+2", Variant("12"), ""},
      {"1*2", Variant(2.0), ""},
      {"1.50", Variant("1.5"), ""},
      {"1.50*2", Variant(3.0), ""},
      {"1,000", Variant("1"), ""},
      {"Qty", Variant("Qty"), ""},  // only an operator resolves a field name
      {"A/B", Variant(0.5), ""},
  };
  for (const Case& c : cases) {
    capture.ui().shown.clear();
    EXPECT_EQ(Evaluate(c.expression), c.expected) << c.expression;
    EXPECT_EQ(Titles(), c.titles) << c.expression;
  }
}

TEST_F(Evaluator, MissingOperandsFollowTheOperatorsRules) {
  const Case cases[] = {
      {"Nothing+A", Variant(int32_t{1}), ""}, {"A+Nothing", Variant(int32_t{1}), ""},
      {"Nothing-A", Variant(int32_t{1}), ""}, {"Nothing+Nothing", Variant::Null(), ""},
      {"Nothing*A", Variant::Null(), ""},     {"A/Nothing", Variant::Null(), ""},
      {"Text+A", Variant(), "Operate"},       {"-5", Variant("5"), "Pop"},
      {"A-", Variant(int32_t{1}), "Pop"},     {"", Variant(), "GetTop"},
  };
  for (const Case& c : cases) {
    capture.ui().shown.clear();
    EXPECT_EQ(Evaluate(c.expression), c.expected) << c.expression;
    EXPECT_EQ(Titles(), c.titles) << c.expression;
  }
}

TEST_F(Evaluator, AFailingOperatorShowsItsOperandsAndGivesEmptyForItsStep) {
  EXPECT_EQ(Evaluate("A/Zero"), Variant());
  ASSERT_EQ(Titles(), "Operate");
  EXPECT_EQ(capture.LastText(), "Division by zero\r\n1/0");

  capture.ui().shown.clear();
  EXPECT_EQ(Evaluate("[Qty]*[Price]"), Variant());
  ASSERT_EQ(Titles(), "Operate");
  EXPECT_EQ(capture.LastText(), "Type mismatch\r\n[Qty]*[Price]");

  capture.ui().shown.clear();
  EXPECT_EQ(Evaluate("A/Zero+B"), Variant(int32_t{2})) << "the evaluation goes on with Empty";
  EXPECT_EQ(Titles(), "Operate");
}

TEST_F(Evaluator, MalformedExpressionsReportTheEvaluatorsFailure) {
  for (const char* expression : {"(A+B", "A+B)", "A)(B"}) {
    capture.ui().shown.clear();
    EXPECT_EQ(Evaluate(expression), Variant()) << expression;
    EXPECT_EQ(Titles(), "Exp_Reduced") << expression;
    EXPECT_EQ(capture.LastText(), "Error") << expression;
  }
  SetThreadUILanguage(2052);
  capture.ui().shown.clear();
  Evaluate("(A");
  EXPECT_EQ(capture.LastText(), "错误");
}

TEST_F(Evaluator, RewritesTheExpressionAndNeedsARecordset) {
  Evaluate(" Qty *  Price");
  EXPECT_EQ(MdlCompute::Expression, "Qty*Price#");
  Evaluate("");
  EXPECT_EQ(MdlCompute::Expression, "#");

  capture.ui().shown.clear();
  MdlCompute::Expression = "A+B";
  MdlCompute::CurRecordset = nullptr;
  EXPECT_EQ(MdlCompute::Exp_Reduced(), Variant());
  EXPECT_EQ(Titles(), "Exp_Reduced");
  EXPECT_EQ(MdlCompute::Expression, "A+B");
}

TEST_F(Evaluator, FieldNamesAreExactAndMayEndInAnOperatorCharacter) {
  Field("Net+", int32_t{10});
  Field("A-B", int32_t{100});
  Field("1", int32_t{50});
  Field("xy", int32_t{7});
  const Case cases[] = {
      {"Net+*2", Variant(20.0), ""},      // the name ends at its operator character
      {"A-B", Variant(int32_t{-1}), ""},  // an operator inside a name is an operator
      {"1*2", Variant(2.0), ""},          // a number never names a field
      {"x&y&A", Variant("71"), ""},       // a text result that names a field is resolved
  };
  for (const Case& c : cases) {
    capture.ui().shown.clear();
    EXPECT_EQ(Evaluate(c.expression), c.expected) << c.expression;
    EXPECT_EQ(Titles(), c.titles) << c.expression;
  }
  capture.ui().shown.clear();
  EXPECT_EQ(Evaluate("qty*2"), Variant()) << "names are case-sensitive";
  EXPECT_EQ(Titles(), "Operate");
}

TEST_F(Evaluator, ReadsTheRowItIsGiven) {
  {
    const BulkScope quiet;
    rs.Item("Qty")->SetValue(int32_t{4}, 2);
    rs.Item("Price")->SetValue(Currency{10000}, 2);
  }
  EXPECT_EQ(Evaluate("Qty*Price", 2), Variant(Currency{40000}));
  EXPECT_EQ(Evaluate("Qty*Price", 1), Variant(Currency{37500}));
  EXPECT_EQ(Evaluate("Qty*Price", 7), Variant::Null()) << "a row outside the store is Empty";
}

}  // namespace
}  // namespace varnel::testing
