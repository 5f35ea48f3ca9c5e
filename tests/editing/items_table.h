// A database (SQLite unless another provider is asked for) with an Items table
// (Id INTEGER PRIMARY KEY, Name TEXT, Qty INTEGER, Price DOUBLE PRECISION), a
// recordset loaded from it by InitDataSource, and a comparison of the rows in
// memory with the rows in the table.
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
      auto field = rs.Add(column);
      field->FieldType = std::string(column) == "Name" ? F_Text : F_Numeral;
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
    if (table.RecordCount() == 0) {
      return out;
    }
    const auto columns = table.GetRows();
    for (size_t r = 0; r < columns[0].size(); ++r) {
      out[columns[0][r].ToLong()] = {columns[1][r], columns[2][r], columns[3][r]};
    }
    return out;
  }

  // Empty when the rows in memory are the rows in the table, else what differs.
  std::string Difference(ClsRecordset& rs) const {
    std::map<int32_t, std::vector<Variant>> table = Rows();
    std::string out;
    for (int32_t r = 1; r <= rs.Rows(); ++r) {
      const Variant key = rs.Item("Id")->GetValue(r);
      if (key.IsBlank()) {
        return "row " + std::to_string(r) + " has no Id";
      }
      const auto found = table.find(key.ToLong());
      if (found == table.end()) {
        return "Id " + CStr(key) + " is not in the table";
      }
      for (size_t c = 1; c < 4; ++c) {
        const Variant mine = rs.Item(kColumns[c])->GetValue(r);
        const Variant theirs = found->second[c - 1];
        if (mine.IsBlank() != theirs.IsBlank() || (!mine.IsBlank() && !ValuesEqual(mine, theirs))) {
          return "Id " + CStr(key) + " " + kColumns[c] + ": " + CStr(Concat(mine, "")) +
                 " in memory, " + CStr(Concat(theirs, "")) + " in the table";
        }
      }
      table.erase(found);
    }
    if (!table.empty()) {
      return "Id " + std::to_string(table.begin()->first) + " is only in the table";
    }
    return out;
  }

  TestDatabase db;
  std::string connection_string;
  std::shared_ptr<db::Connection> connection = std::make_shared<db::Connection>();
};

}  // namespace varnel::testing
