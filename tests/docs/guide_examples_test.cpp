// The guide's examples, read from its pages and run: every query-by-form row
// gives the SQL the page shows, and the field-information table's CREATE TABLE
// works on every provider, takes the row of a field and reads back into
// fields (how each setting is read is checked with the recordset's tests).
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "support/test_database.h"
#include "varnel/varnel.h"

namespace varnel {
namespace {

std::string ReadPage(const std::string& name) {
  std::ifstream in(std::string(VARNEL_DOCS_DIR) + "/" + name);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

TEST(GuideExamples, EveryQueryByFormExampleGivesTheSqlThePageShows) {
  const std::map<std::string, Enum_FieldType> kinds = {
      {"F_Numeral", F_Numeral}, {"F_Currency", F_Currency}, {"F_Date", F_Date},
      {"F_Text", F_Text},       {"F_Boolean", F_Boolean},   {"F_Other", F_Other}};
  std::istringstream page(ReadPage("query_by_form.md"));
  // An example line: "kind | field | typed | SQL", the columns padded with blanks.
  const std::regex example("(F_\\w+) +\\| (\\w+) +\\| (.*\\S) +\\| (.*)");
  int examples = 0;
  for (std::string line; std::getline(page, line);) {
    if (line.rfind("F_", 0) != 0) {
      continue;
    }
    std::smatch cells;
    ASSERT_TRUE(std::regex_match(line, cells, example)) << line;
    ClsRecordset rs;
    auto field = rs.Add(cells[2].str());
    field->FieldType = kinds.at(cells[1].str());
    field->DateType = D_YMD;
    field->QueryValue = cells[3].str();
    EXPECT_EQ(CStr(MdlQuery::QueryCondition(*field)), cells[4].str()) << line;
    ++examples;
  }
  EXPECT_GE(examples, 20) << "the page's examples were not found";
}

class FieldInformationTable : public ::testing::TestWithParam<testing::TestProvider> {
 protected:
  testing::TestDatabase db_{GetParam()};
};

TEST_P(FieldInformationTable, TheDocumentedCreateTableWorksAndReadsBackIntoFields) {
  const std::string page = ReadPage("field_information.md");
  const size_t start = page.find("```sql\n") + 7;
  ASSERT_NE(start, std::string::npos + 7) << "no sql block on the page";
  auto cn = std::make_shared<db::Connection>();
  cn->Open(db_.ConnectionString());
  cn->Execute(page.substr(start, page.find("```", start) - start));
  cn->Execute(
      "INSERT INTO [FieldsInformation] ([ViewName], [FieldObject], [OrderByField1],"
      " [OrderByAscending1], [Name], [FieldType], [IsMain], [NumType], [IsData], [EnableNull],"
      " [Edit], [Copy], [InputMax], [InputMin], [IsSum], [DefaultValue], [SaveToDB],"
      " [DisplayNameEnglish]) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
      {Variant("Orders"), Variant("OrderLines"), Variant("Qty"), Variant(int32_t{1}),
       Variant("Qty"), Variant(int32_t{F_Numeral}), Variant(false), Variant(int32_t{N_Integer}),
       Variant(true), Variant(false), Variant(true), Variant(true), Variant("100"), Variant("0"),
       Variant(true), Variant("1"), Variant(true), Variant("Quantity")});
  auto table = std::make_shared<db::Recordset>();
  table->Open("SELECT * FROM [FieldsInformation]", cn);
  ClsRecordset rs;
  ASSERT_FALSE(rs.ReadFieldsInformation(table, "Orders"));
  ASSERT_EQ(rs.Count(), 1);
  const auto qty = rs.Item("Qty");
  ASSERT_NE(qty, nullptr);
  EXPECT_EQ(rs.OrderByAscending1, Descending);
  EXPECT_FALSE(qty->EnableNull);
  EXPECT_TRUE(qty->IsData && qty->Edit && qty->Copy && qty->IsSum && qty->SaveToDB);
  EXPECT_EQ(qty->InputMax.ToDouble(), 100.0);
}

VARNEL_ON_EVERY_PROVIDER(FieldInformationTable);

}  // namespace
}  // namespace varnel
