// The PostgreSQL server dies in the middle of a session (each test kills a
// server of its own): the next call fails saying so, without the password,
// and the one after says the server cannot be reached;
// a transaction open then is lost and must be rolled back; what was committed
// before survives; the connection comes back by itself once the server does;
// and a recordset keeps working on its rows in memory meanwhile.
#include <gtest/gtest.h>

#include "db/db_fixture.h"
#include "support/capture_ui.h"
#include "support/pg_own_server.h"
#include "varnel/varnel.h"

namespace varnel::testing {
namespace {

constexpr const char* kPassword = "Pa55-never-shown";

class PostgresServerLoss : public ::testing::Test {
 protected:
  PostgresServerLoss() {
    const std::string base = server_.ConnectionString();
    connection_string_ = base.substr(0, base.rfind("Password=")) + "Password=" + kPassword;
    cn_->Open(connection_string_);
    cn_->Execute(
        "CREATE TABLE Items (\"Id\" INTEGER PRIMARY KEY, \"Name\" VARCHAR(20), \"Qty\" INTEGER);"
        "INSERT INTO Items VALUES (1, 'Bolt', 10), (2, 'Nut', 20), (3, 'Washer', 30)");
  }

  // The Qty of every row, read on a new connection.
  std::vector<Variant> StoredQty() {
    auto fresh = std::make_shared<db::Connection>();
    fresh->Open(connection_string_);
    auto rs = std::make_shared<db::Recordset>();
    rs->Open("SELECT [Qty] FROM Items ORDER BY [Id]", fresh);
    return rs->GetRows()[0];
  }

  PgOwnServer server_;
  std::string connection_string_;
  std::shared_ptr<db::Connection> cn_ = std::make_shared<db::Connection>();
};

// Writes each modified row through the recordset's own open connection; a
// failure is left to the recordset, which reports it and keeps the edit.
class RowWriter : public ClsRecordsetEvents {
 public:
  explicit RowWriter(ClsRecordset& rs) : rs_(rs) {}
  void UserUpdateRecord(Enum_EditRecord& result) override {
    rs_.SFConnection->Execute("UPDATE [Items] SET [Qty] = ? WHERE [Id] = ?",
                              {rs_.Item("Qty")->GetValue(), rs_.Item("Id")->GetValue()});
    result = E_Succeed;
  }

 private:
  ClsRecordset& rs_;
};

TEST_F(PostgresServerLoss, AnOpenTransactionIsLostWhileARecordsetKeepsItsRowsAndPendingEdit) {
  cn_->Execute("UPDATE Items SET [Qty] = 11 WHERE [Id] = 1");
  cn_->BeginTrans();
  cn_->Execute("UPDATE Items SET [Qty] = 99");
  server_.Kill();
  const VbError lost = ErrorOf([&] { cn_->Execute("DELETE FROM Items"); });
  EXPECT_NE(lost.Description().find("The transaction that was open is lost"), std::string::npos)
      << lost.Description();
  server_.Restart();
  EXPECT_NE(ErrorOf([&] { cn_->Execute("DELETE FROM Items"); }).Description().find("Roll it back"),
            std::string::npos)
      << "nothing runs outside the transaction the client believes open";
  EXPECT_NE(ErrorOf([&] { cn_->CommitTrans(); }).Description().find("Nothing of it was kept"),
            std::string::npos);
  EXPECT_EQ(StoredQty(), Longs({11, 20, 30}));
  cn_->BeginTrans();
  cn_->Execute("UPDATE Items SET [Qty] = 33 WHERE [Id] = 3");
  server_.Kill();
  EXPECT_EQ(ErrorOf([&] { cn_->Execute("DELETE FROM Items"); }).Number(), -2147467259);
  cn_->RollbackTrans();
  server_.Restart();
  EXPECT_EQ(StoredQty(), Longs({11, 20, 30}));
  cn_->Close();

  CaptureScope ui;
  ClsRecordset rs;
  RowWriter writer(rs);
  rs.ConnectString = connection_string_;
  rs.TableName = "Items";
  rs.DefaultOrderBy = "[Id]";
  for (const char* name : {"Id", "Name", "Qty"}) {
    rs.Add(name)->FieldType = F_Numeral;
  }
  rs.Item("Name")->FieldType = F_Text;
  const int32_t cookie = rs.Advise(&writer);
  ASSERT_FALSE(rs.InitDataSource());
  ASSERT_FALSE(rs.Modify("Qty", Variant(int32_t{12})));
  ASSERT_EQ(rs.UpdateRecord(), E_Succeed);

  server_.Kill();
  ASSERT_FALSE(rs.MoveNext());
  ASSERT_FALSE(rs.Modify("Qty", Variant(int32_t{22})));
  EXPECT_EQ(rs.UpdateRecord(), E_Defeat);
  EXPECT_NE(ui.LastText().find("The connection to the PostgreSQL server was lost while executing "
                               "'UPDATE \"items\" SET \"Qty\" = ? WHERE \"Id\" = ?'"),
            std::string::npos)
      << ui.LastText();
  EXPECT_EQ(ui.LastText().find(kPassword), std::string::npos) << ui.LastText();
  EXPECT_EQ(rs.UpdateRecord(), E_Defeat);
  EXPECT_NE(ui.LastText().find("Cannot connect to the PostgreSQL server at 127.0.0.1:"),
            std::string::npos)
      << "the next call tries to connect again: " << ui.LastText();
  EXPECT_NE(ui.LastText().find("executing 'UPDATE "), std::string::npos);
  EXPECT_EQ(ui.LastText().find(kPassword), std::string::npos) << ui.LastText();
  EXPECT_EQ(rs.SFConnection->State(), 1) << "the connection stays open until the client closes it";
  EXPECT_EQ(rs.EditStatus(), E_Modify) << "the edit waits to be saved again";
  EXPECT_EQ(rs.Rows(), 3);
  EXPECT_EQ(rs.Item("Qty")->GetValue(1), Variant(int32_t{12}));
  EXPECT_EQ(rs.Item("Qty")->GetValue(2), Variant(int32_t{22}));
  EXPECT_EQ(rs.Item("Name")->GetValue(3), Variant("Washer"));

  server_.Restart();
  EXPECT_EQ(rs.UpdateRecord(), E_Succeed);
  EXPECT_EQ(rs.EditStatus(), E_Default);
  EXPECT_EQ(StoredQty(), Longs({12, 22, 30}));
  EXPECT_FALSE(rs.RefreshDataSource());
  EXPECT_EQ(rs.Rows(), 3);
  rs.Unadvise(cookie);
}

}  // namespace
}  // namespace varnel::testing
