// The library's load path: column descriptions at Open and the bulk read
// straight into the caller's value arrays.
#include <gtest/gtest.h>

#include "db/db_fixture.h"
#include "db/recordset_access.h"

namespace varnel::testing {
namespace {

using db::internal::RecordsetAccess;

class AppendColumns : public DbTest {
 protected:
  void SetUp() override {
    cn()->Execute(
        "CREATE TABLE T (Id INTEGER, Name VARCHAR(8), Made DATE);"
        "INSERT INTO T VALUES (1, 'a', '2003-05-06'), (2, NULL, NULL), (3, 'ccc', 'soon')");
  }
};

TEST_F(AppendColumns, ColumnsAreDescribedWithoutReadingRows) {
  auto rs = Query("SELECT Made, Name FROM T");
  const auto& columns = RecordsetAccess::Columns(*rs);
  ASSERT_EQ(columns.size(), 2u);
  EXPECT_EQ(columns[0].name, "Made");
  EXPECT_EQ(columns[1].name, "Name");
  EXPECT_EQ(columns[1].defined_size, 8);
}

TEST_F(AppendColumns, AppendsTheChosenColumnsOfEveryRowAfterWhatIsThere) {
  auto rs = Query("T");
  std::vector<Variant> made{Variant("kept")};
  std::vector<Variant> id;
  EXPECT_EQ(RecordsetAccess::AppendColumns(*rs, {2, 0}, {&made, &id}), 3);
  EXPECT_EQ(made, (std::vector<Variant>{Variant("kept"), Variant(Date{37747}), Variant::Null(),
                                        Variant("soon")}));
  EXPECT_EQ(id,
            (std::vector<Variant>{Variant(int32_t{1}), Variant(int32_t{2}), Variant(int32_t{3})}));
  rs->MoveLast();
  EXPECT_EQ(rs->AbsolutePosition(), 3) << "the cursor is untouched by the bulk read";
  std::vector<Variant> again;
  EXPECT_EQ(RecordsetAccess::AppendColumns(*rs, {1}, {&again}), 3) << "reads from the start";
  EXPECT_EQ(again[2], Variant("ccc"));
}

TEST_F(AppendColumns, BadArgumentsAndClosedRecordsetsAreErrors) {
  auto rs = Query("T");
  std::vector<Variant> out;
  EXPECT_EQ(ErrorOf([&] { RecordsetAccess::AppendColumns(*rs, {3}, {&out}); }).Number(), 3265);
  EXPECT_EQ(ErrorOf([&] { RecordsetAccess::AppendColumns(*rs, {0, 1}, {&out}); }).Number(), 3001);
  EXPECT_TRUE(out.empty());
  rs->Close();
  EXPECT_EQ(ErrorOf([&] { RecordsetAccess::Columns(*rs); }).Number(), 3704);
}

TEST_F(AppendColumns, ReleasesTheDatabaseAfterReading) {
  auto rs = Query("T");
  std::vector<Variant> out;
  RecordsetAccess::AppendColumns(*rs, {0}, {&out});
  auto writer = Connect();
  EXPECT_EQ(writer->Execute("DELETE FROM T"), 3) << "no read lock is left behind";
}

}  // namespace
}  // namespace varnel::testing
