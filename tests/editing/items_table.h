// A database (SQLite unless another provider is asked for) with an Items table
// (Id INTEGER PRIMARY KEY, Name TEXT, Qty INTEGER, Price DOUBLE PRECISION), a
// recordset loaded from it, and a comparison of memory with the table.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "support/test_database.h"
#include "varnel/varnel.h"

namespace varnel::testing {

struct ItemRow {
  int32_t id;
  Variant name, qty, price;
};

inline bool SameCell(const Variant& a, const Variant& b) {
  return a.IsBlank() == b.IsBlank() && (a.IsBlank() || ValuesEqual(a, b));
}

class ItemsTable {
 public:
  static constexpr const char* kColumns[] = {"Id", "Name", "Qty", "Price"};

  explicit ItemsTable(const std::vector<ItemRow>& rows,
                      TestProvider provider = TestProvider::kSqlite)
      : db(provider), connection_string(db.ConnectionString("items.db")) {
    connection->Open(connection_string);
    if (provider == TestProvider::kSqlite) {
      connection->Execute("PRAGMA synchronous=OFF");
    }
    connection->Execute(
        "CREATE TABLE Items (\"Id\" INTEGER PRIMARY KEY, \"Name\" TEXT, \"Qty\" INTEGER, "
        "\"Price\" DOUBLE PRECISION)");
    for (const ItemRow& row : rows) {
      connection->Execute("INSERT INTO Items ([Id], [Name], [Qty], [Price]) VALUES (?,?,?,?)",
                          {Variant(row.id), row.name, row.qty, row.price});
    }
  }

  // Defines Id (read-only key), Name, Qty and Price on rs and loads the table.
  void Load(ClsRecordset& rs) const {
    rs.ConnectString = connection_string;
    rs.TableName = "Items";
    rs.UserOpenMode = U_Auto;
    rs.OrderByField1 = "[Id]";
    for (const char* column : kColumns) {
      rs.Add(column)->FieldType = std::string(column) == "Name" ? F_Text : F_Numeral;
    }
    rs.Item("Id")->Edit = false;
    rs.Item("Price")->NumType = N_Float;
    ASSERT_FALSE(rs.InitDataSource());
  }

  // The table's rows by Id: Name, Qty, Price.
  std::map<int32_t, std::vector<Variant>> Rows() const {
    db::Recordset table;
    table.Open("SELECT [Id], [Name], [Qty], [Price] FROM Items", connection);
    std::map<int32_t, std::vector<Variant>> out;
    std::vector<std::vector<Variant>> columns(1);
    if (table.RecordCount() > 0) {
      columns = table.GetRows();
    }
    for (size_t r = 0; r < columns[0].size(); ++r) {
      out[columns[0][r].ToLong()] = {columns[1][r], columns[2][r], columns[3][r]};
    }
    return out;
  }

  // Empty when the rows in memory are the rows in the table, else what differs.
  std::string Difference(ClsRecordset& rs) const {
    std::map<int32_t, std::vector<Variant>> table = Rows();
    for (int32_t r = 1; r <= rs.Rows(); ++r) {
      const Variant key = rs.Item("Id")->GetValue(r);
      const auto found = key.IsBlank() ? table.end() : table.find(key.ToLong());
      if (found == table.end()) {
        return "row " + std::to_string(r) + " (Id " + CStr(Concat(key, "")) + ") not in the table";
      }
      for (size_t c = 1; c < 4; ++c) {
        if (!SameCell(rs.Item(kColumns[c])->GetValue(r), found->second[c - 1])) {
          return "Id " + CStr(key) + " " + kColumns[c] + " differs";
        }
      }
      table.erase(found);
    }
    return table.empty() ? "" : "Id " + std::to_string(table.begin()->first) + " only in the table";
  }

  TestDatabase db;
  std::string connection_string;
  std::shared_ptr<db::Connection> connection = std::make_shared<db::Connection>();
};

}  // namespace varnel::testing
