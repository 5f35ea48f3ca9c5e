// The bulk read of the database layer against the plainest possible load: a
// sqlite3 loop that copies each cell into per-column vectors of a small tagged
// value. The layer's read should cost at most 1.3 times the plain loop.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "db/recordset_access.h"
#include "support/orders_table.h"
#include "varnel/db.h"

namespace {

constexpr int32_t kRows = 200000;

using PlainCell = std::variant<std::monostate, int64_t, double, std::string>;

void PlainSqliteLoop(benchmark::State& state) {
  const std::string path = varnel::bench::OrdersDatabase(kRows).string();
  sqlite3* db = nullptr;
  sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
  for (auto _ : state) {
    sqlite3_stmt* st = nullptr;
    sqlite3_prepare_v2(db, "SELECT * FROM Orders", -1, &st, nullptr);
    const int columns = sqlite3_column_count(st);
    std::vector<std::vector<PlainCell>> values(columns);
    while (sqlite3_step(st) == SQLITE_ROW) {
      for (int c = 0; c < columns; ++c) {
        switch (sqlite3_column_type(st, c)) {
          case SQLITE_INTEGER:
            values[c].emplace_back(static_cast<int64_t>(sqlite3_column_int64(st, c)));
            break;
          case SQLITE_FLOAT:
            values[c].emplace_back(sqlite3_column_double(st, c));
            break;
          case SQLITE_NULL:
            values[c].emplace_back();
            break;
          default:
            values[c].emplace_back(
                std::string(reinterpret_cast<const char*>(sqlite3_column_text(st, c)),
                            sqlite3_column_bytes(st, c)));
        }
      }
    }
    sqlite3_finalize(st);
    benchmark::DoNotOptimize(values.data());
  }
  sqlite3_close(db);
  state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(PlainSqliteLoop)->Unit(benchmark::kMillisecond);

void AppendColumns(benchmark::State& state) {
  auto cn = std::make_shared<varnel::db::Connection>();
  cn->Open(varnel::bench::OrdersConnection(kRows));
  for (auto _ : state) {
    varnel::db::Recordset rs;
    rs.Open("Orders", cn);
    const size_t count = varnel::db::internal::RecordsetAccess::Columns(rs).size();
    std::vector<std::vector<varnel::Variant>> values(count);
    std::vector<int32_t> columns;
    std::vector<std::vector<varnel::Variant>*> outputs;
    for (size_t c = 0; c < count; ++c) {
      columns.push_back(static_cast<int32_t>(c));
      outputs.push_back(&values[c]);
    }
    varnel::db::internal::RecordsetAccess::AppendColumns(rs, columns, outputs);
    benchmark::DoNotOptimize(values.data());
  }
  state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(AppendColumns)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
