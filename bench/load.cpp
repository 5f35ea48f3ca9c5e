// How fast and how lean InitDataSource loads a large table, against a plain
// sqlite3 loop that copies the same cells into per-column vectors.
//
//   scripts/bench.sh load [--rows N] [--repeat K]
//
// One run measures, over the generated Orders table (bench/support/orders_table.h):
//   reference       sqlite3_step over every row, each cell copied into a per-column
//                   std::vector of std::variant<monostate, int64_t, double, string>;
//   U_Auto, U_User  ClsRecordset::InitDataSource of the same table in each mode;
//   computed        U_Auto with a non-data field Amount = Qty*Price added.
// Time is the best of K runs; memory is the peak heap growth of a run, counted
// by replacing malloc and free in this program (so the SQLite library, the C++
// runtime and the library under test are all counted the same way).
// Each is printed as a ratio to the reference.
#include <malloc.h>
#include <sqlite3.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string>
#include <variant>
#include <vector>

#include "support/bench_options.h"
#include "support/orders_table.h"
#include "varnel/varnel.h"

// ---- heap accounting: every allocation of the process passes here ----
extern "C" {
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* block, size_t size);
void* __libc_memalign(size_t alignment, size_t size);
void __libc_free(void* block);
}

namespace {

std::atomic<int64_t> g_heap_now{0};
std::atomic<int64_t> g_heap_peak{0};

void* Counted(void* block) {
  if (block != nullptr) {
    const int64_t now = g_heap_now += static_cast<int64_t>(malloc_usable_size(block));
    int64_t peak = g_heap_peak.load(std::memory_order_relaxed);
    while (now > peak && !g_heap_peak.compare_exchange_weak(peak, now)) {
    }
  }
  return block;
}

void Uncount(void* block) {
  if (block != nullptr) {
    g_heap_now -= static_cast<int64_t>(malloc_usable_size(block));
  }
}

}  // namespace

extern "C" {
void* malloc(size_t size) { return Counted(__libc_malloc(size)); }
void* calloc(size_t count, size_t size) { return Counted(__libc_calloc(count, size)); }
void free(void* block) {
  Uncount(block);
  __libc_free(block);
}
void* realloc(void* block, size_t size) {
  const int64_t before = block != nullptr ? static_cast<int64_t>(malloc_usable_size(block)) : 0;
  void* moved = __libc_realloc(block, size);
  if (moved != nullptr || size == 0) {
    g_heap_now -= before;
    Counted(moved);
  }
  return moved;
}
void* memalign(size_t alignment, size_t size) { return Counted(__libc_memalign(alignment, size)); }
void* aligned_alloc(size_t alignment, size_t size) { return memalign(alignment, size); }
int posix_memalign(void** out, size_t alignment, size_t size) {
  void* block = memalign(alignment, size);
  if (block == nullptr) {
    return ENOMEM;
  }
  *out = block;
  return 0;
}
void* valloc(size_t size) { return memalign(4096, size); }
void* pvalloc(size_t size) { return memalign(4096, (size + 4095) & ~size_t{4095}); }
}

namespace {

using Clock = std::chrono::steady_clock;

struct Measure {
  double seconds = 0;
  double peak_bytes = 0;
  int32_t rows = 0;
};

// Runs step `repeat` times: the best time and the largest peak heap growth.
// The step's result is kept alive until after the peak is read, then freed
// outside the timing.
Measure Run(int repeat, const std::function<std::function<int32_t()>()>& step) {
  Measure best{1e300, 0, 0};
  for (int i = 0; i < repeat; ++i) {
    const int64_t base = g_heap_now.load();
    g_heap_peak.store(base);
    std::function<int32_t()> result;
    const Clock::time_point start = Clock::now();
    result = step();
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    best.seconds = std::min(best.seconds, seconds);
    best.peak_bytes = std::max(best.peak_bytes, static_cast<double>(g_heap_peak.load() - base));
    best.rows = result();
  }
  return best;
}

// ---- the reference: a plain sqlite3 loop ----
using Cell = std::variant<std::monostate, int64_t, double, std::string>;
using Columns = std::vector<std::vector<Cell>>;

std::shared_ptr<Columns> ReferenceLoad(const std::string& path) {
  sqlite3* db = nullptr;
  sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY, nullptr);
  sqlite3_stmt* select = nullptr;
  sqlite3_prepare_v2(db, "SELECT * FROM Orders", -1, &select, nullptr);
  const int count = sqlite3_column_count(select);
  auto columns = std::make_shared<Columns>(static_cast<size_t>(count));
  while (sqlite3_step(select) == SQLITE_ROW) {
    for (int c = 0; c < count; ++c) {
      std::vector<Cell>& column = (*columns)[static_cast<size_t>(c)];
      switch (sqlite3_column_type(select, c)) {
        case SQLITE_INTEGER:
          column.emplace_back(static_cast<int64_t>(sqlite3_column_int64(select, c)));
          break;
        case SQLITE_FLOAT:
          column.emplace_back(sqlite3_column_double(select, c));
          break;
        case SQLITE_NULL:
          column.emplace_back(std::monostate{});
          break;
        default:
          column.emplace_back(
              std::string(reinterpret_cast<const char*>(sqlite3_column_text(select, c)),
                          static_cast<size_t>(sqlite3_column_bytes(select, c))));
          break;
      }
    }
  }
  sqlite3_finalize(select);
  sqlite3_close(db);
  return columns;
}

// ---- the library ----
std::shared_ptr<varnel::ClsRecordset> LibraryLoad(const std::string& connection,
                                                  varnel::Enum_UserMode mode, bool computed) {
  using namespace varnel;
  auto rs = std::make_shared<ClsRecordset>();
  rs->ConnectString = connection;
  rs->TableName = bench::kOrdersTable;
  rs->UserOpenMode = mode;
  const Enum_FieldType kinds[] = {F_Numeral, F_Text, F_Text,    F_Numeral,
                                  F_Numeral, F_Date, F_Boolean, F_Text};
  for (size_t i = 0; i < std::size(kinds); ++i) {
    rs->Add(bench::kOrdersColumns[i])->FieldType = kinds[i];
  }
  if (computed) {
    auto amount = rs->Add("Amount");
    amount->IsData = false;
    amount->FieldType = F_Numeral;
    amount->ComputeString = "Qty*Price";
  }
  if (rs->InitDataSource() || rs->Rows() == 0) {
    std::fprintf(stderr, "InitDataSource failed\n");
    std::exit(1);
  }
  return rs;
}

struct Target {
  double time;    // 0 = none
  double memory;  // 0 = none
};

void Print(const char* name, const Measure& m, const Measure& ref, Target target, bool& all_met) {
  const double time_ratio = m.seconds / ref.seconds;
  const double memory_ratio = m.peak_bytes / ref.peak_bytes;
  std::string verdict;
  if (target.time > 0) {
    const bool met =
        time_ratio <= target.time && (target.memory == 0 || memory_ratio <= target.memory);
    all_met = all_met && met;
    char text[96];
    std::snprintf(text, sizeof text, "time <= %.1fx%s  %s", target.time,
                  target.memory > 0 ? ", memory <= 1.0x" : "", met ? "met" : "MISSED");
    verdict = text;
  }
  std::printf("%-28s %8.3f s %6.2fx   %9.1f MiB %6.2fx   %s\n", name, m.seconds, time_ratio,
              m.peak_bytes / 1048576.0, memory_ratio, verdict.c_str());
}

}  // namespace

int main(int argc, char** argv) {
  const auto [rows, repeat] = varnel::bench::ReadBenchOptions(argc, argv, 3);
  const std::string path = varnel::bench::OrdersDatabase(rows).string();
  const std::string connection = "Provider=SQLite;Data Source=" + path;
  ReferenceLoad(path);  // warms the page cache

  const Measure ref = Run(repeat, [&] {
    auto columns = ReferenceLoad(path);
    return std::function<int32_t()>([columns] { return int32_t(columns->at(0).size()); });
  });
  auto library = [&](varnel::Enum_UserMode mode, bool computed) {
    return Run(repeat, [&, mode, computed] {
      auto rs = LibraryLoad(connection, mode, computed);
      return std::function<int32_t()>([rs] { return rs->Rows(); });
    });
  };
  const Measure automatic = library(varnel::U_Auto, false);
  const Measure user = library(varnel::U_User, false);
  const Measure computed = library(varnel::U_Auto, true);

  std::printf("Orders: %d rows, best of %d runs (%s)\n", rows, repeat, path.c_str());
  std::printf("%-28s %10s %7s   %13s %7s\n", "step", "time", "x ref", "peak heap", "x ref");
  bool all_met = true;
  Print("reference sqlite3 loop", ref, ref, {0, 0}, all_met);
  Print("InitDataSource U_Auto", automatic, ref, {1.3, 1.0}, all_met);
  Print("InitDataSource U_User", user, ref, {1.3, 1.0}, all_met);
  Print("U_Auto + Amount=Qty*Price", computed, ref, {1.6, 0}, all_met);
  for (const Measure* m : {&automatic, &user, &computed}) {
    if (m->rows != ref.rows) {
      std::printf("row counts differ: %d loaded, %d in the reference\n", m->rows, ref.rows);
      return 1;
    }
  }
  std::printf("%s\n", all_met ? "all targets met" : "some targets missed");
  return 0;
}
