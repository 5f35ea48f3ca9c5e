// Tables loaded into a ClsRecordset and written back by TableWriter, on every
// provider. Fields built from a table's own schema: a column named with a "]"
// loads, saves and queries, and a day column keeps the shape of its values.
// Keys and amounts beyond what a Double holds: loaded exactly, found by the
// query translator, and written to the right row without a false conflict.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "db/db_fixture.h"
#include "support/capture_ui.h"
#include "varnel/table_writer.h"
#include "varnel/varnel.h"

namespace varnel::testing {
namespace {

constexpr int64_t kFirst = 9007199254740992;   // 2^53
constexpr int64_t kSecond = 9007199254740993;  // 2^53 + 1: the same Double as kFirst

class TableRows : public DbTest {
 protected:
  // Loads Accts, its fields made from its schema, ordered by key.
  void Load() {
    ASSERT_FALSE(rs_.ReadTableFields("Accts", cn())) << capture_.LastText();
    rs_.ConnectString = ConnectionString();
    rs_.UserOpenMode = U_Auto;
    rs_.OrderByField1 = "[Acct]";
    ASSERT_FALSE(rs_.InitDataSource()) << capture_.LastText();
  }

  Columns Table(const std::string& columns) {
    return Query("SELECT " + columns + " FROM Accts ORDER BY [Acct]")->GetRows();
  }

  CaptureScope capture_;
  ClsRecordset rs_;
};

struct ExpectedField {
  const char* name;
  Enum_FieldType type;
  int32_t date_or_num_type;  // DateType of a date field, NumType of a number
  int32_t size;
  bool enable_null;
  Variant default_value;
  bool copy;
};

TEST_P(TableRows, OneFieldPerColumnTypedByTheSchemaThenLoadSaveAndQueryByItsName) {
  cn()->Execute(
      "CREATE TABLE Parts (\"Id\" INTEGER PRIMARY KEY, \"Size [cm]\" INTEGER NOT NULL DEFAULT 3,"
      " \"Name\" VARCHAR(20) DEFAULT 'O''Brien', \"Made\" DATE, \"Stamp\" TIMESTAMP,"
      " \"Paid\" BOOLEAN DEFAULT TRUE, \"Price\" NUMERIC(10,2) DEFAULT (-1.5))");
  cn()->Execute("INSERT INTO Parts (\"Id\", \"Size [cm]\", \"Made\") VALUES (1, 5, '2025-01-05')");
  ASSERT_FALSE(rs_.ReadTableFields("Parts", cn())) << capture_.LastText();
  const ExpectedField expected[] = {
      {"Id", F_Numeral, N_Integer, 0, !OnPostgres(), Variant::Null(), false},  // SQLite numbers it
      {"Size [cm]", F_Numeral, N_Integer, 0, false, Variant(3.0), true},
      {"Name", F_Text, 0, 20, true, Variant("O'Brien"), true},
      {"Made", F_Date, D_YMD, 0, true, Variant::Null(), true},
      {"Stamp", F_Date, D_YMDHNS, 0, true, Variant::Null(), true},
      {"Paid", F_Boolean, 0, 0, true, Variant(int16_t{1}), true},
      {"Price", F_Numeral, N_Float, 0, true, Variant(-1.5), true},
  };
  ASSERT_EQ(rs_.Count(), std::size(expected));
  EXPECT_EQ(rs_.TableName, "Parts");
  for (const ExpectedField& e : expected) {
    const auto field = rs_.Item(e.name);
    ASSERT_NE(field, nullptr) << e.name;
    EXPECT_EQ(field->FieldType, e.type) << e.name;
    EXPECT_EQ(e.type == F_Date ? int32_t{field->DateType} : int32_t{field->NumType},
              e.type == F_Date || e.type == F_Numeral ? e.date_or_num_type : int32_t{N_Integer})
        << e.name;
    EXPECT_EQ(field->DefinedSize, e.size) << e.name;
    EXPECT_EQ(field->EnableNull, e.enable_null) << e.name;
    EXPECT_EQ(field->DefaultValue, e.default_value) << e.name;
    EXPECT_EQ(field->Copy, e.copy) << e.name;
    EXPECT_TRUE(field->IsData && field->SaveToDB && field->Edit) << e.name;
  }
  EXPECT_TRUE(rs_.ReadTableFields("Nowhere", cn()));
  EXPECT_EQ(rs_.Count(), std::size(expected)) << "a failed read keeps the fields";

  // Save a new row and a change through the column whose name holds a "]".
  rs_.ConnectString = ConnectionString();
  rs_.UserOpenMode = U_Auto;
  ASSERT_FALSE(rs_.InitDataSource()) << capture_.LastText();
  TableWriter writer(rs_);
  ASSERT_FALSE(rs_.NewRecord("Id", int32_t{9}));
  ASSERT_FALSE(rs_.Modify("Made", Date{45717.0}));  // 2025-03-01
  ASSERT_EQ(rs_.UpdateRecord(), E_Succeed) << capture_.LastText();
  ASSERT_FALSE(rs_.MoveFirst());
  ASSERT_FALSE(rs_.Modify("Size [cm]", int32_t{7}));
  ASSERT_EQ(rs_.UpdateRecord(), E_Succeed) << capture_.LastText();
  // The new day keeps the shape of the day stored before it.
  EXPECT_EQ(Query("SELECT CAST(\"Made\" AS TEXT) FROM Parts ORDER BY \"Id\"")->GetRows()[0],
            (std::vector<Variant>{Variant("2025-01-05"), Variant("2025-03-01")}));

  rs_.Item("Size [cm]")->QueryValue = ">=7";
  rs_.Item("Made")->QueryValue = "<=3/1/2025";
  ASSERT_FALSE(rs_.RefreshDataSource()) << capture_.LastText();
  ASSERT_EQ(rs_.Rows(), 1);
  EXPECT_EQ(rs_.Item("Id")->GetValue(1).ToLong(), 1);
  EXPECT_EQ(rs_.Item("Size [cm]")->GetValue(1).ToLong(), 7);
}

TEST_P(TableRows, RowsWhoseKeysShareADoubleAreEditedDeletedAndFoundByTheirOwnKey) {
  cn()->Execute(
      "CREATE TABLE Accts (\"Acct\" BIGINT PRIMARY KEY, \"Name\" VARCHAR(20));"
      "INSERT INTO Accts VALUES (9007199254740992, 'first'), "
      "(9007199254740993, 'second'), (7, 'small')");
  Load();
  ASSERT_EQ(rs_.Rows(), 3);
  EXPECT_EQ(rs_["Acct"]->GetValue(1), Variant(int32_t{7})) << "a key that fits a Long stays one";
  EXPECT_EQ(rs_["Acct"]->GetValue(3), Variant(kSecond));
  TableWriter writer(rs_);

  rs_.AbsolutePosition(3);
  ASSERT_FALSE(rs_.Modify("Name", Variant("edited")));
  EXPECT_EQ(rs_.UpdateRecord(), E_Succeed) << capture_.LastText();
  rs_.AbsolutePosition(2);
  ASSERT_FALSE(rs_.DeleteRecord());
  EXPECT_EQ(rs_.UpdateRecord(), E_Succeed) << capture_.LastText();
  EXPECT_EQ(Table("[Acct], [Name]"), (Columns{{Variant(int32_t{7}), Variant(kSecond)},
                                              {Variant("small"), Variant("edited")}}));

  ASSERT_FALSE(rs_.NewQuery());
  rs_["Acct"]->QueryValue = "9007199254740993";
  std::string condition;
  ASSERT_FALSE(rs_.GetCondition(condition));
  EXPECT_TRUE(Holds(condition, "[Acct]=9007199254740993"));
  ASSERT_FALSE(rs_.ExecuteQuery());
  ASSERT_EQ(rs_.Rows(), 1);
  EXPECT_EQ(rs_["Acct"]->GetValue(1), Variant(kSecond));
  EXPECT_TRUE(capture_.shown().empty()) << capture_.LastText();
}

TEST_P(TableRows, ExactNumericAmountsRoundTripAndSaveWithoutAFalseConflict) {
  if (!OnPostgres()) {
    GTEST_SKIP() << "SQLite keeps NUMERIC values in a Double";
  }
  cn()->Execute(
      "CREATE TABLE Accts (\"Acct\" bigint PRIMARY KEY, \"Amount\" numeric(30,10),"
      " \"Name\" text);"
      "INSERT INTO Accts VALUES (9007199254740993, 1234567890.1234567891, 'a'),"
      " (9007199254740992, 0.5, 'b')");
  Load();
  ASSERT_EQ(rs_.Rows(), 2);
  const Variant amount = rs_["Amount"]->GetValue(2);
  EXPECT_EQ(amount.VarType(), vbDecimal);
  EXPECT_EQ(CStr(amount), "1234567890.1234567891");
  EXPECT_EQ(rs_["Amount"]->GetValue(1), Variant(0.5)) << "what a Double holds stays a Double";
  TableWriter writer(rs_);

  rs_.AbsolutePosition(2);
  ASSERT_FALSE(rs_.Modify("Name", Variant("kept amount")));
  EXPECT_EQ(rs_.UpdateRecord(), E_Succeed) << capture_.LastText();
  ASSERT_FALSE(rs_.Modify("Amount", Variant("1234567890.1234567892")));
  EXPECT_EQ(rs_.UpdateRecord(), E_Succeed) << capture_.LastText();
  EXPECT_EQ(Table("CAST([Acct] AS text), CAST([Amount] AS text), [Name]"),
            (Columns{{Variant("9007199254740992"), Variant("9007199254740993")},
                     {Variant("0.5000000000"), Variant("1234567890.1234567892")},
                     {Variant("b"), Variant("kept amount")}}));
}

VARNEL_ON_EVERY_PROVIDER(TableRows);

}  // namespace
}  // namespace varnel::testing
