#include "orders_table.h"

#include <sqlite3.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string_view>

namespace varnel::bench {
namespace {

// A fixed pseudo-random sequence (splitmix64), so every machine builds the same rows.
class Sequence {
 public:
  uint64_t Next() {
    uint64_t z = (state_ += 0x9E3779B97F4A7C15ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
  }
  int64_t Below(int64_t n) { return static_cast<int64_t>(Next() % static_cast<uint64_t>(n)); }

 private:
  uint64_t state_ = 20030506;
};

constexpr std::array<std::string_view, 16> kFirstNames = {
    "Ann",    "Bernd", "Chen",      "Dolores", "Emil",       "Fatima", "Gustav", "Hana",
    "Ingrid", "Jamal", "Kazimierz", "Li",      "Marguerite", "Nils",   "Olu",    "Priya"};
constexpr std::array<std::string_view, 12> kLastNames = {
    "Ng",     "Schmidt", "Vasquez", "Okonkwo",   "Wang",       "Lindqvist",
    "Haddad", "Moreau",  "Tanaka",  "Kowalczyk", "Fitzgerald", "Rossi"};
constexpr std::array<std::string_view, 10> kProducts = {
    "Bolt M6",       "Hex nut M6",      "Washer 6mm",    "Hinge, steel 80mm", "Cable tie 200",
    "Drill bit 8mm", "Wood screw 4x40", "Angle bracket", "Wall plug 8",       "Padlock 40mm"};
constexpr std::array<std::string_view, 5> kNotes = {"deliver before noon", "call ahead", "fragile",
                                                    "second delivery of the same order",
                                                    "invoice to head office"};

void Check(int rc, sqlite3* db, const char* what) {
  if (rc != SQLITE_OK && rc != SQLITE_DONE && rc != SQLITE_ROW) {
    throw std::runtime_error(std::string(what) + ": " + sqlite3_errmsg(db));
  }
}

void Exec(sqlite3* db, const char* sql) {
  Check(sqlite3_exec(db, sql, nullptr, nullptr, nullptr), db, sql);
}

// "yyyy-mm-dd hh:nn:ss" for a day offset from 2015-01-01 and a second of the day.
std::string IsoDateTime(int64_t day, int64_t second) {
  static constexpr int kDaysInMonth[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  int year = 2015;
  for (;;) {
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    const int length = leap ? 366 : 365;
    if (day < length) {
      break;
    }
    day -= length;
    ++year;
  }
  int month = 0;
  for (;; ++month) {
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    const int length = kDaysInMonth[month] + (month == 1 && leap ? 1 : 0);
    if (day < length) {
      break;
    }
    day -= length;
  }
  char text[48];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", year, month + 1,
                static_cast<int>(day) + 1, static_cast<int>(second / 3600),
                static_cast<int>(second / 60 % 60), static_cast<int>(second % 60));
  return text;
}

void Bind(sqlite3_stmt* insert, int index, std::string_view text) {
  sqlite3_bind_text(insert, index, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
}

void InsertRows(sqlite3* db, int32_t rows) {
  sqlite3_stmt* insert = nullptr;
  Check(sqlite3_prepare_v2(db,
                           "INSERT INTO Orders (Id, Customer, Product, Qty, Price, OrderDate, "
                           "Paid, Note) VALUES (?,?,?,?,?,?,?,?)",
                           -1, &insert, nullptr),
        db, "prepare");
  Sequence random;
  for (int32_t id = 1; id <= rows; ++id) {
    const std::string customer = std::string(kFirstNames[random.Below(kFirstNames.size())]) + " " +
                                 std::string(kLastNames[random.Below(kLastNames.size())]);
    sqlite3_bind_int64(insert, 1, id);
    Bind(insert, 2, customer);
    Bind(insert, 3, kProducts[random.Below(kProducts.size())]);
    sqlite3_bind_int64(insert, 4, 1 + random.Below(500));
    sqlite3_bind_double(insert, 5, static_cast<double>(random.Below(1000000)) / 100.0);
    Bind(insert, 6, IsoDateTime(random.Below(3650), random.Below(86400)));
    sqlite3_bind_int64(insert, 7, random.Below(2));
    if (random.Below(10) < 3) {
      sqlite3_bind_null(insert, 8);
    } else {
      Bind(insert, 8, kNotes[random.Below(kNotes.size())]);
    }
    Check(sqlite3_step(insert), db, "insert");
    sqlite3_reset(insert);
  }
  sqlite3_finalize(insert);
}

void CreateDatabase(const std::filesystem::path& path, int32_t rows) {
  sqlite3* db = nullptr;
  if (sqlite3_open(path.c_str(), &db) != SQLITE_OK) {
    const std::string message = sqlite3_errmsg(db);
    sqlite3_close(db);
    throw std::runtime_error("cannot create " + path.string() + ": " + message);
  }
  try {
    Exec(db, "PRAGMA journal_mode=OFF");
    Exec(db, "PRAGMA synchronous=OFF");
    Exec(db,
         "CREATE TABLE Orders (Id INTEGER PRIMARY KEY, Customer VARCHAR(40), Product "
         "VARCHAR(40), Qty INTEGER, Price CURRENCY, OrderDate DATETIME, Paid BOOLEAN, Note TEXT)");
    Exec(db, "BEGIN");
    InsertRows(db, rows);
    Exec(db, "COMMIT");
  } catch (...) {
    sqlite3_close(db);
    throw;
  }
  sqlite3_close(db);
}

}  // namespace

std::filesystem::path BenchDataDirectory() {
  if (const char* dir = std::getenv("VARNEL_BENCH_DATA"); dir != nullptr && *dir != '\0') {
    return dir;
  }
  std::error_code error;
  const std::filesystem::path exe = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) {
    return std::filesystem::current_path() / "bench-data";
  }
  return exe.parent_path().parent_path() / "bench-data";
}

std::filesystem::path OrdersDatabase(int32_t rows) {
  const std::filesystem::path dir = BenchDataDirectory();
  const std::filesystem::path path = dir / ("orders-" + std::to_string(rows) + ".db");
  if (std::filesystem::exists(path)) {
    return path;
  }
  std::filesystem::create_directories(dir);
  std::filesystem::path partial = path;
  partial += ".partial-" + std::to_string(getpid());
  std::filesystem::remove(partial);
  std::fprintf(stderr, "generating %s (%d rows, once)...\n", path.c_str(), rows);
  CreateDatabase(partial, rows);
  std::filesystem::rename(partial, path);
  return path;
}

std::string OrdersConnection(int32_t rows) {
  return "Provider=SQLite;Data Source=" + OrdersDatabase(rows).string();
}

}  // namespace varnel::bench
