// The table model under Qt's own model tester through a session of every
// operation, with a view attached, on every database.
#include <QAbstractItemModelTester>
#include <QDate>
#include <QProgressDialog>
#include <functional>

#include "order_table.h"
#include "varnel/qt/load_progress_dialog.h"

namespace varnel::testing {
namespace {

QStringList tester_findings;

void RecordFindings(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  if (type != QtDebugMsg && QString(context.category).startsWith("qt.modeltest")) {
    tester_findings << text;
  }
}

// Answers the next save with E_OtherErr: the edit is rolled back in memory.
struct RefuseNextSave : ClsRecordsetEvents {
  void UserUpdateRecord(Enum_EditRecord& Update_Succeed) override {
    if (refuse) {
      Update_Succeed = E_OtherErr;
      refuse = false;
    }
  }
  bool refuse = false;
};

class ModelTest : public OrderTable {};

TEST_P(ModelTest, TesterFindsNothingOverASessionOfEveryOperation) {
  CaptureScope capture;
  RefuseNextSave refuser;
  rs.Advise(&refuser);
  Load();
  qt::RecordsetModel model(rs);
  qt::RecordsetView view;
  view.SetRecordsetModel(&model);
  tester_findings.clear();
  const QtMessageHandler previous = qInstallMessageHandler(RecordFindings);
  QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Warning);
  struct Step {
    const char* what;
    std::function<void()> act;
    int32_t rows;
  };
  const Step session[] = {
      {"grid edit", [&] { model.setData(model.index(1, 2), 7); }, 5},
      {"save", [&] { rs.UpdateRecord(); }, 5},
      {"new", [&] { rs.NewRecord("Id", Variant(int32_t{6})); }, 6},
      {"undo new", [&] { rs.UndoRecord(); }, 5},
      {"new saved", [&] { rs.NewRecord("Id", Variant(int32_t{6})), rs.UpdateRecord(); }, 6},
      {"copy", [&] { rs.MoveFirst(), rs.CopyRecord(); }, 7},
      {"save copy", [&] { rs.Modify("Id", int32_t{60}), rs.UpdateRecord(); }, 7},
      {"delete", [&] { rs.AbsolutePosition(3), rs.DeleteRecord(); }, 6},
      {"undo delete", [&] { rs.UndoRecord(); }, 7},
      {"refused delete", [&] { refuser.refuse = true, rs.DeleteRecord(), rs.UpdateRecord(); }, 7},
      {"delete saved", [&] { rs.DeleteRecord(), rs.UpdateRecord(); }, 6},
      {"refused copy", [&] { refuser.refuse = true, rs.CopyRecord(), rs.UpdateRecord(); }, 6},
      {"undo modification", [&] { model.setData(model.index(0, 1), "Zed"), rs.UndoRecord(); }, 6},
      {"refresh", [&] { rs.RefreshDataSource(); }, 6},
      {"query", [&] { rs.NewQuery(), rs.Modify("Qty", Variant(">4")), rs.ExecuteQuery(); }, 3},
      {"query cancelled", [&] { rs.NewQuery(), rs.CancelQuery(); }, 3},
      {"rows let", [&] { rs.Rows(2); }, 2},
  };
  for (const Step& step : session) {
    step.act();
    EXPECT_EQ(model.rowCount(), step.rows) << step.what;
    EXPECT_EQ(model.rowCount(), rs.Rows()) << step.what;
    EXPECT_TRUE(tester_findings.isEmpty())
        << step.what << ": " << tester_findings.join("; ").toStdString();
    tester_findings.clear();
  }
  qInstallMessageHandler(previous);
  EXPECT_EQ(Stored("Qty", 2), Variant(int32_t{7}));
  EXPECT_EQ(StoredRows(), 6);
}

TEST_P(ModelTest, CellsShowTheirKindAndFollowTheEditRules) {
  CaptureScope capture;
  Load();
  qt::RecordsetModel model(rs);
  const QModelIndex paid = model.index(1, 4), date = model.index(0, 5), qty = model.index(0, 2);
  EXPECT_EQ(model.headerData(1, Qt::Horizontal).toString(), "Customer");
  EXPECT_EQ(model.data(paid, Qt::CheckStateRole).toInt(), Qt::Checked);
  EXPECT_EQ(model.data(date).toString(), QDate(1899, 12, 30).addDays(45001).toString("yyyy-MM-dd"));
  EXPECT_EQ(model.data(date, Qt::EditRole).toDate(), QDate(1899, 12, 30).addDays(45001));
  EXPECT_TRUE(model.data(qty, Qt::TextAlignmentRole).value<Qt::Alignment>() & Qt::AlignRight);
  EXPECT_EQ(model.data(model.index(1, 7)).toString(), QStringLiteral("€200.00"))
      << "its row's sign";
  EXPECT_TRUE(model.flags(qty) & Qt::ItemIsEditable);
  EXPECT_FALSE(model.flags(model.index(0, 6)) & Qt::ItemIsEditable) << "Amount is computed";
  EXPECT_TRUE(model.flags(paid) & Qt::ItemIsUserCheckable);
  rs.SetEdit(false, 3);
  EXPECT_FALSE(model.flags(model.index(2, 2)) & Qt::ItemIsEditable) << "row 3 is locked";
  EXPECT_TRUE(model.headerData(2, Qt::Vertical).toString().startsWith(QStringLiteral("⊘")));
  // A refused value is told to the user and leaves the cell as it was.
  EXPECT_FALSE(model.setData(qty, "many"));
  ASSERT_EQ(capture.shown().size(), 1u);
  EXPECT_EQ(capture.LastText(), LoadResString(103));
  EXPECT_EQ(model.data(qty).toString(), "2");
  EXPECT_TRUE(model.setData(paid, Qt::Unchecked, Qt::CheckStateRole));
  EXPECT_EQ(rs.AbsolutePosition(), 2);
  EXPECT_TRUE(model.headerData(1, Qt::Vertical).toString().startsWith(QStringLiteral("✎")));
}

// Cancel in the progress dialog: no error report, and the rows, the status,
// the current row and the views stay as they were before the refresh.
TEST_P(ModelTest, ACancelledRefreshKeepsTheRowsAsTheyWere) {
  CaptureScope capture;
  Load();
  qt::RecordsetModel model(rs);
  qt::RecordsetView view;
  view.SetRecordsetModel(&model);
  qt::LoadProgressDialog progress(rs, *connection, nullptr);
  progress.SetDelay(0);
  bool cancel = true;
  QObject::connect(&progress, &qt::LoadProgressDialog::RowsRead, [&] {
    if (cancel) {
      progress.Dialog()->cancel();
    }
  });
  rs.AbsolutePosition(3);
  connection->Execute("UPDATE Orders SET \"Qty\" = 99 WHERE \"Id\" = 3");
  connection->Execute("INSERT INTO Orders (\"Id\", \"Customer\") VALUES (6, 'Finley')");
  int resets = 0;
  QObject::connect(&model, &QAbstractItemModel::modelReset, [&] { ++resets; });
  EXPECT_TRUE(rs.RefreshDataSource());
  EXPECT_TRUE(progress.Cancelled());
  EXPECT_TRUE(capture.shown().empty()) << "cancelling is not an error";
  EXPECT_EQ(rs.Rows(), 5);
  EXPECT_EQ(model.rowCount(), 5);
  EXPECT_EQ(model.data(model.index(2, 2)).toString(), "6") << "the value read before";
  EXPECT_EQ(rs.EditStatus(), E_Default);
  EXPECT_EQ(rs.AbsolutePosition(), 3);
  EXPECT_EQ(view.currentIndex().row(), 2);
  EXPECT_EQ(resets, 0) << "the views keep their rows";
  cancel = false;
  EXPECT_FALSE(rs.RefreshDataSource());
  EXPECT_EQ(model.rowCount(), 6);
  EXPECT_EQ(model.data(model.index(2, 2)).toString(), "99") << "the rows read now";
  EXPECT_EQ(resets, 1);
}

VARNEL_ON_EVERY_PROVIDER(ModelTest);

}  // namespace
}  // namespace varnel::testing
