// Evaluating a computed field for every row of a loaded table: Qty*Price over
// 1,000,000 rows through the path a load uses (the expression read once,
// then replayed per row), against a plain C++ loop computing the same
// products, with the ratio of the medians printed at the end (target <= 10).
#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <memory>
#include <vector>

#include "fields/field_access.h"
#include "recordset/recordset_state.h"
#include "recordset/row_store.h"
#include "support/ratio_reporter.h"
#include "varnel/varnel.h"

namespace {

constexpr int32_t kRows = 1'000'000;

struct Table {
  varnel::ClsRecordset rs;
  std::shared_ptr<varnel::ClsFields> amount;
  std::vector<int32_t> qty;    // the same values as plain numbers
  std::vector<int64_t> price;  // in 1/10000 units

  Table() : qty(kRows + 1), price(kRows + 1) {
    rs.Rows(kRows);
    auto qty_field = rs.Add("Qty");
    qty_field->FieldType = varnel::F_Numeral;
    auto price_field = rs.Add("Price");
    price_field->FieldType = varnel::F_Currency;
    amount = rs.Add("Amount");
    amount->ComputeString = "Qty*Price";
    const varnel::internal::BulkScope quiet;
    for (int32_t row = 1; row <= kRows; ++row) {
      qty[row] = row % 97 + 1;
      price[row] = int64_t{row % 1000} * 125 + 5000;
      qty_field->SetValue(qty[row], row);
      price_field->SetValue(varnel::Currency{price[row]}, row);
    }
  }
};

// Built once; main closes it before the library's own statics go away.
std::unique_ptr<Table>& TableSlot() {
  static std::unique_ptr<Table> table;
  return table;
}

Table& TheTable() {
  if (!TableSlot()) {
    TableSlot() = std::make_unique<Table>();
  }
  return *TableSlot();
}

void BM_EvaluateComputed(benchmark::State& state) {
  Table& table = TheTable();
  auto& rs = varnel::internal::RecordsetAccess::State(table.rs);
  for (auto _ : state) {
    varnel::internal::EvaluateComputedRows(rs, *table.amount, kRows);
    benchmark::ClobberMemory();
  }
  // The evaluator must agree with the plain products.
  for (const int32_t row : {1, kRows / 2, kRows}) {
    if (!(table.amount->GetValue(row) ==
          varnel::Variant(varnel::Currency{table.qty[row] * table.price[row]}))) {
      state.SkipWithError("the evaluator's product differs from the plain product");
    }
  }
  state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(BM_EvaluateComputed)
    ->Repetitions(5)
    ->ReportAggregatesOnly(true)
    ->Unit(benchmark::kMillisecond);

void BM_PlainLoop(benchmark::State& state) {
  Table& table = TheTable();
  std::vector<int64_t> products(kRows + 1);
  for (auto _ : state) {
    for (int32_t row = 1; row <= kRows; ++row) {
      products[row] = int64_t{table.qty[row]} * table.price[row];
    }
    benchmark::DoNotOptimize(products.data());
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(BM_PlainLoop)->Repetitions(5)->ReportAggregatesOnly(true)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    return 1;
  }
  TheTable();  // built before timing starts
  varnel::bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  std::printf("\nRatios (medians of CPU time, same run):\n");
  reporter.Print("Qty*Price over 1,000,000 rows, load path / plain C++ loop",
                 reporter.Ratio("BM_EvaluateComputed", "BM_PlainLoop"), 10);
  reporter.Print("bytes of a value (Variant) / 16", sizeof(varnel::Variant) / 16.0, 1);
  TableSlot().reset();
  benchmark::Shutdown();
  return 0;
}
