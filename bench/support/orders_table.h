// The Orders table shared by the load and editing benchmarks: a SQLite file of
// generated orders, created once in a cache directory and reused afterwards.
//
//   std::string cs = varnel::bench::OrdersConnection(1000000);
//   rs.ConnectString = cs; rs.TableName = "Orders";
//
// Columns: Id INTEGER PRIMARY KEY, Customer VARCHAR(40), Product VARCHAR(40),
// Qty INTEGER, Price CURRENCY, OrderDate DATETIME (ISO text "yyyy-mm-dd hh:nn:ss"),
// Paid BOOLEAN (0/1), Note TEXT (about 30% NULL). The rows are the same on
// every machine (a fixed pseudo-random sequence).
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace varnel::bench {

// The directory for generated data: $VARNEL_BENCH_DATA when set, else
// bench-data beside the benchmark programs' folder (build/bench-data).
std::filesystem::path BenchDataDirectory();

// The path of the Orders database with `rows` rows, created on first use (the
// file is written under a temporary name and renamed, so a half-written file
// is never reused).
std::filesystem::path OrdersDatabase(int32_t rows = 1000000);

// "Provider=SQLite;Data Source=<OrdersDatabase(rows)>".
std::string OrdersConnection(int32_t rows = 1000000);

// The table's name and its column names in order.
inline constexpr const char* kOrdersTable = "Orders";
inline constexpr const char* kOrdersColumns[] = {"Id",    "Customer",  "Product", "Qty",
                                                 "Price", "OrderDate", "Paid",    "Note"};

}  // namespace varnel::bench
