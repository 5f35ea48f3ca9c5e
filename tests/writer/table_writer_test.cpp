// TableWriter against real databases, on every provider: what reaches the
// database after an UpdateRecord, and what the user is told when it cannot.
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "writer_fixture.h"

namespace varnel::testing {
namespace {

using TableWriterTest = WriterTest;

// A refused save keeps the edit pending with every typed value, and the
// message says what to do, naming the field the database named.
struct Refusal {
  const char* name;
  const char* setup;  // run by the other connection first ("" = nothing)
  bool new_row;       // a new row instead of an edit of row 1
  const char* field;  // set to value; "" = leave the row as it is
  Variant value;
  const char* message;  // the start of what the user is told
};

TEST_P(TableWriterTest, RefusedSaveKeepsTheEditAndNamesTheField) {
  const Refusal refusals[] = {
      {"not null", "", false, "Name", Variant::Null(), "'Name' needs a value"},
      {"new row not null", "", true, "Qty", Variant(int32_t{3}), "'Name' needs a value"},
      {"unique", "", false, "Id", Variant(int32_t{2}), "The value of 'Id' is already used"},
      {"unique index", "CREATE UNIQUE INDEX NoteOnce ON Items (\"Note\")", false, "Note",
       Variant("x"), "The value of 'Note' is already used"},
  };
  Load();
  rs_.Item("Name")->EnableNull = true;  // leave the refusal to the database
  TableWriter writer(rs_);
  for (const Refusal& refusal : refusals) {
    SCOPED_TRACE(refusal.name);
    if (*refusal.setup != '\0') {
      other_->Execute(refusal.setup);
    }
    const Rows before = Query("SELECT * FROM Items ORDER BY [Id]");
    if (refusal.new_row) {
      ASSERT_FALSE(rs_.NewRecord());
    }
    ASSERT_FALSE(rs_.Modify(refusal.field, refusal.value));
    const Enum_EditStatus status = rs_.EditStatus();
    EXPECT_EQ(rs_.UpdateRecord(), E_Defeat);
    EXPECT_EQ(capture_.LastText().rfind(refusal.message, 0), 0u) << Shown();
    EXPECT_EQ(rs_.EditStatus(), status);
    EXPECT_EQ(rs_.Item(refusal.field)->GetValue(), refusal.value);
    EXPECT_EQ(Query("SELECT * FROM Items ORDER BY [Id]"), before);
    ASSERT_FALSE(rs_.UndoRecord());
  }
  // The transaction was ended: the next save goes through.
  rs_.MoveFirst();
  rs_.Modify("Qty", int32_t{12});
  EXPECT_EQ(rs_.UpdateRecord(), E_Succeed) << Shown();
  EXPECT_EQ(Query("SELECT [Qty] FROM Items WHERE [Id] = 1"), (Rows{{Variant(int32_t{12})}}));
}

TEST_P(TableWriterTest, NewRowWithItsOwnKeyLeftEmptyIsRefusedNamingTheKey) {
  other_->Execute("CREATE TABLE Codes (\"Code\" VARCHAR(8) PRIMARY KEY, \"Name\" TEXT)");
  rs_.ConnectString = db_.ConnectionString();
  rs_.TableName = "Codes";
  for (const char* name : {"Code", "Name"}) {
    auto field = rs_.Add(name);
    field->FieldType = F_Text;
    field->IsData = field->SaveToDB = field->Edit = field->EnableNull = true;
  }
  ASSERT_FALSE(rs_.InitDataSource());
  TableWriter writer(rs_);
  ASSERT_FALSE(rs_.NewRecord());
  rs_.Modify("Name", "no code");
  EXPECT_EQ(rs_.UpdateRecord(), E_Defeat);
  EXPECT_EQ(capture_.LastText().rfind("'Code' ", 0), 0u) << Shown();
  EXPECT_EQ(Query("SELECT COUNT(*) FROM Codes"), (Rows{{Variant(int32_t{0})}}));
  rs_.Modify("Code", "A1");
  EXPECT_EQ(rs_.UpdateRecord(), E_Succeed) << Shown();
  EXPECT_EQ(Query("SELECT [Code], [Name] FROM Codes"), (Rows{{Variant("A1"), Variant("no code")}}));
}

TEST_P(TableWriterTest, TextWithANulIsStoredWholeOrRefused) {
  Load();
  TableWriter writer(rs_);
  const Variant text(std::string_view("a\0b", 3));
  rs_.Modify("Note", text);
  if (db_.provider() == TestProvider::kSqlite) {
    EXPECT_EQ(rs_.UpdateRecord(), E_Succeed) << Shown();
    EXPECT_EQ(Query("SELECT [Note] FROM Items WHERE [Id] = 1"), (Rows{{text}}));
  } else {
    EXPECT_EQ(rs_.UpdateRecord(), E_Defeat);
    EXPECT_EQ(capture_.LastText().rfind("The text of 'Note' holds a NUL character", 0), 0u)
        << Shown();
    EXPECT_EQ(rs_.Item("Note")->GetValue(), text);
  }
}

// Every conflict (row changed or deleted, under a modification or a deletion)
// with both resolutions: the save keeps the edit and writes nothing, the user
// is told in his language, the conflict shows both versions, and after either
// resolution the table and the recordset end up alike.
TEST_P(TableWriterTest, ConflictsAreResolvedEitherWay) {
  const char* change = "UPDATE Items SET [Name] = 'theirs'";
  const char* remove = "DELETE FROM Items";
  const Rows mine{{Variant("bolt"), Variant(int32_t{5})}};
  const Rows theirs{{Variant("theirs"), Variant(int32_t{10})}};
  // What someone else did to row 1, whether the user deleted row 1 (else
  // changed its Qty), whether mine is kept; Name and Qty of row 1 in the table
  // afterwards, and the rows in the recordset.
  const std::tuple<const char*, bool, bool, Rows, int32_t> cases[] = {
      {change, false, true, mine, 3}, {change, false, false, theirs, 3},
      {remove, false, true, mine, 3}, {remove, false, false, {}, 2},
      {change, true, true, {}, 2},    {change, true, false, theirs, 3},
      {remove, true, true, {}, 2},    {remove, true, false, {}, 2},
  };
  // What a row changed under a modification tells, by language.
  const std::map<int32_t, const char*> told = {
      {1033,
       "The row was changed by someone else after it was read; nothing was saved. Your changes "
       "are kept: write them over the other change, or take the other change."},
      {2052,
       "该行在读取后已被他人修改，未保存任何内容。您的修改已保留：可以用您的修改覆盖，"
       "或采用他人的修改。"}};
  for (const auto& [other, delete_mine, keep_mine, table, rows] : cases) {
    SCOPED_TRACE(std::string(other) + (delete_mine ? ", deleted" : ", changed") +
                 (keep_mine ? ", mine" : ", theirs"));
    Reload();
    const int32_t language = keep_mine ? 1033 : 2052;
    SetThreadUILanguage(language);
    capture_.ui().shown.clear();
    TableWriter writer(rs_);
    other_->Execute(std::string(other) + " WHERE [Id] = 1");
    const Rows stored = Query("SELECT [Name], [Qty] FROM Items WHERE [Id] = 1");
    ASSERT_FALSE(delete_mine ? rs_.DeleteRecord() : rs_.Modify("Qty", int32_t{5}));
    ASSERT_EQ(rs_.UpdateRecord(), E_Defeat);
    EXPECT_EQ(rs_.EditStatus(), delete_mine ? E_Delete : E_Modify);
    EXPECT_EQ(Query("SELECT [Name], [Qty] FROM Items WHERE [Id] = 1"), stored);
    const std::optional<SaveConflict> conflict = writer.PendingConflict();
    ASSERT_TRUE(conflict) << Shown();
    EXPECT_EQ(conflict->RowDeleted, other == remove);
    if (other == change && !delete_mine) {
      ASSERT_EQ(capture_.shown().size(), 1u) << Shown();
      EXPECT_EQ(capture_.shown()[0].text, told.at(language));
      EXPECT_EQ(capture_.shown()[0].title, LoadResString(106) + "3640");
      EXPECT_EQ(conflict->Row, 1);
      std::vector<std::tuple<std::string, Variant, Variant, Variant, bool>> fields;
      for (const ConflictField& f : conflict->Fields) {
        fields.emplace_back(f.Name, f.Loaded, f.Typed, f.Database, f.ChangedByOthers);
      }
      EXPECT_EQ(fields[1], std::make_tuple(std::string("Name"), Variant("bolt"), Variant("bolt"),
                                           Variant("theirs"), true));
      EXPECT_EQ(fields[2], std::make_tuple(std::string("Qty"), Variant(int32_t{10}),
                                           Variant(int32_t{5}), Variant(int32_t{10}), false));
    }
    EXPECT_EQ(keep_mine ? writer.ResolveKeepMine() : writer.ResolveTakeTheirs(), E_Succeed)
        << Shown();
    EXPECT_EQ(rs_.EditStatus(), E_Default);
    EXPECT_FALSE(writer.PendingConflict());
    EXPECT_EQ(Query("SELECT [Name], [Qty] FROM Items WHERE [Id] = 1"), table);
    ASSERT_EQ(rs_.Rows(), rows);
    if (!table.empty()) {
      EXPECT_EQ(rs_.Item("Name")->GetValue(1), table[0][0]);
      EXPECT_EQ(rs_.Item("Qty")->GetValue(1), table[0][1]);
    }
  }
}

// For each date type: an UPDATE sets the changed column alone, of its own
// row, whatever time or day the date column holds (regression: row 2 holds
// 08:30 on its day); taking theirs shows the row as a load would: a day field
// the day, a time field the time of day.
TEST_P(TableWriterTest, DateFieldsAreKeptByUpdatesAndShownAsLoadedWhenTakingTheirs) {
  const std::pair<Enum_DateType, const char*> cases[] = {
      {D_YMDHNS, "2024-03-04 10:20:30"}, {D_YMD, "2024-03-04"}, {D_HNS, "10:20:30"}};
  for (const auto& [type, shown] : cases) {
    SCOPED_TRACE(shown);
    Reload();
    capture_.ui().shown.clear();
    rs_.Item("Made")->DateType = type;
    ASSERT_FALSE(rs_.RefreshDataSource());
    TableWriter writer(rs_);
    rs_.MoveNext();
    ASSERT_FALSE(rs_.Modify("Qty", int32_t{25}));
    EXPECT_EQ(rs_.UpdateRecord(), E_Succeed) << Shown();
    ASSERT_EQ(writer.LastStatements().size(), 1u);
    EXPECT_EQ(writer.LastStatements()[0].rfind("UPDATE Items SET [Qty] = ? WHERE [Id] = ? AND", 0),
              0u);
    EXPECT_EQ(Query("SELECT [Qty], [Made] FROM Items WHERE [Id] > 1 ORDER BY [Id]"),
              (Rows{{Variant(int32_t{25}), Variant(CDate(Variant("2024-02-01 08:30:00")))},
                    {Variant(int32_t{30}), Variant::Null()}}));
    EXPECT_TRUE(capture_.shown().empty()) << Shown();
    rs_.MoveFirst();
    other_->Execute("UPDATE Items SET [Made] = '2024-03-04 10:20:30' WHERE [Id] = 1");
    ASSERT_FALSE(rs_.Modify("Qty", int32_t{5}));
    ASSERT_EQ(rs_.UpdateRecord(), E_Defeat);
    const std::optional<SaveConflict> conflict = writer.PendingConflict();
    ASSERT_TRUE(conflict) << Shown();
    EXPECT_EQ(conflict->Fields[3].Database, Variant(CDate(Variant(shown))));
    EXPECT_EQ(writer.ResolveTakeTheirs(), E_Succeed) << Shown();
    EXPECT_EQ(rs_.Item("Made")->GetValue(1), Variant(CDate(Variant(shown))));
  }
}

// Without a key a row is known by its values: a changed row cannot be told
// from a deleted one, so theirs drops the row from view and mine is refused
// for a modification (it could leave both versions).
TEST_P(TableWriterTest, TableWithoutKeyOffersItsConflictsAsFarAsValuesTell) {
  // Whether the user deleted row 1 (else changed its Qty), whether mine is
  // kept; the resolution's answer and the rows in the recordset afterwards.
  const std::tuple<const char*, bool, bool, Enum_EditRecord, int32_t> cases[] = {
      {"changed, theirs", false, false, E_Succeed, 2},
      {"changed, mine", false, true, E_Defeat, 3},
      {"deleted, theirs", true, false, E_Succeed, 2},
      {"deleted, mine", true, true, E_Succeed, 2},
  };
  for (const auto& [name, delete_mine, keep_mine, answer, rows] : cases) {
    SCOPED_TRACE(name);
    Reload("Loose");
    TableWriter writer(rs_);
    other_->Execute("UPDATE Loose SET [Name] = 'theirs' WHERE [Id] = 1");
    ASSERT_FALSE(delete_mine ? rs_.DeleteRecord() : rs_.Modify("Qty", int32_t{5}));
    ASSERT_EQ(rs_.UpdateRecord(), E_Defeat);
    EXPECT_EQ(capture_.LastText().rfind("No row holds the values this row was read with", 0), 0u)
        << Shown();
    const std::optional<SaveConflict> conflict = writer.PendingConflict();
    ASSERT_TRUE(conflict);
    EXPECT_TRUE(conflict->KeyLess && conflict->RowDeleted);
    EXPECT_EQ(conflict->Fields[2].Typed, Variant(int32_t{delete_mine ? 1 : 5}));
    EXPECT_EQ(keep_mine ? writer.ResolveKeepMine() : writer.ResolveTakeTheirs(), answer) << Shown();
    EXPECT_EQ(rs_.Rows(), rows);
    EXPECT_EQ(Query("SELECT [Name], [Qty] FROM Loose ORDER BY [Id]"),
              (Rows{{Variant("theirs"), Variant(int32_t{1})},
                    {Variant("b"), Variant(int32_t{2})},
                    {Variant("c"), Variant(int32_t{3})}}));
  }
}

// The key columns are the ones named or the primary key; without any, an
// update that matches two rows is rolled back.
TEST_P(TableWriterTest, KeyColumnsAreTheNamedOnesThePrimaryKeyOrNone) {
  Load();
  EXPECT_EQ(TableWriter(rs_).KeyColumns(), std::vector<std::string>{"Id"});
  EXPECT_EQ(TableWriter(rs_, {"Name"}).KeyColumns(), std::vector<std::string>{"Name"});
  {
    TableWriter unknown(rs_, {"Serial"});
    rs_.Modify("Qty", int32_t{1});
    EXPECT_EQ(rs_.UpdateRecord(), E_Defeat);
    EXPECT_EQ(capture_.LastText(), "The key column 'Serial' is not a field of the recordset.");
  }
  Reload("Loose", "(1, 'a', 1, NULL, NULL), (1, 'a', 1, NULL, NULL), (2, 'b', 2, NULL, NULL)");
  TableWriter writer(rs_);
  EXPECT_TRUE(writer.KeyColumns().empty());
  rs_.Modify("Qty", int32_t{7});
  EXPECT_EQ(rs_.UpdateRecord(), E_Defeat);
  EXPECT_EQ(Query("SELECT SUM([Qty]) FROM Loose"), (Rows{{Variant(int32_t{4})}}));
  EXPECT_EQ(capture_.LastText(),
            "2 rows match the row to be saved; nothing was saved. Your changes are kept.");
}

TEST_P(TableWriterTest, AnswerOfAnEarlierSinkIsRespected) {
  struct Refuser : ClsRecordsetEvents {
    void UserUpdateRecord(Enum_EditRecord& answer) override { answer = E_Defeat; }
  } refuser;
  Load();
  const int32_t cookie = rs_.Advise(&refuser);
  TableWriter writer(rs_);
  rs_.Modify("Qty", int32_t{1});
  EXPECT_EQ(rs_.UpdateRecord(), E_Defeat);
  EXPECT_TRUE(writer.LastStatements().empty());
  EXPECT_EQ(Query("SELECT [Qty] FROM Items WHERE [Id] = 1"), (Rows{{Variant(int32_t{10})}}));
  rs_.Unadvise(cookie);
}

VARNEL_ON_EVERY_PROVIDER(TableWriterTest);

}  // namespace
}  // namespace varnel::testing
