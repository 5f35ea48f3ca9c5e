// Editing costs on the generated Orders table, each printed at the end as a
// ratio measured in the same run:
//   - DeleteRecord of the first row and its UndoRecord, against erasing and
//     re-inserting the first element of the same per-column vectors
//     (target: at most 3 times);
//   - NewRecord + Modify + UpdateRecord cycles on 10,000 and on 1,000,000
//     rows: the cost of a cycle must not grow with the table (at most 1.5 times);
//   - Modify of a field that a computed field depends on, against a plain Modify;
//   - Modify of a summed field (Qty, whole numbers), whose total follows by the
//     difference instead of a recount of the 1,000,000 rows, against a plain Modify.
// The screen: every column of Orders, Amount = Qty*Price computed, Qty summed.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "fields/field_access.h"
#include "recordset/recordset_state.h"
#include "support/orders_table.h"
#include "varnel/varnel.h"

namespace {

using varnel::ClsRecordset;
using varnel::Variant;

constexpr int32_t kLarge = 1000000;
constexpr int32_t kSmall = 10000;
constexpr int kCycles = 10000;

std::unique_ptr<ClsRecordset> LoadOrders(int32_t rows) {
  auto rs = std::make_unique<ClsRecordset>();
  rs->ConnectString = varnel::bench::OrdersConnection(rows);
  rs->TableName = varnel::bench::kOrdersTable;
  rs->UserOpenMode = varnel::U_Auto;
  for (const char* column : varnel::bench::kOrdersColumns) {
    rs->Add(column);
  }
  rs->Item("Id")->Edit = false;
  rs->Item("Qty")->FieldType = varnel::F_Numeral;
  rs->Item("Qty")->IsSum = true;
  rs->Item("Price")->FieldType = varnel::F_Numeral;
  rs->Item("Price")->NumType = varnel::N_Float;
  rs->Item("OrderDate")->FieldType = varnel::F_Date;
  rs->Item("OrderDate")->DefaultValue = Variant("Today");
  rs->Item("Customer")->FieldType = varnel::F_Text;
  auto amount = rs->Add("Amount");
  amount->IsData = false;
  amount->FieldType = varnel::F_Numeral;
  amount->ComputeString = "Qty*Price";
  if (rs->InitDataSource() || rs->Rows() != rows) {
    std::fprintf(stderr, "cannot load %d orders\n", rows);
    std::exit(1);
  }
  return rs;
}

// One loaded screen per table size, kept for the whole run.
ClsRecordset& Orders(int32_t rows) {
  static std::map<int32_t, std::unique_ptr<ClsRecordset>> loaded;
  auto& slot = loaded[rows];
  if (!slot) {
    slot = LoadOrders(rows);
  }
  return *slot;
}

void DeleteAndUndoFirstRow(benchmark::State& state) {
  ClsRecordset& rs = Orders(kLarge);
  for (auto _ : state) {
    rs.MoveFirst();
    rs.DeleteRecord();
    rs.UndoRecord();
  }
  if (rs.EditStatus() != varnel::E_Default || rs.Rows() != kLarge) {
    state.SkipWithError("the row did not come back");
  }
}
BENCHMARK(DeleteAndUndoFirstRow)->Unit(benchmark::kMillisecond);

// The same columns as plain vectors: the row's values and marks out and back in.
void EraseAndInsertFirstElement(benchmark::State& state) {
  ClsRecordset& rs = Orders(kLarge);
  std::vector<std::vector<Variant>> columns;
  for (const auto& field : rs) {
    columns.push_back(varnel::internal::FieldAccess::Values(*field));
  }
  const auto& marks = varnel::internal::RecordsetAccess::State(rs);
  std::vector<std::vector<uint8_t>> mark_columns = {marks.select_marks, marks.edit_marks};
  for (auto _ : state) {
    for (auto& column : columns) {
      Variant kept = column[1];
      column.erase(column.begin() + 1);
      column.insert(column.begin() + 1, std::move(kept));
    }
    for (auto& column : mark_columns) {
      const uint8_t kept = column[1];
      column.erase(column.begin() + 1);
      column.insert(column.begin() + 1, kept);
    }
    benchmark::ClobberMemory();
  }
}
BENCHMARK(EraseAndInsertFirstElement)->Unit(benchmark::kMillisecond);

// The first row appended after a load grows every column's vector once (a
// move of each column); that one-time cost is shown apart as a counter, so
// that the timed cycles measure what every further cycle costs.
void NewModifyUpdateCycle(benchmark::State& state) {
  ClsRecordset& rs = Orders(static_cast<int32_t>(state.range(0)));
  const auto start = std::chrono::steady_clock::now();
  rs.NewRecord();
  rs.UndoRecord();
  state.counters["first_append_ms"] =
      std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
  int64_t n = 0;
  for (auto _ : state) {
    rs.NewRecord();
    rs.Modify("Customer", Variant(++n % 2 ? "Ann Ng" : "Bo Rossi"));
    if (rs.UpdateRecord() != varnel::E_Succeed) {
      state.SkipWithError("the new row was not saved");
      break;
    }
  }
}
BENCHMARK(NewModifyUpdateCycle)
    ->Arg(kSmall)
    ->Arg(kLarge)
    ->Iterations(kCycles)
    ->Unit(benchmark::kMicrosecond);

// Modify of one field of row 1, alternating two values, while the row is being edited.
void ModifyAlternating(benchmark::State& state, const char* field, Variant a, Variant b) {
  ClsRecordset& rs = Orders(kLarge);
  rs.MoveFirst();
  int64_t n = 0;
  for (auto _ : state) {
    rs.Modify(field, ++n % 2 ? a : b);
  }
  rs.UndoRecord();
}
BENCHMARK_CAPTURE(ModifyAlternating, Plain, "Customer", Variant("Ann Ng"), Variant("Bo Rossi"))
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(ModifyAlternating, Computed, "Price", Variant(2.5), Variant(4.0))
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(ModifyAlternating, Summed, "Qty", Variant(int32_t{3}), Variant(int32_t{4}))
    ->Unit(benchmark::kMicrosecond);

// Keeps each benchmark's CPU time per iteration (ns) for the ratios: on a
// machine shared with other work, CPU time is the steadier measure.
class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (!run.error_occurred) {
        times[run.benchmark_name()] = run.GetAdjustedCPUTime() *
                                      benchmark::GetTimeUnitMultiplier(benchmark::kNanosecond) /
                                      benchmark::GetTimeUnitMultiplier(run.time_unit);
      }
    }
    ConsoleReporter::ReportRuns(runs);
  }
  double Ratio(const std::string& a, const std::string& b) const {
    const auto x = times.find(a), y = times.find(b);
    return x == times.end() || y == times.end() || y->second == 0 ? 0 : x->second / y->second;
  }
  std::map<std::string, double> times;
};

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  std::printf("\nRatios (same run, CPU time):\n");
  std::printf("  DeleteRecord+UndoRecord of row 1 / vector erase+insert: %.2f (target <= 3)\n",
              reporter.Ratio("DeleteAndUndoFirstRow", "EraseAndInsertFirstElement"));
  std::printf("  New+Modify+Update cycle, 1,000,000 rows / 10,000 rows:  %.2f (target <= 1.5)\n",
              reporter.Ratio("NewModifyUpdateCycle/1000000/iterations:10000",
                             "NewModifyUpdateCycle/10000/iterations:10000"));
  std::printf("  Modify of a computed field's input / plain Modify:      %.2f\n",
              reporter.Ratio("ModifyAlternating/Computed", "ModifyAlternating/Plain"));
  std::printf("  Modify of a summed field / plain Modify:                %.2f\n",
              reporter.Ratio("ModifyAlternating/Summed", "ModifyAlternating/Plain"));
  benchmark::Shutdown();
  return 0;
}
