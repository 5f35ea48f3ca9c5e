// Building the field collection from a field-information table.
#include "recordset/fixtures.h"

namespace varnel::testing {
namespace {

class FieldInformation : public SourceTest {
 protected:
  FieldInformation() {
    Execute(
        {"CREATE TABLE FieldsInfo (\"ViewName\" TEXT, \"FieldObject\" TEXT, "
         "\"OrderByField1\" TEXT, \"OrderByField2\" TEXT, \"OrderByField3\" TEXT, "
         "\"OrderByAscending1\" INTEGER, \"OrderByAscending2\" INTEGER, "
         "\"OrderByAscending3\" INTEGER, \"Name\" TEXT, \"FieldType\" INTEGER, \"IsMain\" "
         "BOOLEAN, \"DateType\" INTEGER, \"NumType\" INTEGER, \"SymbolName\" TEXT, "
         "\"IsData\" BOOLEAN, \"EnableNull\" BOOLEAN, \"Edit\" BOOLEAN, \"Copy\" BOOLEAN, "
         "\"InputMax\" TEXT, \"InputMin\" TEXT, \"QueryValue\" TEXT, \"IsSum\" BOOLEAN, "
         "\"ComputeString\" TEXT, \"DefaultValue\" TEXT, \"DefinedSize\" INTEGER, "
         "\"SaveToDB\" BOOLEAN, \"DisplayNameEnglish\" TEXT, \"DisplayNameChinese\" TEXT)",
         "INSERT INTO FieldsInfo ([ViewName], [FieldObject], [OrderByField1], "
         "[OrderByAscending1], [OrderByField3], [Name], [FieldType], [InputMax], [InputMin], "
         "[DefaultValue], [IsSum], [DisplayNameEnglish], [DisplayNameChinese]) VALUES "
         "('orders', 'Items', 'Qty', -1, 'Id', 'Qty', 5, '100', '0', '7', TRUE, 'Quantity', "
         "'数量')",
         "INSERT INTO FieldsInfo ([ViewName], [Name], [FieldType], [InputMax], [DefaultValue], "
         "[IsData], [DisplayNameEnglish]) VALUES ('orders', 'Done', 1, '5', 'yes', FALSE, "
         "'Done')",
         "INSERT INTO FieldsInfo ([ViewName], [Name], [FieldType], [InputMax], [DefaultValue], "
         "[DateType]) VALUES ('orders', 'Made', 2, '2003-12-31', '2003-05-06', 2)",
         "INSERT INTO FieldsInfo ([ViewName], [Name]) VALUES ('other', 'Stray')"});
    source = std::make_shared<db::Recordset>();
    auto connection = std::make_shared<db::Connection>();
    connection->Open(db.ConnectionString());
    source->Open("FieldsInfo", connection);
    rs.TableName = "";
    rs.OrderByField3 = "kept";
  }

  std::shared_ptr<db::Recordset> source;
};

TEST_P(FieldInformation, ViewRowsBecomeFieldsWithTheirSettingsAndBadOnesAreReported) {
  EXPECT_FALSE(rs.ReadFieldsInformation(source, "orders"));
  ASSERT_EQ(rs.Count(), 3);
  EXPECT_EQ(rs.TableName, "Items");
  EXPECT_EQ(rs.OrderByField1, "Qty");
  EXPECT_EQ(rs.OrderByAscending1, Descending);
  EXPECT_EQ(rs.OrderByField3, "kept");  // the chain stopped at the Null second field
  auto qty = rs.Item(1);
  EXPECT_EQ(qty->Name, "Qty");
  EXPECT_EQ(qty->FieldType, F_Numeral);
  EXPECT_TRUE(qty->IsSum);
  EXPECT_TRUE(qty->EnableNull);  // Null cell: Add's value
  EXPECT_EQ(qty->InputMax, Variant(100.0));
  EXPECT_EQ(qty->InputMin, Variant(0.0));
  EXPECT_EQ(qty->DefaultValue, Variant(7.0));
  EXPECT_EQ(qty->DisplayName, "Quantity");
  auto done = rs.Item("Done");
  EXPECT_FALSE(done->IsData);
  EXPECT_TRUE(done->InputMax.IsNull());  // bounds only for numbers and dates
  EXPECT_EQ(done->DefaultValue, Variant(int16_t{1}));
  auto made = rs.Item("Made");
  EXPECT_EQ(made->DateType, D_YMD);
  EXPECT_EQ(made->InputMax, Variant(CDate(Variant("2003-12-31"))));
  EXPECT_EQ(made->DefaultValue, Variant(CDate(Variant("2003-05-06"))));

  // A Null FieldObject or a missing column ends the reading with a report.
  const int32_t count = rs.Count();
  EXPECT_TRUE(rs.ReadFieldsInformation(source, "other"));  // its FieldObject is Null
  EXPECT_EQ(ui.shown().back().title, "Error:94");
  EXPECT_EQ(rs.Count(), count);
  Execute({"CREATE TABLE Thin (\"ViewName\" TEXT, \"Name\" TEXT)",
           "INSERT INTO Thin VALUES ('orders', 'Qty')"});
  auto thin = std::make_shared<db::Recordset>();
  thin->Open("Thin", source->ActiveConnection());
  EXPECT_TRUE(rs.ReadFieldsInformation(thin, "orders"));
  EXPECT_EQ(ui.shown().back().kind, ShownMessage::Error);

  SetThreadUILanguage(2052);  // the other condition narrows, the language picks the name
  EXPECT_FALSE(rs.ReadFieldsInformation(source, "orders", "FieldType = 5"));
  ASSERT_EQ(rs.Count(), 1);
  EXPECT_EQ(rs.Item(1)->DisplayName, "数量");
  rs.OrderByField1 = "Name";
  rs.TableName = "";
  EXPECT_FALSE(rs.ReadFieldsInformation(source, "nothing"));  // an empty view
  EXPECT_EQ(rs.Count(), 0);
  EXPECT_EQ(rs.OrderByField1 + "|" + rs.TableName, "Name|");
}

TEST_P(FieldInformation, ZerosAndTheWordTodayAreKeptAsTheyAre) {
  Execute(
      {"UPDATE FieldsInfo SET [OrderByAscending1] = 0, [DefaultValue] = '0' "
       "WHERE [Name] = 'Qty'",
       "UPDATE FieldsInfo SET [DefaultValue] = '0' WHERE [Name] = 'Done'",
       "UPDATE FieldsInfo SET [DefaultValue] = ' toDay ' WHERE [Name] = 'Made'"});
  EXPECT_FALSE(rs.ReadFieldsInformation(source, "orders"));
  EXPECT_EQ(rs.OrderByAscending1, Ascending);
  EXPECT_EQ(rs.Item("Done")->DefaultValue, Variant(int16_t{0}));
  // Kept as typed: a new row then takes the current date (RecordEditing tests the filling).
  EXPECT_EQ(rs.Item("Made")->DefaultValue, Variant(" toDay "));
}

VARNEL_ON_EVERY_PROVIDER(FieldInformation);

}  // namespace
}  // namespace varnel::testing
