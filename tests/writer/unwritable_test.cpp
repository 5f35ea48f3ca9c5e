// A database that cannot take the save right now (locked by another writer,
// read-only or full): the user is told what to do, the edit stays pending with
// what was typed, and once the cause is gone the same save goes through. (A
// server that is down: PostgresServerLoss in the database tests.)
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "support/capture_ui.h"
#include "support/test_database.h"
#include "varnel/table_writer.h"
#include "varnel/varnel.h"

namespace varnel::testing {
namespace {

// Makes Items (Id, Note) and loads it into rs; returns the connection that
// made it.
std::shared_ptr<db::Connection> LoadItems(ClsRecordset& rs, const std::string& connection_string) {
  auto setup = std::make_shared<db::Connection>();
  setup->Open(connection_string);
  setup->Execute(
      "CREATE TABLE Items (\"Id\" INTEGER PRIMARY KEY, \"Note\" TEXT);"
      "INSERT INTO Items VALUES (1, 'a'), (2, 'b')");
  rs.ConnectString = connection_string;
  rs.TableName = "Items";
  rs.OrderByField1 = "[Id]";
  for (const char* name : {"Id", "Note"}) {
    auto field = rs.Add(name);
    field->FieldType = std::string(name) == "Id" ? F_Numeral : F_Text;
    field->IsData = field->SaveToDB = field->Edit = field->EnableNull = true;
  }
  EXPECT_FALSE(rs.InitDataSource());
  return setup;
}

// Saves a long Note on row 1 while the cause holds: refused with Message and
// kept; then again once Undo has lifted the cause: written.
void ExpectKeptThenWritten(ClsRecordset& rs, const CaptureScope& capture, const char* message,
                           const std::function<void()>& undo) {
  // Longer than before: more pages than a full file has room for.
  const size_t size = rs.Item("Note")->GetValue().ToString().size() + 200000;
  const std::string note(size, static_cast<char>('a' + size % 26));
  ASSERT_FALSE(rs.Modify("Note", note));
  EXPECT_EQ(rs.UpdateRecord(), E_Defeat);
  EXPECT_EQ(capture.LastText().rfind(message, 0), 0u) << capture.LastText();
  EXPECT_EQ(rs.EditStatus(), E_Modify);
  EXPECT_EQ(rs.Item("Note")->GetValue(), Variant(note));
  undo();
  EXPECT_EQ(rs.UpdateRecord(), E_Succeed) << capture.LastText();
  EXPECT_EQ(rs.EditStatus(), E_Default);
}

class UnwritableTest : public ::testing::TestWithParam<TestProvider> {};

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
  TestDatabase db(GetParam());
  CaptureScope capture;
  ClsRecordset rs;
  const auto other = LoadItems(rs, db.ConnectionString());
  TableWriter writer(rs);
  writer.Connection = std::make_shared<db::Connection>();
  writer.Connection->Open(db.ConnectionString());
  for (const Cause& cause : causes) {
    const char* const* sql = GetParam() == TestProvider::kSqlite ? cause.sqlite : cause.postgres;
    if (*sql[0] == '\0') {
      continue;
    }
    SCOPED_TRACE(cause.name);
    db::Connection& on = cause.by_other ? *other : *writer.Connection;
    on.Execute(sql[0]);
    ExpectKeptThenWritten(rs, capture, cause.message, [&] { on.Execute(sql[1]); });
  }
  writer.Connection.reset();
}

VARNEL_ON_EVERY_PROVIDER(UnwritableTest);

}  // namespace
}  // namespace varnel::testing
