// The thread's last error, as a program reads it after a public operation of
// each subsystem returned its failure result: kind, number, operation, field.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <tuple>

#include "support/capture_ui.h"
#include "support/error_of.h"
#include "varnel/varnel.h"
#include "writer/writer_fixture.h"

namespace varnel {
namespace {

std::string Describe(const ErrorInfo& e) {
  return "kind " + std::to_string(e.Kind) + ", number " + std::to_string(e.Number) +
         ", operation '" + e.Operation + "', field '" + e.Field + "', description '" +
         e.Description + "'";
}

// The writer suites' Items, loaded, with Name required and a computed
// Each = Id/Qty; a TableWriter saves by Id.
class LastErrorTest : public testing::WriterTest {
 protected:
  void SetUp() override {
    WriterTest::SetUp();
    Load();
    rs_.Item("Name")->EnableNull = false;
    auto each = rs_.Add("Each");
    each->FieldType = F_Numeral;
    each->NumType = N_Float;
    each->ComputeString = "Id/Qty";
    each->EnableNull = true;
    each->IsData = false;
  }
};

TEST_P(LastErrorTest, EachSubsystemTellsWhatFailedAndTheNextSuccessClearsIt) {
  struct Canceller : ClsRecordsetEvents {
    void ModifyBefore(const std::string&, const Variant&, bool& Cancel) override { Cancel = true; }
  };
  // What fails, the operation that fails (true = it failed), and what the last
  // error says then (Description: a part of it).
  const std::tuple<const char*, std::function<bool()>, ErrorInfo> cases[] = {
      {"fields: a name already in the collection",
       [&] { return rs_.Add("Qty") == nullptr; },
       {K_Error, Err_DuplicateKey, "already associated", "Add", ""}},
      {"fields: a value of the wrong type",
       [&] {
         Variant value("many");
         return rs_.FormatValue("Qty", value);
       },
       {K_Error, Err_TypeMismatch, "Type Mismatch", "FormatValue", "Qty"}},
      {"editing: a required field left empty",
       [&] { return rs_.NewRecord() || rs_.UpdateRecord() != E_Succeed; },
       {K_Error, Err_InvalidUseOfNull, "'Name'", "UpdateRecord", "Name"}},
      {"editing: a read-only field",
       [&] {
         rs_.Item("Note")->Edit = false;
         return rs_.Modify("Note", "z");
       },
       {K_Notice, 0, "read only", "Modify", "Note"}},
      {"editing: a handler cancels",
       [&] {
         Canceller canceller;
         const int32_t cookie = rs_.Advise(&canceller);
         const bool failed = rs_.Modify("Qty", int32_t{3});
         rs_.Unadvise(cookie);
         return failed;
       },
       {K_Cancelled, 0, "ModifyBefore", "Modify", "Qty"}},
      {"compute: a computed field divides by zero",
       [&] {
         rs_.Item("Qty")->SetValue(int32_t{0}, 1);
         return rs_.Item("Each")->GetValue(1).IsEmpty();
       },
       {K_Error, 0, "Division by zero", "SetValue", "Qty"}},
      {"query: a criterion that is not a number",
       [&] { return rs_.NewQuery() || rs_.Modify("Qty", ">=lots") || rs_.ExecuteQuery(); },
       {K_Error, Err_InvalidUseOfNull, "can not be null", "GetCondition", ""}},
      {"recordset load: a condition the database refuses",
       [&] {
         rs_.DefaultCondition = "[NoSuchColumn] = 1";
         return rs_.InitDataSource();
       },
       {K_Error, Err_Provider, "", "InitDataSource", ""}},
      {"writer: the row was changed by someone else",
       [&] {
         other_->Execute("UPDATE Items SET [Qty] = 11 WHERE [Id] = 1");
         return rs_.MoveFirst() || rs_.Modify("Qty", int32_t{12}) ||
                rs_.UpdateRecord() != E_Succeed;
       },
       {K_Error, Err_RowNotLocated, "", "UpdateRecord", ""}},
  };
  TableWriter writer(rs_);
  for (const auto& [what, fails, expected] : cases) {
    SCOPED_TRACE(what);
    ASSERT_FALSE(rs_.InitDataSource());
    EXPECT_EQ(LastError().Kind, K_None) << "a load that succeeded clears it";
    EXPECT_TRUE(fails());
    const ErrorInfo& e = LastError();
    EXPECT_EQ(std::tie(e.Kind, e.Number, e.Operation, e.Field),
              std::tie(expected.Kind, expected.Number, expected.Operation, expected.Field))
        << Describe(e);
    EXPECT_NE(e.Description.find(expected.Description), std::string::npos) << Describe(e);
    if (rs_.EditStatus() == E_Query) {
      rs_.CancelQuery();
    } else if (rs_.EditStatus() != E_Default) {
      rs_.UndoRecord();
    }
    rs_.DefaultCondition = "";
    rs_.Item("Note")->Edit = true;
    rs_.Item("Qty")->QueryValue = "";
    other_->Execute("UPDATE Items SET [Qty] = 10 WHERE [Id] = 1");
  }
}

VARNEL_ON_EVERY_PROVIDER(LastErrorTest);

TEST(LastError, MessageProceduresRecordWhatTheyShowAndEveryNumberHasItsDescription) {
  testing::CaptureScope capture;
  bool showing = false;
  ClearLastError();
  MdlProcess::ShowErr("Error", 0, "suppressed", showing);
  EXPECT_EQ(LastError().Kind, K_None) << "a report suppressed by number 0 is not recorded";
  MdlProcess::ShowErr("Error", -2147221504 + 513, "custom", showing);
  EXPECT_EQ(Describe(LastError()), Describe({K_Error, -2147221504 + 513, "custom", "", ""}));
  MdlProcess::ShowInfor("note", showing);
  EXPECT_EQ(Describe(LastError()), Describe({K_Notice, 0, "note", "", ""}));
  MsgBox("a box of the program's own");
  EXPECT_EQ(LastError().Kind, K_Notice) << "the program's own message boxes are not errors";
  // Every number the library raises has its own standard description (12345:
  // the generic one), the same raised as looked up.
  const std::pair<int32_t, const char*> described[] = {
      {Err_InvalidCall, "Invalid procedure call or argument"},
      {Err_Overflow, "Overflow"},
      {Err_SubscriptOutOfRange, "Subscript out of range"},
      {Err_DivisionByZero, "Division by zero"},
      {Err_TypeMismatch, "Type mismatch"},
      {Err_ObjectNotSet, "Object variable or With block variable not set"},
      {Err_InvalidUseOfNull, "Invalid use of Null"},
      {12345, "Application-defined or object-defined error"}};
  for (const auto& [number, description] : described) {
    EXPECT_EQ(ErrorDescription(number), description) << number;
  }
  for (const int32_t number : std::initializer_list<int32_t>{
           12345, Err_InvalidCall, Err_Overflow, Err_SubscriptOutOfRange, Err_DivisionByZero,
           Err_TypeMismatch, Err_ObjectNotSet, Err_InvalidUseOfNull, Err_DuplicateKey,
           Err_NoCurrentRecord, Err_BadArguments, Err_BofOrEof, Err_ItemNotFound, Err_ObjectClosed,
           Err_ObjectOpen, Err_ProviderNotFound, Err_RowNotLocated, Err_Provider}) {
    EXPECT_TRUE(number == 12345 || ErrorDescription(number) != ErrorDescription(1)) << number;
    const VbError e = testing::ErrorOf([&] { RaiseError(number); });
    EXPECT_EQ(e.Number(), number);
    EXPECT_EQ(e.Description(), ErrorDescription(number)) << number;
    EXPECT_STREQ(e.what(), ErrorDescription(number).c_str()) << number;
  }
}

// Regression (found by fuzzing): a recordset destroyed after its thread's
// errors, as a program's global recordset is at exit, used freed memory.
TEST(LastError, RecordsetDestroyedAfterItsThreadsErrorsIsSafe) {
  std::thread([] {
    struct Late {
      ~Late() {
        testing::CaptureScope capture;
        ClsRecordset rs;
        rs.Add("A");
        Variant value("x");
        rs.FormatValue(Variant("Missing"), value);  // fails: records a last error
        EXPECT_EQ(LastError().Operation, "FormatValue");
      }
    };
    thread_local Late late;  // built before the thread's errors: destroyed after them
    static_cast<void>(&late);
    ClearLastError();
  }).join();
}

}  // namespace
}  // namespace varnel
