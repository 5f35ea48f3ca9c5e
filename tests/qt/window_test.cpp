// varnel-screen's window on every database, driven as a person drives it:
// keys and clicks on the real widgets, dialogs answered by pressing their buttons.
#include <QAbstractButton>
#include <QAction>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <functional>

#include "main_window.h"
#include "order_table.h"
#include "varnel/qt/language.h"
#include "varnel/qt/message_dialogs.h"

namespace varnel::testing {
namespace {

using screen::Command;

struct VetoMoves : ClsRecordsetEvents {
  void MoveRecordBefore(bool& Cancel) override { Cancel = veto; }
  bool veto = false;
};

class WindowTest : public OrderTable {
 protected:
  void SetUp() override {
    dialogs = qt::InstallMessageDialogs();
    SetThreadUILanguage(1033);
    Load();
    rs.Advise(&vetoes);
    window = std::make_unique<screen::MainWindow>(rs);
    window->SetWriter(writer.get());
    window->show();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
  }
  void TearDown() override {
    window.reset();
    SetMessageUi(nullptr);
  }

  // A key as the platform delivers it: shortcuts apply, the focus widget gets the rest.
  void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    if (!window->isActiveWindow()) {  // a dialog just closed
      window->activateWindow();
      (void)QTest::qWaitForWindowActive(window.get());
    }
    QTest::keyClick(window->windowHandle(), key, modifiers);
  }
  void Type(const QString& text) {
    for (QChar c : text) {
      QTest::keyClick(window->windowHandle(), c.toLatin1());
    }
  }
  void Click(int row, int column, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    qt::RecordsetView& grid = window->Grid();
    const QRect cell = grid.visualRect(window->Model().index(row - 1, column));
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, modifiers, cell.center());
  }
  QLineEdit* FormLine(const char* field) {
    return qobject_cast<QLineEdit*>(window->Form().Editor(field));
  }
  // The next modal window is handed to answer as soon as it is on screen.
  void AnswerNextModal(std::function<void(QWidget*)> answer) {
    auto* poll = new QTimer(window.get());
    QObject::connect(poll, &QTimer::timeout, poll, [poll, answer] {
      if (QWidget* modal = QApplication::activeModalWidget()) {
        poll->stop();
        answer(modal);
        poll->deleteLater();
      }
    });
    poll->start(10);
  }

  std::shared_ptr<qt::QtMessageUi> dialogs;
  VetoMoves vetoes;
  std::unique_ptr<screen::MainWindow> window;
};

// What is typed into the grid and the form is saved by Ctrl-S; a refused save
// shows the error dialog and keeps the edit.
TEST_P(WindowTest, TypingIntoTheGridAndTheFormThenCtrlSSavesOrShowsTheRefusal) {
  Click(2, 1);
  Type("Zed");
  Key(Qt::Key_Return);
  Key(Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(Stored("Customer", 2), Variant("Zed"));
  QLineEdit* qty = FormLine("Qty");
  qty->setFocus();
  qty->selectAll();
  Type("41");
  Key(Qt::Key_Return);
  EXPECT_EQ(rs.EditStatus(), E_Modify);
  EXPECT_EQ(window->StatusText(), "Modified");
  Key(Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(Stored("Qty", 2).ToLong(), 41);
  EXPECT_EQ(window->StatusText(), "Browse");

  // Customer may not be empty: the save is refused.
  FormLine("Customer")->setFocus();
  FormLine("Customer")->clear();
  Key(Qt::Key_Return);
  QString description;
  bool busy = false;
  AnswerNextModal([&](QWidget* modal) {
    description = modal->findChild<QPlainTextEdit*>("Txt_ErrDescription")->toPlainText();
    busy = rs.SysErrState;
    EXPECT_EQ(modal->objectName(), "FrmShowErr");
    EXPECT_EQ(modal->findChild<QLineEdit*>("Txt_Title")->text(), "Error:94");
    modal->findChild<QPushButton*>("CmdOk")->click();
  });
  Key(Qt::Key_S, Qt::ControlModifier);
  EXPECT_TRUE(description.contains("Customer")) << description.toStdString();
  EXPECT_TRUE(busy);
  EXPECT_FALSE(rs.SysErrState);
  EXPECT_EQ(rs.EditStatus(), E_Modify);
  EXPECT_TRUE(rs.Item("Customer")->GetValue().IsBlank());
  EXPECT_EQ(Stored("Customer", 2), Variant("Zed"));
  EXPECT_EQ(window->focusWidget(), FormLine("Customer")) << "the field the library named";
  EXPECT_EQ(FormLine("Customer")->toolTip(), description);
}

TEST_P(WindowTest, EachEditingActionWorksAndUndoTakesBackOneLayerAtATime) {
  struct Step {
    Command command;
    int32_t rows;
    Enum_EditStatus status;
  };
  const Step steps[] = {
      {Command::kNew, 6, E_AddNew},    {Command::kDelete, 5, E_AddNewDelete},
      {Command::kUndo, 6, E_AddNew},   {Command::kUndo, 5, E_Default},
      {Command::kCopy, 6, E_Copy},     {Command::kUndo, 5, E_Default},
      {Command::kDelete, 4, E_Delete}, {Command::kUndo, 5, E_Default},
  };
  for (const Step& step : steps) {
    window->Action(step.command)->trigger();
    EXPECT_EQ(window->Model().rowCount(), step.rows)
        << window->Action(step.command)->text().toStdString();
    EXPECT_EQ(rs.EditStatus(), step.status);
    EXPECT_EQ(window->Grid().currentIndex().row() + 1, rs.AbsolutePosition());
  }
  EXPECT_EQ(StoredRows(), 5);
}

TEST_P(WindowTest, KeyboardAndMouseMoveTheCurrentRowAndAVetoedMoveStays) {
  window->Grid().setFocus();
  Key(Qt::Key_Down);
  EXPECT_EQ(rs.AbsolutePosition(), 2);
  Click(4, 1);
  EXPECT_EQ(rs.AbsolutePosition(), 4);
  EXPECT_EQ(window->RowText(), "Row 4 of 5");
  Key(Qt::Key_End, Qt::ControlModifier);
  EXPECT_EQ(rs.AbsolutePosition(), 5);
  vetoes.veto = true;
  Key(Qt::Key_Up);
  Click(1, 1);
  EXPECT_EQ(rs.AbsolutePosition(), 5);
  EXPECT_EQ(window->Grid().currentIndex().row(), 4) << "the cursor went back";
}

// Each currency is totalled on its own: dollars, yuan and euros are never added up.
TEST_P(WindowTest, ShiftAndCtrlClicksSelectRowsAndTheStatusBarTotalsThem) {
  const QString all = "Total: Qty 30   Amount 137.5   Fee $400.00 + ¥400.00 + €700.00";
  EXPECT_EQ(window->TotalsText().toStdString(), all.toStdString());
  struct Step {
    int row;
    Qt::KeyboardModifiers keys;
    const char* selected;  // "" when no row is marked
  };
  const Step steps[] = {
      {1, Qt::NoModifier, ""},
      {3, Qt::ShiftModifier, "Selected 3 rows: Qty 12   Amount 35   Fee $400.00 + €200.00"},
      {5, Qt::ControlModifier, "Selected 4 rows: Qty 22   Amount 97.5   Fee $400.00 + €700.00"},
      {1, Qt::ControlModifier, "Selected 3 rows: Qty 20   Amount 95   Fee $300.00 + €700.00"},
  };
  for (const Step& step : steps) {
    Click(step.row, 1, step.keys);
    const QString expected = QString(step.selected).isEmpty() ? all : all + "   " + step.selected;
    EXPECT_EQ(window->findChild<QLabel*>("TotalsLabel")->text().toStdString(),
              expected.toStdString())
        << step.row;
  }
  window->Action(Command::kClearSelection)->trigger();
  EXPECT_EQ(window->TotalsText().toStdString(), all.toStdString());
}

TEST_P(WindowTest, QueryModeTakesCriteriaInTheFormRunsAndCancels) {
  Key(Qt::Key_F, Qt::ControlModifier);
  ASSERT_EQ(rs.EditStatus(), E_Query);
  QLineEdit* criteria = window->Form().CriteriaEditor("Qty");
  ASSERT_TRUE(criteria->isVisible());
  criteria->setFocus();
  Type(">6");
  Key(Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(rs.EditStatus(), E_Default);
  EXPECT_EQ(window->Model().rowCount(), 2);
  Key(Qt::Key_F, Qt::ControlModifier);
  Key(Qt::Key_Escape);
  EXPECT_EQ(rs.EditStatus(), E_Default);
  EXPECT_EQ(window->Model().rowCount(), 2);
}

TEST_P(WindowTest, TheLanguageSwitchesWhileRunning) {
  app::ScreenNames names;
  names.by_field["Customer"] = {"Customer", "客户"};
  window->SetScreenNames(names);
  QSignalSpy headers(&window->Model(), &QAbstractItemModel::headerDataChanged);
  const auto header = [&] { return window->Model().headerData(1, Qt::Horizontal).toString(); };
  window->Action(Command::kChinese)->trigger();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::LanguageChange);
  EXPECT_EQ(header(), "客户");
  EXPECT_TRUE(std::any_of(headers.begin(), headers.end(), [](const QList<QVariant>& signal) {
    return signal.at(0).value<Qt::Orientation>() == Qt::Horizontal;
  })) << "the views are told to read the headers again";
  const auto caption = [&] {  // the form's label beside the Customer editor
    const auto* rows = qobject_cast<QFormLayout*>(window->Form().layout());
    return qobject_cast<QLabel*>(
               rows->labelForField(window->Form().Editor("Customer")->parentWidget()))
        ->text();
  };
  EXPECT_EQ(caption(), "客户");
  EXPECT_EQ(window->Action(Command::kSave)->text(), "保存(&S)");
  EXPECT_EQ(window->StatusText(), "浏览");
  EXPECT_EQ(window->RowText(), "第 1 行，共 5 行");
  EXPECT_EQ(LoadResString(101), "错误");
  window->Action(Command::kEnglish)->trigger();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::LanguageChange);
  EXPECT_EQ(window->Action(Command::kSave)->text(), "&Save");
  EXPECT_EQ(LoadResString(101), "Error");
  EXPECT_EQ(header(), "Customer");
  EXPECT_EQ(caption(), "Customer");
}

TEST_P(WindowTest, ClosingWithAPendingEditAsksSaveDiscardOrCancel) {
  struct Case {
    QMessageBox::StandardButton answer;
    bool closed;
    int32_t stored_qty;
  };
  for (const Case& c : {Case{QMessageBox::Cancel, false, 2}, Case{QMessageBox::Discard, true, 2},
                        Case{QMessageBox::Save, true, 9}}) {
    window->show();
    rs.Modify("Qty", Variant(int32_t{9}));
    AnswerNextModal([&](QWidget* modal) {
      EXPECT_EQ(modal->objectName(), "PendingEditBox");
      qobject_cast<QMessageBox*>(modal)->button(c.answer)->click();
    });
    EXPECT_EQ(window->close(), c.closed);
    EXPECT_EQ(Stored("Qty", 1).ToLong(), c.stored_qty);
    EXPECT_EQ(rs.EditStatus(), c.closed ? E_Default : E_Modify);
  }
}

TEST_P(WindowTest, ASaveMeetingSomeoneElsesChangeOffersMineOrTheirs) {
  struct Case {
    const char* button;
    int32_t stored_qty;  // in the database afterwards
    int32_t shown_qty;   // in the row afterwards
    Enum_EditStatus status;
  };
  for (const Case& c : {Case{"KeepEditing", 50, 9, E_Modify}, Case{"TakeTheirs", 50, 50, E_Default},
                        Case{"WriteMine", 9, 9, E_Default}}) {
    connection->Execute("UPDATE Orders SET \"Qty\" = 50 WHERE \"Id\" = 1");
    if (rs.EditStatus() == E_Default) {
      rs.Modify("Qty", Variant(int32_t{9}));
    }
    QString typed;
    AnswerNextModal([&](QWidget* modal) {  // the writer's notice first, then the choice
      ASSERT_NE(modal->findChild<QPushButton*>("CmdOk"), nullptr)
          << modal->objectName().toStdString();
      modal->findChild<QPushButton*>("CmdOk")->click();
      AnswerNextModal([&](QWidget* dialog) {
        typed = dialog->findChild<QTableWidget*>("ConflictFields")->item(2, 1)->text();
        dialog->findChild<QPushButton*>(c.button)->click();
      });
    });
    Key(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(typed, "9") << c.button;
    EXPECT_EQ(Stored("Qty", 1).ToLong(), c.stored_qty) << c.button;
    EXPECT_EQ(rs.Item("Qty")->GetValue(1).ToLong(), c.shown_qty) << c.button;
    EXPECT_EQ(rs.EditStatus(), c.status) << c.button;
    connection->Execute("UPDATE Orders SET \"Qty\" = 2 WHERE \"Id\" = 1");
    if (rs.EditStatus() == E_Default) {
      rs.RefreshDataSource();
    }
  }
}

VARNEL_ON_EVERY_PROVIDER(WindowTest);

}  // namespace
}  // namespace varnel::testing
