// Column totals: SumValue, the selection total and the per-symbol totals are
// kept by each change's own contribution and always equal a recount.
#include "recordset/column_total.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>

#include "fields/field_access.h"
#include "recordset/recordset_state.h"
#include "recordset/row_store.h"
#include "varnel/varnel.h"

namespace varnel {
namespace {

// Same kind and value; a Double NaN equals a NaN.
bool SameTotal(const Variant& a, const Variant& b) {
  if (a.VarType() == vbDouble && b.VarType() == vbDouble && std::isnan(a.AsDouble())) {
    return std::isnan(b.AsDouble());
  }
  return a == b;
}

// The kind of a total is decided by the values it holds, whatever their order.
TEST(ColumnTotal, KindAndValueFollowTheValuesHeldNotTheirOrder) {
  const double big = 9e14;  // beyond Currency once doubled
  const struct {
    Enum_FieldType type;
    std::vector<Variant> values;
    Variant expected;
  } cases[] = {
      {F_Numeral, {}, Variant(int32_t{0})},
      {F_Currency, {}, Variant(Currency{0})},
      {F_Numeral,
       {Variant(int16_t{3}), Variant(int32_t{4}), Variant(), Variant::Null()},
       Variant(int32_t{7})},
      {F_Numeral, {Variant("word"), Variant(Date{37747.0}), Variant(true)}, Variant(int32_t{0})},
      {F_Numeral,
       {Variant(int32_t{2000000000}), Variant(int32_t{2000000000}), Variant(int32_t{-2000000000})},
       Variant(int32_t{2000000000})},  // Long: the sum fits, whatever a running total passed
      {F_Numeral, {Variant(int32_t{2000000000}), Variant(int32_t{2000000000})}, Variant(4e9)},
      {F_Numeral, {Variant(0.1), Variant(0.2), Variant(int32_t{1})}, Variant(1.3)},  // rounded once
      {F_Numeral, {Variant("2.5"), Variant(int32_t{1})}, Variant(3.5)},
      {F_Numeral,
       {Variant(Currency{15000}), Variant(2.25), Variant(int32_t{1})},
       Variant(Currency{47500})},
      {F_Currency, {Variant(1.5), Variant("2.25"), Variant(int32_t{1})}, Variant(Currency{47500})},
      {F_Currency, {Variant(big), Variant(big)}, Variant(2 * big)},  // beyond Currency: Double
      {F_Numeral, {Variant(1e308), Variant(1e308), Variant(-1e308)}, Variant(1e308)},
      {F_Numeral, {Variant(HUGE_VAL), Variant(int32_t{1})}, Variant(HUGE_VAL)},
      {F_Numeral,
       {Variant(int64_t{5000000000000}), Variant(int32_t{1})},
       Variant(int64_t{5000000000001})},
      {F_Numeral,
       {Variant(Decimal{150, 0, 2, false}), Variant(int32_t{1}), Variant(0.5)},
       Variant(Decimal{3, 0, 0, false})},
      {F_Currency,
       {Variant(Decimal{150, 0, 2, false}), Variant(int64_t{2})},
       Variant(Currency{35000})},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(CStr(c.expected));
    for (const bool reversed : {false, true}) {
      ClsRecordset rs;
      auto field = rs.Add("Qty");
      field->FieldType = c.type;
      field->IsSum = true;
      rs.Rows(static_cast<int32_t>(c.values.size()));
      internal::RecomputeAllSums(internal::RecordsetAccess::State(rs));
      const Variant zero = field->SumValue;
      for (size_t i = 0; i < c.values.size(); ++i) {
        const size_t row = reversed ? c.values.size() - i : i + 1;
        field->SetValue(c.values[row - 1], static_cast<int32_t>(row));
      }
      EXPECT_TRUE(SameTotal(field->SumValue, c.expected)) << CStr(field->SumValue);
      for (size_t row = 1; row <= c.values.size(); ++row) {
        field->SetValue(Variant(), static_cast<int32_t>(row));
      }
      EXPECT_TRUE(SameTotal(field->SumValue, zero));
    }
  }
}

// A value of any kind a field can hold, text and blanks among them.
Variant RandomValue(std::mt19937& random) {
  const auto whole = [&](int32_t bound) {
    return static_cast<int32_t>(static_cast<int64_t>(random() % (2u * bound + 1)) - bound);
  };
  const std::function<Variant()> kinds[] = {
      [] { return Variant(); },
      [] { return Variant::Null(); },
      [] { return Variant("word"); },
      [&] { return Variant(std::to_string(whole(500)) + ".25"); },
      [&] { return Variant(int16_t(whole(300))); },
      [&] { return Variant(whole(2000000000)); },
      [&] { return Variant(Currency{int64_t{whole(2000000000)} * 2000000000}); },
      [&] { return Variant(whole(1000) / 8.0 + 0.1); },
      [] { return Variant(true); },
      [&] { return Variant(whole(1000)); },
      [&] { return Variant(whole(1000)); },
      [&] { return Variant(int64_t{whole(2000000000)} * 3000); },
      [&] {
        return Variant(Decimal{static_cast<uint64_t>(whole(100000) + 100000), 0,
                               static_cast<uint8_t>(random() % 5), random() % 2 == 0});
      }};
  return kinds[random() % 13]();
}

const char* const kSymbols[] = {"$", "€", "", "¥"};

// The totals a recordset holding the same rows, marks and pointer counts afresh.
struct Totals {
  Variant all, selected;
  std::vector<SymbolTotal> by_symbol, selected_by_symbol;
};

Totals Read(ClsRecordset& rs) {
  return {rs.Item("Qty")->SumValue, rs.SelectedSumValue("Qty"), rs.SumValueBySymbol("Qty"),
          rs.SumValueBySymbol("Qty", true)};
}

Totals Recounted(ClsRecordset& rs) {
  ClsRecordset mirror;
  for (const auto& field : rs) {
    auto copy = mirror.Add(field->Name);
    copy->FieldType = field->FieldType;
    copy->IsSum = field->IsSum;
    copy->SymbolName = field->SymbolName;
    internal::FieldAccess::Values(*copy) = internal::FieldAccess::Values(*field);
  }
  auto& from = internal::RecordsetAccess::State(rs);
  auto& to = internal::RecordsetAccess::State(mirror);
  to.select_marks = from.select_marks;
  to.edit_marks = from.edit_marks;
  to.select_state = from.select_state;
  to.current_row = from.current_row;
  internal::RecomputeAllSums(to);
  return Read(mirror);
}

void ExpectSame(const std::vector<SymbolTotal>& a, const std::vector<SymbolTotal>& b) {
  ASSERT_EQ(a.size(), b.size());
  for (size_t i = 0; i < a.size(); ++i) {
    EXPECT_EQ(a[i].Symbol, b[i].Symbol);
    EXPECT_TRUE(SameTotal(a[i].Total, b[i].Total)) << CStr(a[i].Total) << " " << CStr(b[i].Total);
  }
}

// Values, symbols, selection marks and rows change at random; after every
// step each total equals a recount of the same rows.
TEST(ColumnTotal, EveryTotalEqualsARecountAfterEachChange) {
  for (const Enum_FieldType type : {F_Numeral, F_Currency}) {
    std::mt19937 random(20030506u + type);
    ClsRecordset rs;
    auto qty = rs.Add("Qty");
    rs.Add("Sign");
    qty->FieldType = type;
    qty->IsSum = true;
    qty->SymbolName = "Sign";
    rs.Rows(60);
    auto& state = internal::RecordsetAccess::State(rs);
    internal::RecomputeAllSums(state);
    const auto row = [&] { return static_cast<int32_t>(random() % rs.Rows()) + 1; };
    for (int step = 0; step < 1500; ++step) {
      switch (random() % 10) {
        case 0:
          qty->SetSymbol(Variant(kSymbols[random() % 4]), row());
          break;
        case 1:
          rs.SysSetMutliSelectRows(random() % 2 == 0, row(),
                                   static_cast<Enum_SelectRow>(random() % 3));
          break;
        case 2:
          random() % 3 == 0 ? rs.SelectAllRows()
                            : (random() % 2 ? rs.InvertSelectRows() : rs.ClearSelectRows());
          break;
        case 3:
          if (rs.Rows() > 10) {
            internal::EraseRow(state, row());
          }
          break;
        case 4: {
          const int32_t at = row();
          internal::InsertRow(state, at);
          internal::WriteRowValues(state, at, {RandomValue(random), Variant(kSymbols[at % 4])});
          internal::RowJoinsTotals(state, at);
          break;
        }
        default:
          qty->SetValue(RandomValue(random), row());
      }
      state.current_row = row();
      const Totals kept = Read(rs);
      const Totals counted = Recounted(rs);
      ASSERT_TRUE(SameTotal(kept.all, counted.all)) << step;
      ASSERT_TRUE(SameTotal(kept.selected, counted.selected)) << step;
      ExpectSame(kept.by_symbol, counted.by_symbol);
      ExpectSame(kept.selected_by_symbol, counted.selected_by_symbol);
    }
    ASSERT_GE(rs.SumValueBySymbol("Qty").size(), 3u);
  }
}

TEST(ColumnTotal, SelectionAndSymbolTotalsThroughThePublicApi) {
  ClsRecordset rs;
  auto amount = rs.Add("Amount");
  auto sign = rs.Add("Sign");
  amount->FieldType = F_Currency;
  amount->IsSum = true;
  rs.Rows(4);
  const std::pair<int64_t, const char*> rows[] = {{10, "$"}, {20, "€"}, {30, "$"}, {40, "€"}};
  for (int32_t r = 1; r <= 4; ++r) {
    amount->SetValue(Variant(Currency{rows[r - 1].first * 10000}), r);
    sign->SetValue(Variant(rows[r - 1].second), r);
  }
  rs.AbsolutePosition(2);
  EXPECT_EQ(rs.SelectedSumValue("Amount"), Variant(Currency{200000}));  // S_None: the current row
  rs.SysSetMutliSelectRows(true, 1, Shift);                             // rows 1..2
  rs.SysSetMutliSelectRows(true, 4, Ctrl);
  EXPECT_EQ(rs.SelectedSumValue("Amount"), Variant(Currency{700000}));
  EXPECT_EQ(rs.SumValueBySymbol("Amount").size(), 1u);  // no companion yet: one total
  amount->SymbolName = "Sign";
  const std::vector<SymbolTotal> selected = rs.SumValueBySymbol("Amount", true);
  ASSERT_EQ(selected.size(), 2u);
  EXPECT_EQ(selected[0].Symbol, "$");
  EXPECT_EQ(selected[0].Total, Variant(Currency{100000}));
  EXPECT_EQ(selected[1].Total, Variant(Currency{600000}));
  EXPECT_TRUE(rs.SelectedSumValue("Sign").IsNull());  // not summed
  EXPECT_TRUE(rs.SelectedSumValue("Nope").IsNull());
  EXPECT_TRUE(rs.SumValueBySymbol("Nope").empty());
}

}  // namespace
}  // namespace varnel
