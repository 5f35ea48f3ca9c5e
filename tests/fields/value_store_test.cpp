// Storing a field's values and symbols: the change events, the rules for
// blanks, equal values, rows outside the store, the bulk flag and query mode.
#include <gtest/gtest.h>

#include "change_sink.h"
#include "fields/field_access.h"
#include "fields/field_values.h"
#include "recordset/change_propagation.h"
#include "support/capture_ui.h"
#include "varnel/varnel.h"

namespace varnel {
namespace {

using Events = std::vector<std::string>;

class ValueStore : public testing::ChangeTest {
 protected:
  void SetUp() override {
    ChangeTest::SetUp();
    sign = rs.Add("Sign");
    price->SymbolName = "Sign";
  }

  std::shared_ptr<ClsFields> sign;
};

TEST_F(ValueStore, OnlyARealChangeIsStoredAndAnnounced) {
  EXPECT_FALSE(qty->SetValue(Variant::Null(), 1));  // blank over blank
  EXPECT_TRUE(qty->GetValue(1).IsEmpty());
  internal::ResetValues(*qty, 3);  // every row Null, as after a load
  EXPECT_FALSE(qty->SetValue(Variant(), 2));
  EXPECT_TRUE(qty->GetValue(2).IsNull());
  EXPECT_TRUE(sink.events.empty());
  EXPECT_FALSE(qty->SetValue(int32_t{5}, 2));
  for (const Variant& same : {Variant(int32_t{5}), Variant(int16_t{5}), Variant(5.0)}) {
    EXPECT_FALSE(qty->SetValue(same, 2));
  }
  EXPECT_EQ(qty->GetValue(2).VarType(), vbLong);  // the first value stays
  qty->SetValue(Variant::Null(), 2);
  EXPECT_TRUE(qty->GetValue(2).IsNull());
  EXPECT_EQ(sink.events, (Events{"ValueChange(2,1)", "ValueChange(2,1)"}));
  qty->SetValue("here");  // row 0: the current row
  EXPECT_EQ(qty->GetValue(1), Variant("here"));
  EXPECT_EQ(qty->GetValue(), Variant("here"));
}

TEST_F(ValueStore, RowOutsideTheStoreOrBulkFlagStoresSilently) {
  for (int32_t row : {4, -1, 1000}) {
    EXPECT_TRUE(qty->SetValue("x", row)) << row;
    EXPECT_TRUE(qty->GetValue(row).IsEmpty()) << row;
  }
  {
    internal::BulkScope bulk;
    qty->SetValue(int32_t{9}, 3);
  }
  EXPECT_EQ(qty->GetValue(3), Variant(int32_t{9}));
  EXPECT_TRUE(sink.events.empty());
  EXPECT_FALSE(internal::SuspendChangeEvents);
}

TEST_F(ValueStore, HandlerExceptionIsReportedAndFailsTheCall) {
  struct Thrower : ClsRecordsetEvents {
    void ValueChange(int32_t, int32_t) override { throw VbError(13, "Type mismatch"); }
  } thrower;
  rs.Advise(&thrower);
  testing::CaptureScope capture;
  EXPECT_TRUE(qty->SetValue("x", 1));
  ASSERT_EQ(capture.shown().size(), 1u);
  EXPECT_EQ(capture.shown()[0].text, "Type mismatch");
  EXPECT_EQ(qty->GetValue(1), Variant("x"));  // stored before the event
}

TEST_F(ValueStore, SymbolLivesInTheLastFieldBearingTheSymbolName) {
  EXPECT_FALSE(price->SetSymbol("$", 2));
  EXPECT_EQ(sign->GetValue(2), Variant("$"));
  EXPECT_EQ(price->GetSymbol(2), Variant("$"));
  EXPECT_EQ(sink.events, (Events{"ValueChange(2,3)", "SymbolChange(2,2)"}));
  EXPECT_FALSE(price->SetSymbol("$", 2));  // unchanged
  EXPECT_FALSE(price->SetSymbol(Variant::Null(), 3));
  EXPECT_EQ(sink.events.size(), 2u);
  std::shared_ptr<ClsFields> second = rs.Add();
  second->Name = "Sign";
  price->SetSymbol("E", 1);
  EXPECT_EQ(second->GetValue(1), Variant("E"));
  EXPECT_TRUE(sign->GetValue(1).IsEmpty());
  sink.events.clear();
  for (const char* unknown : {"Nowhere", "SIGN"}) {  // names are exact
    price->SymbolName = unknown;
    EXPECT_FALSE(price->SetSymbol("$", 1));
    EXPECT_TRUE(price->GetSymbol(1).IsEmpty());
  }
  EXPECT_TRUE(qty->GetSymbol(1).IsEmpty());  // no SymbolName at all
  EXPECT_TRUE(sink.events.empty());
}

TEST_F(ValueStore, QueryModeWritesTheQueryTextWhateverTheRow) {
  qty->FieldType = F_Numeral;
  price->FieldType = F_Currency;
  qty->SetValue(int32_t{7}, 2);
  rs.EditStatus(E_Query);
  sink.events.clear();
  EXPECT_FALSE(qty->SetValue(">5", 2));
  EXPECT_EQ(qty->QueryValue, ">5");
  EXPECT_EQ(qty->GetValue(3), Variant(">5"));
  qty->SetValue(int32_t{12});
  EXPECT_EQ(qty->QueryValue, "12");
  qty->SetValue("12");  // the same text
  qty->SetValue(Variant::Null());
  EXPECT_EQ(qty->QueryValue, "");
  EXPECT_FALSE(price->SetSymbol("$", 1));  // to the companion's QueryValue
  EXPECT_EQ(sign->QueryValue + "|" + price->QueryValue, "$|");
  EXPECT_EQ(price->GetSymbol(2), Variant("$"));
  EXPECT_EQ(internal::GetSymbolQueryValue(*price), Variant("$"));
  EXPECT_EQ(sink.events, (Events{"ValueQueryChange(Qty)", "ValueQueryChange(Qty)",
                                 "ValueQueryChange(Qty)", "ValueQueryChange(Sign)"}));
  for (Enum_FieldType type : {F_Other, F_AutoCoding, F_MultiMode}) {  // no query text
    qty->FieldType = price->FieldType = type;
    EXPECT_FALSE(qty->SetValue("1", 1));
    EXPECT_FALSE(price->SetSymbol("x"));
  }
  EXPECT_EQ(qty->QueryValue + sign->QueryValue, "$");
  EXPECT_EQ(sink.events.size(), 4u);
  rs.EditStatus(E_Default);
  EXPECT_EQ(qty->GetValue(2), Variant(int32_t{7}));  // row values untouched
}

TEST_F(ValueStore, ResizingAndQueryValuesByName) {
  const auto& values = internal::FieldAccess::Values(*qty);
  internal::ResetValues(*qty, 2);
  ASSERT_EQ(values.size(), 3u);
  EXPECT_TRUE(values[0].IsNull() && values[2].IsNull());
  internal::ResizeValues(*qty, 4);
  EXPECT_TRUE(values[2].IsNull() && values[4].IsEmpty());
  internal::ResizeValues(*qty, 1);
  EXPECT_EQ(values.size(), 2u);
  internal::ResetValues(*qty, 0);
  EXPECT_TRUE(values.empty());
  EXPECT_THROW(internal::ResetValues(*qty, -1), VbError);
  EXPECT_THROW(internal::ResizeValues(*qty, -1), VbError);
  auto& state = internal::RecordsetAccess::State(rs);
  internal::SetFieldQueryValue(state, "QTY", ">1");
  internal::SetFieldQueryValue(state, "Nowhere", "x");
  EXPECT_EQ(qty->QueryValue, ">1");
  EXPECT_EQ(internal::GetFieldQueryValue(state, "qty"), ">1");
  EXPECT_EQ(internal::GetFieldQueryValue(state, "Nowhere"), "");
  EXPECT_EQ(sink.events, (Events{"ValueQueryChange(Qty)"}));
}

}  // namespace
}  // namespace varnel
