#include <functional>

#include "compute_fixture.h"
#include "recordset/recordset_state.h"
#include "recordset/row_store.h"

namespace varnel::testing {
namespace {

class CachedTokens : public ComputeTest {
 protected:
  CachedTokens() {
    Field("Qty", int32_t{3});
    Field("Price", Currency{12500});
  }
  std::string Text(const std::string& expression) { return CStr(Evaluate(expression)); }
};

TEST_F(CachedTokens, AreReadAgainWhenFieldsAreAddedRenamedOrRemoved) {
  EXPECT_EQ(Text("Total*2"), "") << "no field Total yet: text times a number";
  Field("Total", int32_t{4});
  EXPECT_EQ(Text("Total*2"), "8");
  rs.Item("Total")->Name = "Sum";
  EXPECT_EQ(Text("Total*2"), "");
  EXPECT_EQ(Text("Sum*2"), "8");

  EXPECT_EQ(Text("Price*2"), "2.5");
  rs.Remove("Qty");  // Price moves to the front
  EXPECT_EQ(Text("Price*2"), "2.5");
  Field("Later", Currency{990000});
  rs.Item("Later")->Name = "Price";
  EXPECT_EQ(Text("Price*2"), "2.5") << "the first field of that name counts";
  rs.Item(1)->Name = "Old";
  EXPECT_EQ(Text("Price*2"), "198");
}

TEST_F(CachedTokens, AreKeptApartForRecordsetsWithOtherFields) {
  ClsRecordset other;
  other.Rows(1);
  {
    const internal::BulkScope quiet;
    other.Add("Price")->SetValue(int32_t{7}, 1);
    other.Add("Qty")->SetValue(int32_t{2}, 1);
  }
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(Text("Qty*Price"), "3.75");
    MdlCompute::Expression = "Qty*Price";
    MdlCompute::CurRow = 1;
    MdlCompute::CurRecordset = &other;
    EXPECT_EQ(CStr(MdlCompute::Exp_Reduced()), "14");
    MdlCompute::CurRecordset = nullptr;
  }
}

TEST_F(CachedTokens, StillShowEveryFailureOfEveryEvaluation) {
  Field("Zero", int32_t{0});
  for (int i = 0; i < 3; ++i) {
    Evaluate("Qty/Zero");
    Evaluate("(Qty");
  }
  EXPECT_EQ(Titles(), "Operate,Exp_Reduced,Operate,Exp_Reduced,Operate,Exp_Reduced");
}

// A UI that evaluates again from inside the first message box it shows.
class ReenteringUi : public CaptureUi {
 public:
  std::function<void()> on_first_box;
  int32_t MsgBox(const std::string& prompt, int32_t buttons, const std::string& title) override {
    if (auto run = std::exchange(on_first_box, nullptr)) {
      run();
    }
    return CaptureUi::MsgBox(prompt, buttons, title);
  }
};

TEST_F(CachedTokens, SurviveAnEvaluationStartedFromAMessageBox) {
  Field("Zero", int32_t{0});
  auto ui = std::make_shared<ReenteringUi>();
  Variant inner;
  ui->on_first_box = [&] {
    Field("Extra", int32_t{1});  // the outer expression's tokens are read again
    inner = Evaluate("Qty/Zero+Qty");
  };
  SetMessageUi(ui);
  const Variant outer = Evaluate("Qty/Zero+Qty");
  EXPECT_EQ(outer, Variant(int32_t{3}));
  EXPECT_EQ(inner, Variant(int32_t{3}));
  EXPECT_EQ(ui->shown.size(), 2u);
}

TEST_F(CachedTokens, EvaluateComputedSetsAndClearsTheEvaluatorState) {
  auto amount = rs.Add("Amount");
  amount->ComputeString = "Qty * Price";
  auto& state = internal::RecordsetAccess::State(rs);
  EXPECT_EQ(internal::EvaluateComputed(state, *amount, 1), Variant(Currency{37500}));
  EXPECT_EQ(MdlCompute::CurRecordset, nullptr);
  EXPECT_EQ(MdlCompute::CurRow, 1);
  EXPECT_EQ(MdlCompute::Expression, "Qty*Price#");

  rs.Item("Qty")->SetValue(int32_t{2}, 1);  // propagates to the computed field
  EXPECT_EQ(amount->GetValue(1), Variant(Currency{25000}));
  EXPECT_TRUE(capture.shown().empty());
}

}  // namespace
}  // namespace varnel::testing
