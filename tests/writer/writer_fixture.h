// The writer suites' tables on every provider: Items, whose key the database
// fills in, and Loose, a table without a key; a second user of the same
// database; and the recordset loaded from either with every column written back.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "support/capture_ui.h"
#include "support/test_database.h"
#include "varnel/table_writer.h"
#include "varnel/varnel.h"

namespace varnel::testing {

using Rows = std::vector<std::vector<Variant>>;

class WriterTest : public ::testing::TestWithParam<TestProvider> {
 protected:
  void SetUp() override {
    other_->Open(db_.ConnectionString());  // before any FaultScope: never wrapped
    CreateTable("Items");
  }

  // Items: ('bolt', 10, '2024-01-05'), ('nut', 20, '2024-02-01 08:30:00', 'x'),
  // ('washer', 30, NULL, 'y'), Ids 1 to 3 given by the database; Loose, without a
  // key, holds loose_rows, by default (1, 'a', 1), (2, 'b', 2), (3, 'c', 3).
  void CreateTable(const std::string& table, const char* loose_rows = nullptr) {
    other_->Execute("DROP TABLE IF EXISTS " + table);
    if (table == "Loose") {
      other_->Execute(
          "CREATE TABLE Loose (\"Id\" INTEGER, \"Name\" VARCHAR(20) NOT NULL, \"Qty\" INTEGER, "
          "\"Made\" DATE, \"Note\" TEXT)");
      other_->Execute(std::string("INSERT INTO Loose VALUES ") +
                      (loose_rows ? loose_rows
                                  : "(1, 'a', 1, NULL, NULL), (2, 'b', 2, NULL, NULL),"
                                    " (3, 'c', 3, NULL, NULL)"));
      return;
    }
    const char* key =
        GetParam() == TestProvider::kSqlite ? "INTEGER PRIMARY KEY" : "SERIAL PRIMARY KEY";
    other_->Execute("CREATE TABLE Items (\"Id\" " + std::string(key) +
                    ", \"Name\" VARCHAR(20) NOT NULL, \"Qty\" INTEGER, \"Made\" TIMESTAMP,"
                    " \"Note\" TEXT)");
    other_->Execute(
        "INSERT INTO Items ([Name], [Qty], [Made], [Note]) VALUES"
        " ('bolt', 10, '2024-01-05', NULL), ('nut', 20, '2024-02-01 08:30:00', 'x'),"
        " ('washer', 30, NULL, 'y')");
  }

  // Loads table into rs_ (ordered by Id) with every column written back, and
  // a computed Twice = Qty*2 that is never written.
  void Load(const std::string& table = "Items") {
    rs_.ConnectString = db_.ConnectionString();
    rs_.TableName = table;
    rs_.UserOpenMode = U_Auto;
    rs_.OrderByField1 = "[Id]";
    for (const char* name : {"Id", "Name", "Qty", "Made", "Note"}) {
      auto field = rs_.Add(name);
      // Made is a date, Name and Note are texts, Id and Qty numbers.
      field->FieldType = *name == 'M' ? F_Date : *name == 'N' ? F_Text : F_Numeral;
      field->IsData = field->SaveToDB = field->Edit = field->EnableNull = true;
      field->Copy = std::string(name) != "Id";
    }
    auto twice = rs_.Add("Twice");
    twice->FieldType = F_Numeral;
    twice->ComputeString = "Qty*2";
    twice->IsData = false;
    twice->Edit = twice->EnableNull = true;
    ASSERT_FALSE(rs_.InitDataSource());
    ASSERT_EQ(rs_.Rows(), 3);
  }

  // The table made afresh and loaded again.
  void Reload(const std::string& table = "Items", const char* loose_rows = nullptr) {
    rs_.CloseDataSource();
    rs_.Clear();
    CreateTable(table, loose_rows);
    Load(table);
  }

  Rows Query(const std::string& sql) {
    db::Recordset recordset;
    recordset.Open(sql, other_);
    Rows rows;
    for (; !recordset.Eof(); recordset.MoveNext()) {
      rows.emplace_back();
      for (int32_t i = 0; i < recordset.Fields().Count(); ++i) {
        rows.back().push_back(recordset.Fields().Item(i).Value());
      }
    }
    return rows;
  }

  // Everything shown to the user, for failure messages.
  std::string Shown() const {
    std::string text;
    for (const ShownMessage& m : capture_.shown()) {
      text += "[" + m.caption + "] " + m.title + " " + m.text + "\n";
    }
    return text;
  }

  TestDatabase db_{GetParam()};
  CaptureScope capture_;
  std::shared_ptr<db::Connection> other_ = std::make_shared<db::Connection>();
  ClsRecordset rs_;
};

}  // namespace varnel::testing
