#include "main_window.h"

#include <QAction>
#include <QCloseEvent>
#include <QHeaderView>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollArea>
#include <QSplitter>
#include <QStatusBar>
#include <QToolBar>

#include "screen_texts.h"
#include "selection_totals.h"
#include "texts.h"
#include "varnel/qt/conflict_dialog.h"
#include "varnel/qt/language.h"

namespace varnel::screen {

MainWindow::MainWindow(ClsRecordset& Recordset, QWidget* Parent)
    : QMainWindow(Parent), rs_(Recordset) {
  setObjectName("MainWindow");
  model_ = new qt::RecordsetModel(rs_, this);
  grid_ = new qt::RecordsetView(this);
  grid_->setObjectName("Grid");
  grid_->SetRecordsetModel(model_);
  form_ = new qt::RecordsetForm(*model_, qt::RecordsetForm::kGenerate);
  form_->setObjectName("Form");
  auto* scroll = new QScrollArea(this);
  scroll->setWidget(form_);
  scroll->setWidgetResizable(true);
  scroll->setMinimumWidth(300);
  auto* split = new QSplitter(this);
  split->addWidget(grid_);
  split->addWidget(scroll);
  split->setStretchFactor(0, 3);
  split->setStretchFactor(1, 1);
  split->setSizes({990, 290});
  setCentralWidget(split);

  row_label_ = new QLabel(this);
  status_label_ = new QLabel(this);
  totals_label_ = new QLabel(this);
  row_label_->setObjectName("RowLabel");
  status_label_->setObjectName("StatusLabel");
  totals_label_->setObjectName("TotalsLabel");
  statusBar()->addWidget(row_label_);
  statusBar()->addWidget(status_label_);
  statusBar()->addPermanentWidget(totals_label_);

  MakeActions();
  MakeMenus();
  // The count of marked rows first: the status bar that follows shows it.
  connect(model_, &qt::RecordsetModel::SelectionChanged, this, &MainWindow::CountSelectedRows);
  connect(model_, &qt::RecordsetModel::RowsReloaded, this, &MainWindow::CountSelectedRows);
  connect(model_, &QAbstractItemModel::rowsInserted, this, &MainWindow::CountSelectedRows);
  connect(model_, &QAbstractItemModel::rowsRemoved, this, &MainWindow::CountSelectedRows);
  CountSelectedRows();
  connect(model_, &qt::RecordsetModel::CurrentRowChanged, this, &MainWindow::UpdateStatusBar);
  connect(model_, &qt::RecordsetModel::EditStatusChanged, this, &MainWindow::UpdateStatusBar);
  connect(model_, &qt::RecordsetModel::SelectionChanged, this, &MainWindow::UpdateStatusBar);
  connect(model_, &qt::RecordsetModel::RowsReloaded, this, &MainWindow::UpdateStatusBar);
  connect(model_, &qt::RecordsetModel::ValuesChanged, this, &MainWindow::UpdateStatusBar);
  connect(model_, &QAbstractItemModel::rowsInserted, this, &MainWindow::UpdateStatusBar);
  connect(model_, &QAbstractItemModel::rowsRemoved, this, &MainWindow::UpdateStatusBar);
  Retranslate();
  resize(1280, 680);
}

QAction* MainWindow::AddAction(Command command, const QKeySequence& keys,
                               const std::function<void()>& run) {
  auto* action = new QAction(this);
  action->setShortcut(keys);
  action->setShortcutContext(Qt::WindowShortcut);
  connect(action, &QAction::triggered, this, [this, run] {
    run();
    UpdateStatusBar();
  });
  actions_[command] = action;
  addAction(action);
  return action;
}

void MainWindow::MakeActions() {
  using C = Command;
  AddAction(C::kFirst, QKeySequence(Qt::CTRL | Qt::Key_Home), [this] { rs_.MoveFirst(); });
  AddAction(C::kPrevious, QKeySequence(Qt::CTRL | Qt::Key_PageUp), [this] { rs_.MovePrevious(); });
  AddAction(C::kNext, QKeySequence(Qt::CTRL | Qt::Key_PageDown), [this] { rs_.MoveNext(); });
  AddAction(C::kLast, QKeySequence(Qt::CTRL | Qt::Key_End), [this] { rs_.MoveLast(); });
  AddAction(C::kNew, QKeySequence::New, [this] { rs_.NewRecord(); });
  AddAction(C::kCopy, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_N), [this] { rs_.CopyRecord(); });
  AddAction(C::kDelete, QKeySequence(Qt::CTRL | Qt::Key_Delete), [this] { rs_.DeleteRecord(); });
  AddAction(C::kUndo, QKeySequence::Undo, [this] { rs_.UndoRecord(); });
  AddAction(C::kSave, QKeySequence::Save, [this] {
    form_->setFocus();  // an editor still open hands its text over first
    grid_->setFocus();
    Save();
  });
  AddAction(C::kRefresh, QKeySequence::Refresh, [this] { rs_.RefreshDataSource(); });
  AddAction(C::kQuery, QKeySequence::Find, [this] { rs_.NewQuery(); });
  AddAction(C::kRunQuery, QKeySequence(Qt::CTRL | Qt::Key_Return), [this] {
    grid_->setFocus();  // the criterion being typed is taken first
    rs_.ExecuteQuery();
  });
  AddAction(C::kCancelQuery, QKeySequence(Qt::Key_Escape), [this] { rs_.CancelQuery(); });
  AddAction(C::kSelectAll, QKeySequence::SelectAll, [this] { rs_.SelectAllRows(); });
  AddAction(C::kInvertSelection, QKeySequence(Qt::CTRL | Qt::Key_I),
            [this] { rs_.InvertSelectRows(); });
  AddAction(C::kClearSelection, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_A),
            [this] { rs_.ClearSelectRows(); });
  AddAction(C::kEnglish, QKeySequence(), [this] { SwitchLanguage(1033); });
  AddAction(C::kChinese, QKeySequence(), [this] { SwitchLanguage(2052); });
  AddAction(C::kQuit, QKeySequence::Quit, [this] { close(); });
  actions_[C::kEnglish]->setCheckable(true);
  actions_[C::kChinese]->setCheckable(true);
  // Escape also closes editors in the grid: the query cancel only applies in query mode.
  actions_[C::kCancelQuery]->setShortcutContext(Qt::WindowShortcut);
}

void MainWindow::MakeMenus() {
  using C = Command;
  const std::pair<const char*, std::vector<C>> menus[] = {
      {"record", {C::kFirst, C::kPrevious, C::kNext, C::kLast}},
      {"edit", {C::kNew, C::kCopy, C::kDelete, C::kUndo, C::kSave, C::kRefresh}},
      {"query", {C::kQuery, C::kRunQuery, C::kCancelQuery}},
      {"select", {C::kSelectAll, C::kInvertSelection, C::kClearSelection}},
      {"language", {C::kEnglish, C::kChinese}},
  };
  QMenu* file = menuBar()->addMenu(QString());
  file->addAction(actions_[C::kQuit]);
  menus_["file"] = file;
  for (const auto& [name, commands] : menus) {
    QMenu* menu = menuBar()->addMenu(QString());
    for (C command : commands) {
      menu->addAction(actions_[command]);
    }
    menus_[name] = menu;
  }
  toolbar_ = addToolBar(QString());
  toolbar_->setObjectName("Toolbar");
  toolbar_->setMovable(false);
  for (C command : {C::kFirst, C::kPrevious, C::kNext, C::kLast, C::kNew, C::kCopy, C::kDelete,
                    C::kUndo, C::kSave, C::kRefresh, C::kQuery, C::kRunQuery, C::kCancelQuery}) {
    toolbar_->addAction(actions_[command]);
    if (command == C::kLast || command == C::kRefresh) {
      toolbar_->addSeparator();
    }
  }
}

void MainWindow::Retranslate() {
  using C = Command;
  const std::pair<C, const char*> texts[] = {
      {C::kFirst, "&First"},
      {C::kPrevious, "&Previous"},
      {C::kNext, "&Next"},
      {C::kLast, "&Last"},
      {C::kNew, "&New"},
      {C::kCopy, "&Copy"},
      {C::kDelete, "&Delete"},
      {C::kUndo, "&Undo"},
      {C::kSave, "&Save"},
      {C::kRefresh, "&Refresh"},
      {C::kQuery, "&Query mode"},
      {C::kRunQuery, "&Run query"},
      {C::kCancelQuery, "C&ancel query"},
      {C::kSelectAll, "Select &all"},
      {C::kInvertSelection, "&Invert selection"},
      {C::kClearSelection, "C&lear selection"},
      {C::kEnglish, "English"},
      {C::kChinese, "中文"},
      {C::kQuit, "&Quit"},
  };
  for (const auto& [command, text] : texts) {
    actions_[command]->setText(Tr(text));
  }
  const std::pair<const char*, const char*> menu_texts[] = {
      {"file", "&File"},   {"record", "&Record"},    {"edit", "&Edit"},
      {"query", "&Query"}, {"select", "&Selection"}, {"language", "&Language"},
  };
  for (const auto& [name, text] : menu_texts) {
    menus_[name]->setTitle(Tr(text));
  }
  toolbar_->setWindowTitle(Tr("Toolbar"));
  const bool chinese = GetThreadUILanguage() == 2052;
  actions_[C::kEnglish]->setChecked(!chinese);
  actions_[C::kChinese]->setChecked(chinese);
  setWindowTitle(Tr("%1 - varnel-screen").arg(QString::fromStdString(rs_.TableName)));
  app::ApplyNames(rs_, names_, GetThreadUILanguage());
  model_->RetranslateHeaders();
  form_->Retranslate();
  UpdateStatusBar();
}

void MainWindow::SwitchLanguage(int32_t language) { qt::SetLanguage(language); }

void MainWindow::changeEvent(QEvent* Event) {
  if (Event->type() == QEvent::LanguageChange) {
    Retranslate();
  }
  QMainWindow::changeEvent(Event);
}

QString MainWindow::RowText() const {
  const int32_t rows = rs_.Rows();
  if (rows == 0) {
    return Tr("No rows");
  }
  return Tr("Row %1 of %2").arg(rs_.AbsolutePosition()).arg(rows);
}

QString MainWindow::StatusText() const {
  const Enum_EditStatus status = rs_.EditStatus();
  const int offset = status == E_Nothing ? 9 : static_cast<int>(status);
  return QString::fromUtf8(
      app::Tr(static_cast<app::Text>(static_cast<int>(app::Text::StatusDefault) + offset)));
}

QString MainWindow::TotalsText() const {
  const SelectionTotals totals = TotalsOf(rs_);
  if (totals.all.isEmpty()) {
    return {};
  }
  QString text = Tr("Total: %1").arg(totals.all);
  if (rs_.SelectState() == S_Multi && rs_.EditStatus() != E_Query) {
    text += "   " + Tr("Selected %1 rows: %2").arg(selected_rows_).arg(totals.selected);
  }
  return text;
}

void MainWindow::CountSelectedRows() { selected_rows_ = SelectedRowCount(rs_); }

void MainWindow::UpdateStatusBar() {
  row_label_->setText(RowText());
  status_label_->setText(StatusText());
  totals_label_->setText(TotalsText());
  UpdateActions();
}

void MainWindow::UpdateActions() {
  using C = Command;
  const Enum_EditStatus status = rs_.EditStatus();
  const bool query = status == E_Query, loaded = status != E_Nothing;
  for (C command : {C::kFirst, C::kPrevious, C::kNext, C::kLast, C::kNew, C::kCopy, C::kDelete,
                    C::kSelectAll, C::kInvertSelection, C::kClearSelection}) {
    actions_[command]->setEnabled(!query && loaded);
  }
  actions_[C::kUndo]->setEnabled(!query && loaded && status != E_Default);
  actions_[C::kSave]->setEnabled(!query && loaded && status != E_Default);
  actions_[C::kRunQuery]->setEnabled(query);
  actions_[C::kCancelQuery]->setEnabled(query);
}

bool MainWindow::ResolvePendingEdit() {
  const Enum_EditStatus status = rs_.EditStatus();
  if (status == E_Default || status == E_Nothing || status == E_Query) {
    return true;
  }
  QMessageBox ask(QMessageBox::Question, windowTitle(),
                  Tr("The current row has changes that are not saved."), QMessageBox::NoButton,
                  this);
  ask.setObjectName("PendingEditBox");
  ask.setInformativeText(Tr("Save them before closing?"));
  ask.setStandardButtons(QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
  ask.setDefaultButton(QMessageBox::Save);
  ask.button(QMessageBox::Save)->setText(Tr("Save"));
  ask.button(QMessageBox::Discard)->setText(Tr("Discard"));
  ask.button(QMessageBox::Cancel)->setText(Tr("Cancel"));
  switch (ask.exec()) {
    case QMessageBox::Save:
      return Save() == E_Succeed;  // a refused save keeps the window open
    case QMessageBox::Discard:
      // Undo peels one layer at a time (a deletion, then the edit under it).
      for (int layer = 0; layer < 3 && rs_.EditStatus() != E_Default; ++layer) {
        rs_.UndoRecord();
      }
      return true;
    default:
      return false;
  }
}

void MainWindow::closeEvent(QCloseEvent* Event) {
  if (ResolvePendingEdit()) {
    Event->accept();
  } else {
    Event->ignore();
  }
}

Enum_EditRecord MainWindow::Save() {
  const Enum_EditRecord answer = rs_.UpdateRecord();
  if (answer == E_Defeat && writer_ != nullptr && writer_->PendingConflict()) {
    return qt::ConflictDialog::Resolve(*writer_, this);
  }
  if (answer != E_Succeed) {
    form_->ShowRefusal(LastError());  // the field to correct, as the library names it
  }
  return answer;
}

bool MainWindow::SaveScreenshot(const QString& Path) { return grab().save(Path, "PNG"); }

}  // namespace varnel::screen
