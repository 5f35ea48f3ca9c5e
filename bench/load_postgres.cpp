// How fast InitDataSource loads the Orders table from PostgreSQL, against a
// plain libpq loop that reads every cell of the same query into per-column
// vectors, both measured in the same run against the same server.
//
//   VARNEL_TEST_PG=<connection string> build-bench/bench/bench_load_postgres [--rows N] [--repeat
//   K] scripts/bench.sh load_postgres        # starts a throwaway server when VARNEL_TEST_PG is
//   unset
//
// The reference connects, runs "SELECT * FROM <table>" as the driver does
// (one result, text cells, the driver's session settings) and stores each
// cell as a std::variant<monostate, int64_t, double, string>: integers and
// booleans read as int64_t, floating columns as double, every other type
// (text, money, timestamp) as its text. The library side is
// ClsRecordset::InitDataSource in U_Auto mode with the Orders fields. The
// two alternate, K runs each; the ratio is of the medians.
#include <libpq-fe.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

#include "support/bench_options.h"
#include "support/orders_postgres.h"
#include "support/orders_table.h"
#include "support/ratio_reporter.h"
#include "varnel/varnel.h"

namespace {

using Clock = std::chrono::steady_clock;
using Cell = std::variant<std::monostate, int64_t, double, std::string>;
using Columns = std::vector<std::vector<Cell>>;

// The type numbers of the built-in types the reference reads as numbers.
constexpr Oid kBool = 16, kInt8 = 20, kInt2 = 21, kInt4 = 23, kFloat4 = 700, kFloat8 = 701;

enum class CellRead { kWhole, kBoolean, kReal, kText };

CellRead ReadOf(Oid type) {
  switch (type) {
    case kInt2:
    case kInt4:
    case kInt8:
      return CellRead::kWhole;
    case kBool:
      return CellRead::kBoolean;
    case kFloat4:
    case kFloat8:
      return CellRead::kReal;
    default:
      return CellRead::kText;
  }
}

Cell ReadCell(const char* text, int length, CellRead read) {
  switch (read) {
    case CellRead::kWhole: {
      int64_t value = 0;
      std::from_chars(text, text + length, value);
      return value;
    }
    case CellRead::kBoolean:
      return int64_t{text[0] == 't'};
    case CellRead::kReal: {
      double value = 0;
      std::from_chars(text, text + length, value);
      return value;
    }
    case CellRead::kText:
      break;
  }
  return std::string(text, static_cast<size_t>(length));
}

std::shared_ptr<Columns> ReferenceLoad(const std::string& conninfo, const std::string& table) {
  PGconn* connection = PQconnectdb(conninfo.c_str());
  const std::string sql = "SELECT * FROM " + table;
  PGresult* result =
      PQexecParams(connection, sql.c_str(), 0, nullptr, nullptr, nullptr, nullptr, 0);
  if (PQresultStatus(result) != PGRES_TUPLES_OK) {
    throw std::runtime_error(sql + ": " + PQerrorMessage(connection));
  }
  const int count = PQnfields(result);
  const int rows = PQntuples(result);
  std::vector<CellRead> reads;
  auto columns = std::make_shared<Columns>(static_cast<size_t>(count));
  for (int c = 0; c < count; ++c) {
    reads.push_back(ReadOf(PQftype(result, c)));
    (*columns)[static_cast<size_t>(c)].reserve(static_cast<size_t>(rows));
  }
  for (int row = 0; row < rows; ++row) {
    for (int c = 0; c < count; ++c) {
      std::vector<Cell>& column = (*columns)[static_cast<size_t>(c)];
      if (PQgetisnull(result, row, c)) {
        column.emplace_back(std::monostate{});
      } else {
        column.push_back(ReadCell(PQgetvalue(result, row, c), PQgetlength(result, row, c),
                                  reads[static_cast<size_t>(c)]));
      }
    }
  }
  PQclear(result);
  PQfinish(connection);
  return columns;
}

std::shared_ptr<varnel::ClsRecordset> LibraryLoad(const std::string& connection,
                                                  const std::string& table) {
  using namespace varnel;
  auto rs = std::make_shared<ClsRecordset>();
  rs->ConnectString = connection;
  rs->TableName = table;
  rs->UserOpenMode = U_Auto;
  const Enum_FieldType kinds[] = {F_Numeral, F_Text, F_Text,    F_Numeral,
                                  F_Numeral, F_Date, F_Boolean, F_Text};
  for (size_t i = 0; i < std::size(kinds); ++i) {
    rs->Add(bench::kOrdersColumns[i])->FieldType = kinds[i];
  }
  if (rs->InitDataSource() || rs->Rows() == 0) {
    throw std::runtime_error("InitDataSource failed");
  }
  return rs;
}

// The seconds step takes; what it returns is freed after the clock stops.
template <typename Step>
double Seconds(Step step, int32_t& rows) {
  const Clock::time_point start = Clock::now();
  auto loaded = step();
  const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
  rows = loaded->size();
  return seconds;
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

}  // namespace

int main(int argc, char** argv) {
  const auto [rows, repeat] = varnel::bench::ReadBenchOptions(argc, argv, 5);
  const char* server = std::getenv("VARNEL_TEST_PG");
  if (server == nullptr || *server == '\0') {
    std::fprintf(stderr,
                 "VARNEL_TEST_PG is not set (scripts/bench.sh load_postgres starts a server)\n");
    return 1;
  }
  try {
    const std::string table = varnel::bench::PgOrdersTable(server, rows);
    const std::string conninfo = varnel::bench::PgConnInfo(server);
    struct Counted {
      std::shared_ptr<Columns> columns;
      size_t size() const { return columns->at(0).size(); }
    };
    struct Loaded {
      std::shared_ptr<varnel::ClsRecordset> rs;
      size_t size() const { return static_cast<size_t>(rs->Rows()); }
    };
    const auto reference = [&] {
      return std::make_unique<Counted>(Counted{ReferenceLoad(conninfo, table)});
    };
    const auto library = [&] {
      return std::make_unique<Loaded>(Loaded{LibraryLoad(server, table)});
    };
    std::vector<double> reference_times, library_times;
    int32_t reference_rows = 0, library_rows = 0;
    Seconds(reference, reference_rows);  // warms the server's cache
    for (int i = 0; i < repeat; ++i) {
      reference_times.push_back(Seconds(reference, reference_rows));
      library_times.push_back(Seconds(library, library_rows));
    }
    if (reference_rows != rows || library_rows != rows) {
      std::printf("row counts differ: %d loaded, %d in the reference, %d asked\n", library_rows,
                  reference_rows, rows);
      return 1;
    }
    const double reference_median = Median(reference_times);
    const double library_median = Median(library_times);
    std::printf("Orders on PostgreSQL: %d rows, medians of %d alternating runs\n", rows, repeat);
    std::printf("  %-40s %8.3f s\n", "reference libpq loop", reference_median);
    std::printf("  %-40s %8.3f s\n", "InitDataSource U_Auto", library_median);
    std::printf("\nRatios (medians of wall time, same run):\n");
    varnel::bench::PrintRatio("PostgreSQL load of 1,000,000 rows / plain libpq loop",
                              library_median / reference_median, 1.3);
  } catch (const std::exception& e) {
    std::fprintf(stderr, "%s\n", e.what());
    return 1;
  }
  return 0;
}
