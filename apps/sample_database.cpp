#include "sample_database.h"

#include <memory>
#include <vector>

#include "sample_rows.h"
#include "varnel/db.h"

namespace varnel::app {
namespace {

constexpr const char* kOrdersTable =
    "CREATE TABLE Orders ("
    " OrderId INTEGER PRIMARY KEY,"
    " Customer VARCHAR(40) NOT NULL,"
    " Product VARCHAR(40) NOT NULL,"
    " Qty INTEGER NOT NULL,"
    " Price CURRENCY NOT NULL,"
    " Currency VARCHAR(3) NOT NULL DEFAULT '$',"
    " OrderDate DATE NOT NULL,"
    " Paid BOOLEAN NOT NULL DEFAULT 0,"
    " Locked INTEGER NOT NULL DEFAULT 0,"
    " Note VARCHAR(80))";

// The columns of a field-information table, in their required order.
constexpr const char* kFieldsTable =
    "CREATE TABLE FieldsInformation ("
    " ViewName VARCHAR(40) NOT NULL, FieldObject VARCHAR(80),"
    " OrderByField1 VARCHAR(40), OrderByField2 VARCHAR(40), OrderByField3 VARCHAR(40),"
    " OrderByAscending1 INTEGER, OrderByAscending2 INTEGER, OrderByAscending3 INTEGER,"
    " Name VARCHAR(40) NOT NULL, FieldType INTEGER, IsMain BOOLEAN, DateType INTEGER,"
    " NumType INTEGER, SymbolName VARCHAR(40), IsData BOOLEAN, EnableNull BOOLEAN,"
    " Edit BOOLEAN, Copy BOOLEAN, InputMax VARIANT, InputMin VARIANT, QueryValue VARCHAR(255),"
    " IsSum BOOLEAN, ComputeString VARCHAR(255), DefaultValue VARIANT, DefinedSize INTEGER,"
    " SaveToDB BOOLEAN, DisplayNameEnglish VARCHAR(60), DisplayNameChinese VARCHAR(60))";

// One field of the Orders screen.
struct FieldRow {
  const char* name;
  int32_t type;  // Enum_FieldType
  int32_t date_type;
  const char* symbol;
  bool is_data, enable_null, edit, copy, is_sum, save;
  Variant max, min;
  const char* compute;
  Variant default_value;
  int32_t size;
  const char* english;
  const char* chinese;
};

std::vector<FieldRow> OrdersScreen() {
  const Variant none = Variant::Null();
  const auto n = [](int32_t v) { return Variant(v); };
  return {
      // name, type, date type, symbol, data, null ok, edit, copy, sum, save,
      // max, min, compute, default, size, English, Chinese
      {"Line", 6, 0, "", false, true, false, false, false, false, none, none, "", none, 0, "Line",
       "序号"},
      {"OrderId", 5, 0, "", true, true, false, false, false, true, none, none, "", none, 0,
       "Order No.", "订单号"},
      {"Customer", 3, 0, "", true, false, true, true, false, true, none, none, "", none, 40,
       "Customer", "客户"},
      {"Product", 3, 0, "", true, false, true, true, false, true, none, none, "", none, 40,
       "Product", "产品"},
      {"Qty", 5, 0, "", true, false, true, true, true, true, n(1000), n(1), "", n(1), 0, "Quantity",
       "数量"},
      {"Price", 4, 0, "Currency", true, false, true, true, false, true, n(100000), n(0), "", none,
       0, "Unit price", "单价"},
      {"Currency", 3, 0, "", true, false, true, true, false, true, none, none, "", Variant("$"), 3,
       "Currency", "币种"},
      {"OrderDate", 2, 2, "", true, false, true, true, false, true, Variant("2099-12-31"),
       Variant("2000-01-01"), "", Variant("Today"), 0, "Order date", "订单日期"},
      {"Paid", 1, 0, "", true, true, true, false, false, true, none, none, "", n(0), 0, "Paid",
       "已付款"},
      {"Locked", 7, 0, "", true, true, false, false, false, true, none, none, "", n(0), 0, "Locked",
       "锁定"},
      {"Note", 3, 0, "", true, true, true, true, false, true, none, none, "", none, 80, "Note",
       "备注"},
      {"Amount", 4, 0, "Currency", false, true, false, false, true, false, none, none, "Qty*Price",
       none, 0, "Amount", "金额"},
  };
}

void InsertScreen(db::Connection& cn) {
  const std::string sql =
      "INSERT INTO FieldsInformation VALUES (?, 'Orders', 'OrderDate', 'OrderId', NULL, 0, 0,"
      " NULL, ?, ?, 0, ?, 0, ?, ?, ?, ?, ?, ?, ?, NULL, ?, ?, ?, ?, ?, ?, ?)";
  for (const FieldRow& f : OrdersScreen()) {
    const auto text_or_null = [](const char* s) { return *s ? Variant(s) : Variant::Null(); };
    cn.Execute(sql, {Variant(kSampleView), Variant(f.name), Variant(f.type), Variant(f.date_type),
                     text_or_null(f.symbol), Variant(f.is_data), Variant(f.enable_null),
                     Variant(f.edit), Variant(f.copy), f.max, f.min, Variant(f.is_sum),
                     text_or_null(f.compute), f.default_value, Variant(f.size), Variant(f.save),
                     Variant(f.english), Variant(f.chinese)});
  }
}

void InsertOrders(db::Connection& cn) {
  const std::string sql =
      "INSERT INTO Orders (Customer, Product, Qty, Price, Currency, OrderDate, Paid, Locked, Note)"
      " VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)";
  for (const SampleOrder& order : SampleOrders(kSampleRows)) {
    cn.Execute(sql, {Variant(order.customer), Variant(order.product), Variant(order.qty),
                     Variant(order.price), Variant(order.currency), Variant(order.date),
                     Variant(order.paid), Variant(int32_t{order.locked ? 1 : 0}),
                     order.note.empty() ? Variant::Null() : Variant(order.note)});
  }
}

void CreateAt(const std::filesystem::path& path) {
  auto cn = std::make_shared<db::Connection>();
  cn->Open(SqliteConnectionString(path, /*create=*/true));
  cn->BeginTrans();
  cn->Execute(kOrdersTable);
  cn->Execute(kFieldsTable);
  InsertScreen(*cn);
  InsertOrders(*cn);
  cn->CommitTrans();
  cn->Close();
}

}  // namespace

std::string SqliteConnectionString(const std::filesystem::path& path, bool create) {
  std::string value = path.string();
  if (value.find_first_of(";\"'") != std::string::npos || value.front() == ' ' ||
      value.back() == ' ') {
    std::string quoted = "\"";
    for (char c : value) {
      quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    }
    value = quoted + "\"";
  }
  return std::string("Provider=SQLite;") + (create ? "Create=True;" : "") + "Data Source=" + value;
}

bool EnsureSampleDatabase(const std::filesystem::path& path) {
  if (std::filesystem::exists(path)) {
    return false;
  }
  std::filesystem::create_directories(path.parent_path());
  // Built under another name and renamed: a run that stops half-way leaves no
  // sample database that looks complete.
  std::filesystem::path building = path;
  building += ".building";
  std::filesystem::remove(building);
  try {
    CreateAt(building);
  } catch (...) {
    std::error_code ignored;
    std::filesystem::remove(building, ignored);
    throw;
  }
  std::filesystem::rename(building, path);
  return true;
}

}  // namespace varnel::app
