// Keys and amounts beyond what a Double holds, end to end on every provider:
// loaded exactly, found by the query translator, and written back by
// TableWriter to the right row without a false conflict.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "db/db_fixture.h"
#include "support/capture_ui.h"
#include "varnel/varnel.h"

namespace varnel::testing {
namespace {

constexpr int64_t kFirst = 9007199254740992;   // 2^53
constexpr int64_t kSecond = 9007199254740993;  // 2^53 + 1: the same Double as kFirst

class ExactKeys : public DbTest {
 protected:
  // Loads Accts, its fields made from its schema, ordered by key.
  void Load() {
    ASSERT_FALSE(rs_.ReadTableFields("Accts", cn())) << capture_.LastText();
    rs_.ConnectString = ConnectionString();
    rs_.UserOpenMode = U_Auto;
    rs_.OrderByField1 = "[Acct]";
    ASSERT_FALSE(rs_.InitDataSource()) << capture_.LastText();
  }

  std::vector<std::vector<Variant>> Table(const std::string& columns) {
    return Query("SELECT " + columns + " FROM Accts ORDER BY [Acct]")->GetRows();
  }

  CaptureScope capture_;
  ClsRecordset rs_;
};

TEST_P(ExactKeys, RowsWhoseKeysShareADoubleAreEditedDeletedAndFoundByTheirOwnKey) {
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
  EXPECT_EQ(Table("[Acct], [Name]"),
            (std::vector<std::vector<Variant>>{{Variant(int32_t{7}), Variant(kSecond)},
                                               {Variant("small"), Variant("edited")}}));

  ASSERT_FALSE(rs_.NewQuery());
  rs_["Acct"]->QueryValue = "9007199254740993";
  std::string condition;
  ASSERT_FALSE(rs_.GetCondition(condition));
  EXPECT_NE(condition.find("[Acct]=9007199254740993"), std::string::npos) << condition;
  ASSERT_FALSE(rs_.ExecuteQuery());
  ASSERT_EQ(rs_.Rows(), 1);
  EXPECT_EQ(rs_["Acct"]->GetValue(1), Variant(kSecond));
  EXPECT_TRUE(capture_.shown().empty()) << capture_.LastText();
}

TEST_P(ExactKeys, ExactNumericAmountsRoundTripAndSaveWithoutAFalseConflict) {
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
            (std::vector<std::vector<Variant>>{
                {Variant("9007199254740992"), Variant("9007199254740993")},
                {Variant("0.5000000000"), Variant("1234567890.1234567892")},
                {Variant("b"), Variant("kept amount")}}));
}

VARNEL_ON_EVERY_PROVIDER(ExactKeys);

}  // namespace
}  // namespace varnel::testing
