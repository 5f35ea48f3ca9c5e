// What a clerk's single-row work costs on a large table. The Orders screen
// (bench/support/orders_table.h, Price a CURRENCY column), Qty, Price and a
// computed Amount = Qty*Price summed (nine fields), loaded with 10,000 and 1,000,000 rows.
// Each operation runs on both; the ratio 1,000,000 / 10,000 of the medians
// (CPU time, same run) must stay within 1.5: single-row work may not grow
// with the table. Deleting and restoring row 1 must shift every column, so it
// is compared with erasing and re-inserting the first element of nine
// std::vectors of a trivially copyable 16-byte struct of the same length.
// SelectAllRows + ClearSelectRows on 1,000,000 rows is compared with two
// plain passes over a byte per row (one pass each: at most 1.5x). At the end
// every incremental total is compared with a recount of its column.
//
//   scripts/bench.sh editing [--benchmark_repetitions=N]
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "recordset/recordset_state.h"
#include "recordset/row_store.h"
#include "support/orders_table.h"
#include "support/ratio_reporter.h"
#include "varnel/varnel.h"

namespace {

using varnel::ClsRecordset;
using varnel::Variant;

constexpr int32_t kLarge = 1000000;
constexpr int32_t kSmall = 10000;
constexpr int kRepetitions = 9;

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
  rs->Item("Price")->FieldType = varnel::F_Numeral;  // holds the column's Currency values
  rs->Item("OrderDate")->FieldType = varnel::F_Date;
  rs->Item("Customer")->FieldType = varnel::F_Text;
  rs->Item("Customer")->Copy = true;
  rs->Item("Qty")->Copy = true;
  rs->Item("Price")->Copy = true;
  auto amount = rs->Add("Amount");
  amount->IsData = false;
  amount->FieldType = varnel::F_Numeral;
  amount->ComputeString = "Qty*Price";
  for (const char* summed : {"Qty", "Price", "Amount"}) {
    rs->Item(summed)->IsSum = true;
  }
  if (rs->InitDataSource() || rs->Rows() != rows) {
    std::fprintf(stderr, "cannot load %d orders\n", rows);
    std::exit(1);
  }
  return rs;
}

// One loaded screen per table size, kept for the whole run; main closes them
// before the library's own statics go away.
std::map<int32_t, std::unique_ptr<ClsRecordset>>& LoadedOrders() {
  static std::map<int32_t, std::unique_ptr<ClsRecordset>> loaded;
  return loaded;
}

ClsRecordset& Orders(int32_t rows) {
  auto& slot = LoadedOrders()[rows];
  if (!slot) {
    slot = LoadOrders(rows);
  }
  return *slot;
}

ClsRecordset& OrdersFor(const benchmark::State& state) {
  return Orders(static_cast<int32_t>(state.range(0)));
}

void Fail(benchmark::State& state, bool failed, const char* what) {
  if (failed) {
    state.SkipWithError(what);
  }
}

void ModifyQtyAndUpdate(benchmark::State& state) {
  ClsRecordset& rs = OrdersFor(state);
  rs.MoveFirst();
  int32_t n = 0;
  for (auto _ : state) {
    rs.Modify("Qty", Variant(int32_t{++n % 2 ? 3 : 4}));
    Fail(state, rs.UpdateRecord() != varnel::E_Succeed, "not saved");
  }
}

void ModifyCustomerAndUpdate(benchmark::State& state) {
  ClsRecordset& rs = OrdersFor(state);
  rs.MoveFirst();
  int32_t n = 0;
  for (auto _ : state) {
    rs.Modify("Customer", Variant(++n % 2 ? "Ann Ng" : "Bo Rossi"));
    Fail(state, rs.UpdateRecord() != varnel::E_Succeed, "not saved");
  }
}

void DeleteAndUndoFirstRow(benchmark::State& state) {
  ClsRecordset& rs = OrdersFor(state);
  for (auto _ : state) {
    rs.MoveFirst();
    rs.DeleteRecord();
    rs.UndoRecord();
  }
  Fail(state, rs.EditStatus() != varnel::E_Default || rs.Rows() != state.range(0),
       "the row did not come back");
}

void NewAndUndo(benchmark::State& state) {
  ClsRecordset& rs = OrdersFor(state);
  rs.NewRecord();  // the first append grows every column once; not timed
  rs.UndoRecord();
  for (auto _ : state) {
    rs.NewRecord();
    rs.UndoRecord();
  }
  Fail(state, rs.Rows() != state.range(0), "the new row stayed");
}

// Appends a row per iteration; the appended rows are dropped afterwards.
void CopyAndUpdate(benchmark::State& state) {
  ClsRecordset& rs = OrdersFor(state);
  const int32_t rows = rs.Rows();
  rs.MoveFirst();
  rs.CopyRecord();
  rs.UndoRecord();
  for (auto _ : state) {
    rs.CopyRecord();
    Fail(state, rs.UpdateRecord() != varnel::E_Succeed, "not saved");
  }
  rs.Rows(rows);  // after the timed loop
}

void SelectAllAndClear(benchmark::State& state) {
  ClsRecordset& rs = OrdersFor(state);
  for (auto _ : state) {
    rs.SelectAllRows();
    rs.ClearSelectRows();
  }
}

// Two plain passes over a byte per row: the least a select-all and a clear can do.
void TwoPassesOverTheMarks(benchmark::State& state) {
  std::vector<uint8_t> marks(static_cast<size_t>(state.range(0)) + 1);
  for (auto _ : state) {
    std::fill(marks.begin() + 1, marks.end(), 1);
    benchmark::ClobberMemory();
    std::fill(marks.begin() + 1, marks.end(), 0);
    benchmark::ClobberMemory();
  }
}

struct Plain16 {
  int64_t a;
  int64_t b;
};

void EraseAndInsertInNineVectors(benchmark::State& state) {
  std::vector<std::vector<Plain16>> columns(
      9, std::vector<Plain16>(static_cast<size_t>(state.range(0)) + 1, Plain16{1, 2}));
  for (auto _ : state) {
    for (auto& column : columns) {
      const Plain16 kept = column[1];
      column.erase(column.begin() + 1);
      column.insert(column.begin() + 1, kept);
    }
    benchmark::ClobberMemory();
  }
}

void BothSizes(benchmark::internal::Benchmark* b) {
  b->Arg(kSmall)->Arg(kLarge)->Repetitions(kRepetitions)->ReportAggregatesOnly(true);
}

BENCHMARK(ModifyQtyAndUpdate)->Apply(BothSizes)->Unit(benchmark::kMicrosecond);
BENCHMARK(ModifyCustomerAndUpdate)->Apply(BothSizes)->Unit(benchmark::kMicrosecond);
BENCHMARK(NewAndUndo)->Apply(BothSizes)->Unit(benchmark::kMicrosecond);
BENCHMARK(CopyAndUpdate)->Apply(BothSizes)->Iterations(2000)->Unit(benchmark::kMicrosecond);
BENCHMARK(DeleteAndUndoFirstRow)->Apply(BothSizes)->Unit(benchmark::kMillisecond);
BENCHMARK(EraseAndInsertInNineVectors)->Apply(BothSizes)->Unit(benchmark::kMillisecond);
BENCHMARK(SelectAllAndClear)
    ->Arg(kLarge)
    ->Repetitions(kRepetitions)
    ->ReportAggregatesOnly(true)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(TwoPassesOverTheMarks)
    ->Arg(kLarge)
    ->Repetitions(kRepetitions)
    ->ReportAggregatesOnly(true)
    ->Unit(benchmark::kMillisecond);

// Every summed field's incremental total against a recount of its column.
bool TotalsAreExact(ClsRecordset& rs) {
  std::vector<Variant> kept;
  for (const auto& field : rs) {
    kept.push_back(field->SumValue);
  }
  varnel::internal::RecomputeAllSums(varnel::internal::RecordsetAccess::State(rs));
  size_t i = 0;
  for (const auto& field : rs) {
    if (!(field->SumValue == kept[i++])) {
      return false;
    }
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    return 1;
  }
  Orders(kSmall);
  Orders(kLarge);
  varnel::bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  const auto growth = [&](const char* name) {
    const std::string n(name);
    return reporter.Ratio(n + "/" + std::to_string(kLarge), n + "/" + std::to_string(kSmall));
  };
  std::printf("\nRatios (medians of CPU time, same run):\n");
  reporter.Print("Modify Qty (Amount follows) + UpdateRecord, 1M / 10k rows",
                 growth("ModifyQtyAndUpdate"), 1.5);
  reporter.Print("Modify Customer + UpdateRecord, 1M / 10k rows", growth("ModifyCustomerAndUpdate"),
                 1.5);
  reporter.Print("NewRecord + UndoRecord, 1M / 10k rows", growth("NewAndUndo"), 1.5);
  reporter.Print("CopyRecord + UpdateRecord, 1M / 10k rows", growth("CopyAndUpdate"), 1.5);
  reporter.Print(
      "MoveFirst, DeleteRecord, UndoRecord / 9-vector erase+insert, 1M rows",
      reporter.Ratio("DeleteAndUndoFirstRow/1000000", "EraseAndInsertInNineVectors/1000000"), 1.5);
  // One pass each: within 1.5x of two plain passes over a byte per row.
  reporter.Print("SelectAllRows + ClearSelectRows / two passes over the marks, 1M rows",
                 reporter.Ratio("SelectAllAndClear/1000000", "TwoPassesOverTheMarks/1000000"), 1.5);
  const bool exact = TotalsAreExact(Orders(kSmall)) && TotalsAreExact(Orders(kLarge));
  std::printf("  totals kept by differences equal a recount: %s\n", exact ? "yes" : "NO");
  LoadedOrders().clear();
  benchmark::Shutdown();
  return exact ? 0 : 1;
}
