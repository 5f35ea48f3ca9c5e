// The translated predicates run on a real database, on every provider: the
// SQL is valid there, and a date typed into a day or minute field finds the
// rows of that day or minute whatever time the column holds.
#include <gtest/gtest.h>

#include <vector>

#include "query_fixture.h"
#include "support/capture_ui.h"
#include "support/test_database.h"

namespace varnel::testing {
namespace {

class QueryOnDatabase : public ::testing::TestWithParam<TestProvider> {
 protected:
  void SetUp() override {
    auto cn = std::make_shared<db::Connection>();
    cn->Open(db_.ConnectionString());
    cn->Execute(
        "CREATE TABLE Orders (\"Id\" INTEGER, \"Placed\" TIMESTAMP, \"Qty\" INTEGER, "
        "\"Price\" NUMERIC)");
    const struct {
      int32_t id;
      double placed;  // 2003-05-06 10:30:45, 2003-05-06 23:59:59, 2003-05-07 00:00:00, ...
      Variant qty;
      double price;
    } rows[] = {{1, 37747.4380208333, Variant(int32_t{5}), 1234.5},
                {2, 37747.9999884259, Variant::Null(), 10},
                {3, 37748, Variant(int32_t{-2}), 0.5},
                {4, 37747.4375, Variant(int32_t{7}), 99.99}};
    for (const auto& r : rows) {
      cn->Execute("INSERT INTO Orders VALUES (?, ?, ?, ?)",
                  {Variant(r.id), Variant(Date{r.placed}), r.qty, Variant(r.price)});
    }
    cn->Close();
  }

  // The ids of the rows that the query text typed into field finds.
  std::vector<int32_t> Find(const char* field, Enum_FieldType type, Enum_DateType date_type,
                            const char* query) {
    ClsRecordset rs;
    rs.ConnectString = db_.ConnectionString();
    rs.UserOpenMode = U_Auto;
    rs.TableName = "Orders";
    rs.DefaultOrderBy = "[Id]";
    for (const char* name : {"Id", "Placed", "Qty", "Price"}) {
      auto f = rs.Add(name);
      f->IsData = true;
      f->FieldType = F_Numeral;
    }
    rs.Add("Sym")->IsData = false;  // the currency's symbol, which every currency field names
    rs.Item("Price")->SymbolName = "Sym";
    rs.Item(field)->FieldType = type;
    rs.Item(field)->DateType = date_type;
    rs.Item(field)->QueryValue = query;
    CaptureScope capture;
    EXPECT_FALSE(rs.InitDataSource()) << query << ": " << capture.LastText();
    std::vector<int32_t> ids;
    for (int32_t row = 1; row <= rs.Rows(); ++row) {
      ids.push_back(rs.Item("Id")->GetValue(row).ToLong());
    }
    return ids;
  }

  TestDatabase db_{GetParam()};
};

using Ids = std::vector<int32_t>;

TEST_P(QueryOnDatabase, DayFieldFindsTheRowsOfThatDayWhateverTheirTime) {
  EXPECT_EQ(Find("Placed", F_Date, D_YMD, "5/6/2003"), (Ids{1, 2, 4}));
  EXPECT_EQ(Find("Placed", F_Date, D_YMD, "<>2003-05-06"), (Ids{3}));
  EXPECT_EQ(Find("Placed", F_Date, D_YMD, "<=5/6/2003"), (Ids{1, 2, 4}));
  EXPECT_EQ(Find("Placed", F_Date, D_YMD, ">5/6/2003"), (Ids{3}));
  EXPECT_EQ(Find("Placed", F_Date, D_YMD, "NOT=5/6/2003"), (Ids{3}));
}

TEST_P(QueryOnDatabase, MinuteFieldFindsTheRowsOfThatMinute) {
  EXPECT_EQ(Find("Placed", F_Date, D_YMDHN, "5/6/2003 10:30"), (Ids{1, 4}));
  EXPECT_EQ(Find("Placed", F_Date, D_YMDHNS, "5/6/2003 10:30"), (Ids{4}));
}

TEST_P(QueryOnDatabase, NumberAndCurrencyPredicatesRunAsWritten) {
  EXPECT_EQ(Find("Qty", F_Numeral, D_YMDHNS, ">=0 AND <6"), (Ids{1}));
  EXPECT_EQ(Find("Qty", F_Numeral, D_YMDHNS, "NOT 5"), (Ids{2, 3, 4}));
  EXPECT_EQ(Find("Qty", F_Numeral, D_YMDHNS, "NOT>0"), (Ids{2, 3}));
  EXPECT_EQ(Find("Qty", F_Numeral, D_YMDHNS, "null OR <0"), (Ids{2, 3}));
  EXPECT_EQ(Find("Price", F_Currency, D_YMDHNS, "$1,234.50"), (Ids{1}));
  EXPECT_EQ(Find("Price", F_Currency, D_YMDHNS, "<>10"), (Ids{1, 3, 4}));
}

VARNEL_ON_EVERY_PROVIDER(QueryOnDatabase);

}  // namespace
}  // namespace varnel::testing
