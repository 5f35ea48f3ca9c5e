#include <functional>

#include "compute_fixture.h"

namespace varnel::testing {
namespace {

using CachedTokens = ComputeTest;

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
  const BulkScope quiet;
  other.Add("Price")->SetValue(int32_t{7}, 1);
  other.Add("Qty")->SetValue(int32_t{2}, 1);
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(Text("Qty*Price"), "3.75");
    EXPECT_EQ(CStr(Evaluate("Qty*Price", 1, &other)), "14");
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

TEST_F(CachedTokens, ComputedFieldFollowsTheFieldsItReads) {
  auto amount = rs.Add("Amount");
  amount->ComputeString = "Qty * Price";
  rs.Item("Qty")->SetValue(int32_t{2}, 1);
  EXPECT_EQ(amount->GetValue(1), Variant(Currency{25000}));
  EXPECT_EQ(MdlCompute::CurRecordset, nullptr);
  EXPECT_TRUE(capture.shown().empty());
}

}  // namespace
}  // namespace varnel::testing
