// The translated predicates run on a real database, on every provider: the
// SQL is valid there, and a date typed into a day or minute field finds the
// rows of that day or minute whatever time (and, on SQLite, whatever text
// shape) the column holds.
#include <gtest/gtest.h>

#include <tuple>
#include <vector>

#include "support/capture_ui.h"
#include "support/test_database.h"
#include "varnel/varnel.h"

namespace varnel::testing {
namespace {

// Loads rs, whose fields hold the criteria, and gives the Ids found, or
// nothing when the load fails.
std::vector<int32_t> LoadedIds(ClsRecordset& rs) {
  std::vector<int32_t> ids;
  if (!rs.InitDataSource()) {
    for (int32_t row = 1; row <= rs.Rows(); ++row) {
      ids.push_back(rs.Item("Id")->GetValue(row).ToLong());
    }
  }
  return ids;
}

class QueryOnDatabase : public ::testing::TestWithParam<TestProvider> {
 protected:
  void SetUp() override {
    auto cn = std::make_shared<db::Connection>();
    cn->Open(db_.ConnectionString());
    cn->Execute(
        "CREATE TABLE Orders (\"Id\" INTEGER, \"Placed\" TIMESTAMP, \"Qty\" INTEGER, "
        "\"Price\" NUMERIC)");
    // Placed: 2003-05-06 10:30:45, 2003-05-06 23:59:59, 2003-05-07 00:00, 2003-05-06 10:30.
    const Variant rows[][4] = {{int32_t{1}, Date{37747.4380208333}, int32_t{5}, 1234.5},
                               {int32_t{2}, Date{37747.9999884259}, Variant::Null(), 10.0},
                               {int32_t{3}, Date{37748.0}, int32_t{-2}, 0.5},
                               {int32_t{4}, Date{37747.4375}, int32_t{7}, 99.99}};
    for (const auto& r : rows) {
      cn->Execute("INSERT INTO Orders VALUES (?, ?, ?, ?)", {r[0], r[1], r[2], r[3]});
    }
    cn->Close();
  }

  // A recordset on Orders, ordered by Id, with the data fields named and Sym,
  // the currency's symbol, which every currency field names.
  void Prepare(ClsRecordset& rs, std::initializer_list<const char*> names) {
    rs.ConnectString = db_.ConnectionString();
    rs.TableName = "Orders";
    rs.DefaultOrderBy = "[Id]";
    for (const char* name : names) {
      rs.Add(name)->IsData = true;
    }
    rs.Add("Sym")->IsData = false;
  }

  // The ids of the rows found by the query typed into the field of that kind:
  // Placed (a date), Price (a currency) or Qty (a number).
  std::vector<int32_t> Find(Enum_FieldType type, Enum_DateType date_type, const char* query) {
    ClsRecordset rs;
    Prepare(rs, {"Id", "Placed", "Qty", "Price"});
    rs.Item("Price")->SymbolName = "Sym";
    auto field = rs.Item(type == F_Date ? "Placed" : type == F_Currency ? "Price" : "Qty");
    field->FieldType = type;
    field->DateType = date_type;
    field->QueryValue = query;
    return LoadedIds(rs);
  }

  // The ids of the rows found by Query on a computed currency field Amount.
  std::vector<int32_t> FindComputed(const char* formula, const char* query) {
    ClsRecordset rs;
    Prepare(rs, {"Id", "Qty", "Price"});
    rs.Item("Qty")->FieldType = rs.Item("Price")->FieldType = F_Numeral;
    auto amount = rs.Add("Amount");
    amount->FieldType = F_Currency;
    amount->IsData = false;
    amount->ComputeString = formula;
    amount->SymbolName = "Sym";
    amount->QueryValue = query;
    return LoadedIds(rs);
  }

  TestDatabase db_{GetParam()};
  CaptureScope capture_;  // what a load shows, and the evaluator's division-by-zero box
};

TEST_P(QueryOnDatabase, PredicatesRunAsWrittenAndDayOrMinuteFieldsFindTheWholeDayOrMinute) {
  const std::tuple<Enum_FieldType, Enum_DateType, const char*, std::vector<int32_t>> rows[] = {
      {F_Date, D_YMD, "5/6/2003", {1, 2, 4}},      {F_Date, D_YMD, "<>2003-05-06", {3}},
      {F_Date, D_YMD, "<=5/6/2003", {1, 2, 4}},    {F_Date, D_YMD, ">5/6/2003", {3}},
      {F_Date, D_YMD, "NOT=5/6/2003", {3}},        {F_Date, D_YMDHN, "5/6/2003 10:30", {1, 4}},
      {F_Date, D_YMDHNS, "5/6/2003 10:30", {4}},   {F_Numeral, D_YMDHNS, ">=0 AND <6", {1}},
      {F_Numeral, D_YMDHNS, "NOT 5", {2, 3, 4}},   {F_Numeral, D_YMDHNS, "NOT>0", {2, 3}},
      {F_Numeral, D_YMDHNS, "null OR <0", {2, 3}}, {F_Currency, D_YMDHNS, "$1,234.50", {1}},
      {F_Currency, D_YMDHNS, "<>10", {1, 3, 4}},
  };
  for (const auto& [type, date_type, query, ids] : rows) {
    EXPECT_EQ(Find(type, date_type, query), ids) << query << ": " << capture_.LastText();
  }
}

// A computed field is not a column: its criterion compares its formula, which
// the database computes as the evaluator does (a missing addend counts as
// none, a zero divisor gives no value); any other formula is refused by name.
TEST_P(QueryOnDatabase, CriterionOnComputedFieldComparesItsFormula) {
  const std::tuple<const char*, const char*, std::vector<int32_t>> rows[] = {
      {"Qty*Price", ">=1000", {1}},        {"Qty * Price", ">=100 AND <1000", {4}},
      {"Qty*Price", "<0 OR null", {2, 3}}, {"(Qty+Price)/2", ">=5 AND <10", {2}},
      {"Qty*2-Price", ">0", {2}},  // a missing Qty*2 leaves Price, not its negation
      {"Price/(Qty-5)", "null", {1}},
  };
  for (const auto& [formula, query, ids] : rows) {
    EXPECT_EQ(FindComputed(formula, query), ids) << formula << " " << query;
  }
  for (const char* formula : {"Qty&Price", "Qty*Rate", "Id*-1", "1+2", "Qty*(Price"}) {
    EXPECT_TRUE(FindComputed(formula, ">0").empty());
    EXPECT_NE(
        capture_.LastText().find("'Amount' cannot be queried: its formula " + std::string(formula)),
        std::string::npos)
        << capture_.LastText();
  }
}

VARNEL_ON_EVERY_PROVIDER(QueryOnDatabase);

// SQLite keeps dates as text in whatever shape each writer chose.
TEST(QueryOnSqliteDates, ADateFindsItsRowsWhateverShapeTheTextHas) {
  TestDatabase db(TestProvider::kSqlite);
  CaptureScope capture;
  auto cn = std::make_shared<db::Connection>();
  cn->Open(db.ConnectionString());
  cn->Execute(
      "CREATE TABLE T (Id INTEGER, Made DATE); INSERT INTO T VALUES (1, '2025-01-05'),"
      " (2, '2025-01-05 10:00:00'), (3, '2025-01-05T11:30:00'), (4, '2025-01-06'),"
      " (5, '10:00:00')");
  const std::tuple<Enum_DateType, const char*, std::vector<int32_t>> rows[] = {
      {D_YMD, "1/5/2025", {1, 2, 3}},
      {D_YMD, ">1/5/2025", {4}},
      {D_YMDHNS, "2025-01-05 11:30:00", {3}},
      {D_YMDHN, ">=2025-01-05 10:00", {2, 3, 4}},
      {D_HNS, "10:00:00", {2, 5}},
  };
  for (const auto& [date_type, query, ids] : rows) {
    ClsRecordset rs;
    rs.SFConnection = cn;
    rs.TableName = "T";
    rs.DefaultOrderBy = "[Id]";
    rs.Add("Id")->IsData = true;
    auto made = rs.Add("Made");
    made->IsData = true;
    made->FieldType = F_Date;
    made->DateType = date_type;
    made->QueryValue = query;
    EXPECT_EQ(LoadedIds(rs), ids) << query << ": " << capture.LastText();
  }
}

}  // namespace
}  // namespace varnel::testing
