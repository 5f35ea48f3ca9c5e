// A recordset on a connection: its lifecycle, moves and rows; the load path
// beneath it (column descriptions at Open, the bulk read straight into the
// caller's value arrays); and the progress a connection's OnRowsRead callback
// hears, every so many rows and at the end.
#include <gtest/gtest.h>

#include "db/db_fixture.h"
#include "db/recordset_access.h"
#include "db/recordset_data.h"

namespace varnel::testing {
namespace {

using db::internal::RecordsetAccess;

constexpr int32_t kNoCurrentRecord = 3021;

class RecordsetTest : public DbTest {
 protected:
  void SetUp() override {
    cn()->Execute(
        "CREATE TABLE Items (\"Id\" INTEGER, \"Name\" VARCHAR(20), \"Qty\" INTEGER);"
        "INSERT INTO Items VALUES (1, 'bolt', 10), (2, 'nut', 20), (3, 'gear', NULL);"
        "CREATE TABLE Empty (\"Id\" INTEGER);"
        "CREATE TABLE T (\"Id\" INTEGER, \"Name\" VARCHAR(8), \"Made\" DATE);"
        "INSERT INTO T VALUES (1, 'a', '2003-05-06'), (2, NULL, NULL), (3, 'ccc', '2004-01-01')");
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
  EXPECT_EQ(rs->GetRows(), Columns(1));
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
  EXPECT_EQ(rs->GetRows(2, {"Qty", "Id"}), (Columns{Longs({10, 20}), Longs({1, 2})}));
  EXPECT_EQ(rs->AbsolutePosition(), 3);
  EXPECT_EQ(rs->GetRows(), (Columns{Longs({3}), {Variant("gear")}, {Variant::Null()}}));
  EXPECT_TRUE(rs->Eof());
  EXPECT_EQ(rs->GetRows(), Columns(3)) << "nothing left at Eof";
  rs->MoveFirst();
  EXPECT_EQ(rs->GetRows(10, {"Id"}), Columns{Longs({1, 2, 3})});
  rs->MoveFirst();
  EXPECT_EQ(ErrorOf([&] { rs->GetRows(-1, {"Missing"}); }).Number(), 3265);
  EXPECT_EQ(rs->AbsolutePosition(), 1) << "a failed GetRows does not move";
}

// The real statement, failing while it appends row FailAt.
class FailingStatement : public db::internal::Statement {
 public:
  FailingStatement(std::unique_ptr<Statement> real, int fail_at)
      : real_(std::move(real)), fail_at_(fail_at) {}
  const std::vector<db::internal::ColumnInfo>& Columns() const override { return real_->Columns(); }
  void Rewind() override { real_->Rewind(); }
  bool Step() override { return real_->Step(); }
  Variant Value(int32_t column) const override { return real_->Value(column); }
  void AppendRow(const int32_t* columns, std::vector<Variant>* const* outputs,
                 std::size_t count) const override {
    if (++rows_ == fail_at_) {
      throw VbError(-2147467259, "injected failure");
    }
    real_->AppendRow(columns, outputs, count);
  }

 private:
  std::unique_ptr<Statement> real_;
  int fail_at_;
  mutable int rows_ = 0;
};

TEST_P(RecordsetTest, AppendsTheChosenColumnsOfEveryRowRefusesBadArgumentsAndReleasesTheDatabase) {
  auto rs = Query("SELECT [Made], [Name], [Id] FROM T");
  const auto& columns = RecordsetAccess::Columns(*rs);  // described without reading rows
  ASSERT_EQ(columns.size(), 3u);
  EXPECT_EQ(columns[1].name, "Name");
  EXPECT_EQ(columns[1].defined_size, 8);
  std::vector<Variant> made{Variant("kept")};
  std::vector<Variant> id;
  EXPECT_EQ(RecordsetAccess::AppendColumns(*rs, {0, 2}, {&made, &id}), 3);
  EXPECT_EQ(made, (std::vector<Variant>{Variant("kept"), Variant(Date{37747}), Variant::Null(),
                                        Variant(Date{37987})}));
  EXPECT_EQ(id, Longs({1, 2, 3}));
  std::vector<Variant> out;
  EXPECT_EQ(ErrorOf([&] { RecordsetAccess::AppendColumns(*rs, {3}, {&out}); }).Number(), 3265);
  EXPECT_EQ(ErrorOf([&] { RecordsetAccess::AppendColumns(*rs, {0, 1}, {&out}); }).Number(), 3001);
  EXPECT_TRUE(out.empty());
  FailingStatement statement(cn()->Driver().Prepare("SELECT \"Id\" FROM T"), 2);
  EXPECT_EQ(ErrorOf([&] { db::internal::ReadAllRows(statement, {0}, {&out}); }).Description(),
            "injected failure");
  EXPECT_EQ(Connect()->Execute("DELETE FROM T"), 3)
      << "no read lock is left behind, not even by a read that failed half way";
  rs->Close();
  EXPECT_EQ(ErrorOf([&] { RecordsetAccess::Columns(*rs); }).Number(), 3704);
}

TEST_P(RecordsetTest, ProgressIsHeardEverySoManyRowsAndAtTheEndAndForASnapshotAtOnce) {
  struct Case {
    int rows;
    int64_t every;
    std::vector<int64_t> heard;
  };
  const Case cases[] = {
      {25, 10, {10, 20, 25}}, {20, 10, {10, 20}},               // the total is not told twice
      {3, 10, {3}},           {3, 1, {1, 2, 3}},  {3, 0, {3}},  // the total only
      {0, 10, {0}},
  };
  cn()->Execute("CREATE TABLE R (\"Id\" INTEGER)");
  std::vector<int64_t> heard;
  for (const Case& c : cases) {
    SCOPED_TRACE(std::to_string(c.rows) + " rows, every " + std::to_string(c.every));
    cn()->Execute("DELETE FROM R");
    for (int32_t id = 1; id <= c.rows; ++id) {
      cn()->Execute("INSERT INTO R VALUES (?)", {Variant(id)});
    }
    heard.clear();
    cn()->OnRowsRead([&](int64_t rows) { heard.push_back(rows); }, c.every);
    EXPECT_EQ(Query("R")->RecordCount(), c.rows);
    EXPECT_EQ(heard, c.heard);
  }
  heard.clear();
  cn()->OnRowsRead(nullptr);
  EXPECT_EQ(Query("R")->RecordCount(), 0);
  EXPECT_TRUE(heard.empty()) << "an empty callback stops the reports";
  heard.clear();
  cn()->OnRowsRead([&](int64_t rows) { heard.push_back(rows); }, 2);
  auto rs = Query("T");
  rs->Filter("Id = 2");
  EXPECT_EQ(heard, (std::vector<int64_t>{2, 3})) << "the recordset reads its own rows";
  cn()->Execute("INSERT INTO T VALUES (4, 'd', NULL)");
  std::vector<Variant> names;
  EXPECT_EQ(RecordsetAccess::AppendColumns(*rs, {1}, {&names}), 3);
  EXPECT_EQ(names, (std::vector<Variant>{Variant("a"), Variant::Null(), Variant("ccc")}));
  EXPECT_EQ(rs->AbsolutePosition(), 1) << "the cursor is untouched by the bulk read";
  EXPECT_EQ(rs->RecordCount(), 1);
  std::vector<Variant> fresh;
  EXPECT_EQ(RecordsetAccess::AppendColumns(*Query("T"), {1}, {&fresh}), 4);
  EXPECT_EQ(heard, (std::vector<int64_t>{2, 3, 3, 2, 4})) << "the snapshot is reported at once";
}

VARNEL_ON_EVERY_PROVIDER(RecordsetTest);

}  // namespace
}  // namespace varnel::testing
