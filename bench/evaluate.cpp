// Evaluating a computed field for every row of a loaded table: Qty*Price over
// 1,000,000 rows through the path a load uses, against a plain C++ loop
// computing the same products, with the ratio of the two printed at the end.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <memory>
#include <vector>

#include "fields/field_access.h"
#include "recordset/recordset_state.h"
#include "recordset/row_store.h"
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

Table& TheTable() {
  static Table table;
  return table;
}

void BM_EvaluateComputed(benchmark::State& state) {
  Table& table = TheTable();
  auto& rs = varnel::internal::RecordsetAccess::State(table.rs);
  for (auto _ : state) {
    for (int32_t row = 1; row <= kRows; ++row) {
      benchmark::DoNotOptimize(varnel::internal::EvaluateComputed(rs, *table.amount, row));
    }
  }
  // The evaluator must agree with the plain products.
  const varnel::Variant last = varnel::internal::EvaluateComputed(rs, *table.amount, kRows);
  if (!(last == varnel::Variant(varnel::Currency{table.qty[kRows] * table.price[kRows]}))) {
    state.SkipWithError("the evaluator's product differs from the plain product");
  }
  state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(BM_EvaluateComputed)->Unit(benchmark::kMillisecond);

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
BENCHMARK(BM_PlainLoop)->Unit(benchmark::kMillisecond);

// Prints as usual and remembers each benchmark's time per pass (the mean
// when repetitions are asked for).
class RatioReporter : public benchmark::ConsoleReporter {
 public:
  struct Times {
    double real = 0;
    double cpu = 0;
  };
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      const bool single = run.run_type == Run::RT_Iteration && run.repetitions <= 1;
      const bool mean = run.run_type == Run::RT_Aggregate && run.aggregate_name == "mean";
      if ((single || mean) && !run.error_occurred) {
        times[run.run_name.function_name] = {run.GetAdjustedRealTime(), run.GetAdjustedCPUTime()};
      }
    }
    ConsoleReporter::ReportRuns(runs);
  }
  std::map<std::string, Times> times;
};

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    return 1;
  }
  TheTable();  // built before timing starts
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  const auto evaluator = reporter.times.find("BM_EvaluateComputed");
  const auto loop = reporter.times.find("BM_PlainLoop");
  if (evaluator != reporter.times.end() && loop != reporter.times.end() && loop->second.real > 0 &&
      loop->second.cpu > 0) {
    const auto& e = evaluator->second;
    const auto& l = loop->second;
    std::printf(
        "\nQty*Price over %d rows: evaluator %.1f ms (cpu %.1f ms), plain loop %.3f ms"
        " (cpu %.3f ms)\n",
        kRows, e.real, e.cpu, l.real, l.cpu);
    std::printf("ratio (time evaluator / time loop) = %.0f (cpu time: %.0f)\n", e.real / l.real,
                e.cpu / l.cpu);
  }
  benchmark::Shutdown();
  return 0;
}
