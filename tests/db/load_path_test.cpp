// The library's load path: column descriptions at Open, the bulk read
// straight into the caller's value arrays, and the progress a connection's
// OnRowsRead callback hears, every so many rows and at the end.
#include <gtest/gtest.h>

#include "db/db_fixture.h"
#include "db/recordset_access.h"
#include "db/recordset_data.h"

namespace varnel::testing {
namespace {

using db::internal::RecordsetAccess;

class LoadPath : public DbTest {
 protected:
  void SetUp() override {
    cn()->Execute(
        "CREATE TABLE T (\"Id\" INTEGER, \"Name\" VARCHAR(8), \"Made\" DATE);"
        "INSERT INTO T VALUES (1, 'a', '2003-05-06'), (2, NULL, NULL), (3, 'ccc', '2004-01-01')");
  }
};

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

TEST_P(LoadPath, AppendsTheChosenColumnsOfEveryRowRefusesBadArgumentsAndReleasesTheDatabase) {
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

TEST_P(LoadPath, ARecordsetThatReadItsRowsGivesThatSnapshotAtOnceWhateverItsFilter) {
  std::vector<int64_t> heard;
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

TEST_P(LoadPath, ProgressIsHeardEverySoManyRowsAndAtTheEnd) {
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
}

VARNEL_ON_EVERY_PROVIDER(LoadPath);

}  // namespace
}  // namespace varnel::testing
