// A database that cannot take the save right now (locked by another writer,
// read-only or full): the user is told what to do, the edit stays pending with
// what was typed, and once the cause is gone the same save goes through. (A
// server that is down: PostgresServerLoss in the database tests.)
#include <memory>
#include <string>

#include "writer_fixture.h"

namespace varnel::testing {
namespace {

using UnwritableTest = WriterTest;

TEST_P(UnwritableTest, SaveIsKeptUntilTheDatabaseTakesIt) {
  struct Cause {
    const char* name;
    bool by_other;          // set on another connection, else on the writer's own
    const char* sqlite[2];  // SQL that sets the cause, SQL that lifts it; "" = not on this database
    const char* postgres[2];
    const char* message;
  };
  const Cause causes[] = {
      {"locked", true, {"BEGIN IMMEDIATE", "ROLLBACK"}, {"", ""}, "The database is busy"},
      {"read-only",
       false,
       {"PRAGMA query_only = ON", "PRAGMA query_only = OFF"},
       {"SET default_transaction_read_only = on", "SET default_transaction_read_only = off"},
       "The database cannot be written to"},
      {"full",
       false,
       {"PRAGMA max_page_count = 1", "PRAGMA max_page_count = 1073741823"},
       {"", ""},
       "The disk that holds the database is full"},
  };
  Load();
  TableWriter writer(rs_);
  writer.Connection = std::make_shared<db::Connection>();
  writer.Connection->Open(db_.ConnectionString());
  size_t size = 0;
  for (const Cause& cause : causes) {
    const char* const* sql = GetParam() == TestProvider::kSqlite ? cause.sqlite : cause.postgres;
    if (*sql[0] == '\0') {
      continue;
    }
    SCOPED_TRACE(cause.name);
    db::Connection& on = cause.by_other ? *other_ : *writer.Connection;
    on.Execute(sql[0]);
    // A Note longer than before, more pages than a full file has room for:
    // refused and kept while the cause holds, written once it is lifted.
    size += 200000;
    const std::string note(size, static_cast<char>('a' + size % 26));
    ASSERT_FALSE(rs_.Modify("Note", note));
    EXPECT_EQ(rs_.UpdateRecord(), E_Defeat);
    EXPECT_EQ(capture_.LastText().rfind(cause.message, 0), 0u) << Shown();
    EXPECT_EQ(rs_.EditStatus(), E_Modify);
    EXPECT_EQ(rs_.Item("Note")->GetValue(), Variant(note));
    on.Execute(sql[1]);
    EXPECT_EQ(rs_.UpdateRecord(), E_Succeed) << Shown();
    EXPECT_EQ(rs_.EditStatus(), E_Default);
  }
  writer.Connection.reset();
}

VARNEL_ON_EVERY_PROVIDER(UnwritableTest);

}  // namespace
}  // namespace varnel::testing
