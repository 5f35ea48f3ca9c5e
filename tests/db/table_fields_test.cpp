// Fields built from a table's own schema, and names and dates as the database
// keeps them: a column named with a "]" loads, saves and queries, and a day
// column keeps the shape of its values. On every provider.
#include <gtest/gtest.h>

#include "db/db_fixture.h"
#include "support/capture_ui.h"
#include "varnel/table_writer.h"
#include "varnel/varnel.h"

namespace varnel::testing {
namespace {

class TableFields : public DbTest {
 protected:
  void SetUp() override {
    cn()->Execute(
        "CREATE TABLE Parts (\"Id\" INTEGER PRIMARY KEY, \"Size [cm]\" INTEGER NOT NULL DEFAULT 3,"
        " \"Name\" VARCHAR(20) DEFAULT 'O''Brien', \"Made\" DATE, \"Stamp\" TIMESTAMP,"
        " \"Paid\" BOOLEAN DEFAULT TRUE, \"Price\" NUMERIC(10,2) DEFAULT (-1.5))");
    cn()->Execute(
        "INSERT INTO Parts (\"Id\", \"Size [cm]\", \"Made\") VALUES (1, 5, '2025-01-05')");
  }
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

TEST_P(TableFields, OneFieldPerColumnTypedByTheSchemaThenLoadSaveAndQueryByItsName) {
  ClsRecordset rs;
  CaptureScope capture;
  ASSERT_FALSE(rs.ReadTableFields("Parts", cn())) << capture.LastText();
  const ExpectedField expected[] = {
      {"Id", F_Numeral, N_Integer, 0, !OnPostgres(), Variant::Null(), false},  // SQLite numbers it
      {"Size [cm]", F_Numeral, N_Integer, 0, false, Variant(3.0), true},
      {"Name", F_Text, 0, 20, true, Variant("O'Brien"), true},
      {"Made", F_Date, D_YMD, 0, true, Variant::Null(), true},
      {"Stamp", F_Date, D_YMDHNS, 0, true, Variant::Null(), true},
      {"Paid", F_Boolean, 0, 0, true, Variant(int16_t{1}), true},
      {"Price", F_Numeral, N_Float, 0, true, Variant(-1.5), true},
  };
  ASSERT_EQ(rs.Count(), std::size(expected));
  EXPECT_EQ(rs.TableName, "Parts");
  for (const ExpectedField& e : expected) {
    const auto field = rs.Item(e.name);
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
  EXPECT_TRUE(rs.ReadTableFields("Nowhere", cn()));
  EXPECT_EQ(rs.Count(), std::size(expected)) << "a failed read keeps the fields";

  // Save a new row and a change through the column whose name holds a "]".
  rs.ConnectString = ConnectionString();
  rs.UserOpenMode = U_Auto;
  ASSERT_FALSE(rs.InitDataSource()) << capture.LastText();
  TableWriter writer(rs);
  ASSERT_FALSE(rs.NewRecord("Id", int32_t{9}));
  ASSERT_FALSE(rs.Modify("Made", Date{45717.0}));  // 2025-03-01
  ASSERT_EQ(rs.UpdateRecord(), E_Succeed) << capture.LastText();
  ASSERT_FALSE(rs.MoveFirst());
  ASSERT_FALSE(rs.Modify("Size [cm]", int32_t{7}));
  ASSERT_EQ(rs.UpdateRecord(), E_Succeed) << capture.LastText();
  // The new day keeps the shape of the day stored before it.
  EXPECT_EQ(Query("SELECT CAST(\"Made\" AS TEXT) FROM Parts ORDER BY \"Id\"")->GetRows()[0],
            (std::vector<Variant>{Variant("2025-01-05"), Variant("2025-03-01")}));

  rs.Item("Size [cm]")->QueryValue = ">=7";
  rs.Item("Made")->QueryValue = "<=3/1/2025";
  ASSERT_FALSE(rs.RefreshDataSource()) << capture.LastText();
  ASSERT_EQ(rs.Rows(), 1);
  EXPECT_EQ(rs.Item("Id")->GetValue(1).ToLong(), 1);
  EXPECT_EQ(rs.Item("Size [cm]")->GetValue(1).ToLong(), 7);
}

VARNEL_ON_EVERY_PROVIDER(TableFields);

}  // namespace
}  // namespace varnel::testing
