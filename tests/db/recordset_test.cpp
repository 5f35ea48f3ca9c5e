#include <gtest/gtest.h>

#include "db/db_fixture.h"

namespace varnel::testing {
namespace {

constexpr int32_t kNoCurrentRecord = 3021;

class RecordsetTest : public DbTest {
 protected:
  void SetUp() override {
    cn()->Execute(
        "CREATE TABLE Items (\"Id\" INTEGER, \"Name\" VARCHAR(20), \"Qty\" INTEGER);"
        "INSERT INTO Items VALUES (1, 'bolt', 10), (2, 'nut', 20), (3, 'gear', NULL);"
        "CREATE TABLE Empty (\"Id\" INTEGER)");
  }
};

TEST_P(RecordsetTest, OpenCloseAndStateFollowTheLifecycleAndAnEmptyOneIsAtBofAndEof) {
  auto rs = std::make_shared<db::Recordset>();
  EXPECT_EQ(rs->State(), 0);
  EXPECT_EQ(ErrorOf([&] { rs->RecordCount(); }).Number(), 3704);
  rs->Open("[Items]", cn());
  EXPECT_EQ(rs->State(), 1);
  EXPECT_EQ(rs->ActiveConnection(), cn());
  EXPECT_EQ(ErrorOf([&] { rs->Open("Items", cn()); }).Number(), 3705);
  rs->Close();
  EXPECT_EQ(rs->State(), 0);
  EXPECT_EQ(ErrorOf([&] { rs->Fields().Count(); }).Number(), 3704);
  EXPECT_EQ(ErrorOf([&] { rs->Close(); }).Number(), 3704);
  auto closed = std::make_shared<db::Connection>();
  EXPECT_EQ(ErrorOf([&] { rs->Open("Items", closed); }).Number(), 3704);
  EXPECT_EQ(ErrorOf([&] { rs->Open("Nowhere", cn()); }).Number(), -2147467259);
  EXPECT_EQ(rs->State(), 0);
  rs->Open("Empty", cn());
  EXPECT_TRUE(rs->Bof());
  EXPECT_TRUE(rs->Eof());
  EXPECT_EQ(rs->RecordCount(), 0);
  EXPECT_EQ(rs->AbsolutePosition(), 0);
  for (auto move : {&db::Recordset::MoveFirst, &db::Recordset::MoveLast, &db::Recordset::MoveNext,
                    &db::Recordset::MovePrevious}) {
    EXPECT_EQ(ErrorOf([&] { ((*rs).*move)(); }).Number(), kNoCurrentRecord);
  }
  const VbError error = ErrorOf([&] { rs->Fields()[0].Value(); });
  EXPECT_EQ(error.Number(), kNoCurrentRecord);
  EXPECT_EQ(error.Description(),
            "Either BOF or EOF is True, or the current record has been deleted. Requested "
            "operation requires a current record.");
  EXPECT_EQ(rs->GetRows(), std::vector<std::vector<Variant>>(1));
}

TEST_P(RecordsetTest, MovesWalkTheRowsBetweenBofAndEofAndFieldsAreKnownAtOpenRowsAtFirstNeed) {
  auto rs = Query("SELECT [Id] FROM Items ORDER BY [Id]");
  EXPECT_FALSE(rs->Bof());
  EXPECT_EQ(rs->AbsolutePosition(), 1);
  EXPECT_EQ(rs->RecordCount(), 3);
  rs->MoveLast();
  EXPECT_EQ(rs->Fields()[0].Value(), Variant(int32_t{3}));
  rs->MoveNext();
  EXPECT_TRUE(rs->Eof());
  EXPECT_EQ(rs->AbsolutePosition(), 0);
  EXPECT_EQ(ErrorOf([&] { rs->MoveNext(); }).Number(), kNoCurrentRecord);
  rs->MovePrevious();
  EXPECT_EQ(rs->AbsolutePosition(), 3);
  rs->MoveFirst();
  rs->MovePrevious();
  EXPECT_TRUE(rs->Bof());
  EXPECT_FALSE(rs->Eof());
  EXPECT_EQ(ErrorOf([&] { rs->MovePrevious(); }).Number(), kNoCurrentRecord);
  rs->MoveNext();
  EXPECT_EQ(rs->Fields()["Id"].Value(), Variant(int32_t{1}));
  auto items = Query("Items");
  ASSERT_EQ(items->Fields().Count(), 3);
  EXPECT_EQ(items->Fields()[1].Name(), "Name");
  cn()->Execute("INSERT INTO Items VALUES (4, 'cog', 1)");
  EXPECT_EQ(items->RecordCount(), 4) << "rows are read when first needed, not at Open";
  cn()->Execute("INSERT INTO Items VALUES (5, 'pin', 1)");
  EXPECT_EQ(items->RecordCount(), 4) << "and then kept";
  EXPECT_EQ(ErrorOf([&] { items->Fields()[3]; }).Number(), 3265);
  EXPECT_EQ(ErrorOf([&] { items->Fields()["name"]; }).Number(), 3265);
  EXPECT_EQ(items->Fields()[2].Value(), Variant(int32_t{10}));
}

TEST_P(RecordsetTest, GetRowsReadsFromTheCurrentRowAndMovesPastThemAfterTheConnectionClosed) {
  auto rs = Query("SELECT [Id], [Name], [Qty] FROM Items ORDER BY [Id]");
  cn()->Close();  // the recordset outlives its connection
  const auto two = rs->GetRows(2, {"Qty", "Id"});
  ASSERT_EQ(two.size(), 2u);
  EXPECT_EQ(two[0], Longs({10, 20}));
  EXPECT_EQ(two[1], Longs({1, 2}));
  EXPECT_EQ(rs->AbsolutePosition(), 3);
  const auto rest = rs->GetRows();
  ASSERT_EQ(rest.size(), 3u);
  EXPECT_EQ(rest[1], std::vector<Variant>{Variant("gear")});
  EXPECT_EQ(rest[2], std::vector<Variant>{Variant::Null()});
  EXPECT_TRUE(rs->Eof());
  EXPECT_EQ(rs->GetRows(), std::vector<std::vector<Variant>>(3)) << "nothing left at Eof";
  rs->MoveFirst();
  EXPECT_EQ(rs->GetRows(10, {"Id"}), std::vector<std::vector<Variant>>{Longs({1, 2, 3})});
  rs->MoveFirst();
  EXPECT_EQ(ErrorOf([&] { rs->GetRows(-1, {"Missing"}); }).Number(), 3265);
  EXPECT_EQ(rs->AbsolutePosition(), 1) << "a failed GetRows does not move";
}

VARNEL_ON_EVERY_PROVIDER(RecordsetTest);

}  // namespace
}  // namespace varnel::testing
