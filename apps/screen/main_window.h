// The window of varnel-screen: the grid and the generated form side by side,
// a toolbar and menus for every operation, and a status bar with the row, the
// edit status in words and the totals of all and of the selected rows.
#pragma once

#include <QMainWindow>
#include <map>

#include "screen_setup.h"
#include "varnel/qt/recordset_form.h"
#include "varnel/qt/recordset_model.h"
#include "varnel/qt/recordset_view.h"
#include "varnel/varnel.h"

class QAction;
class QLabel;
class QMenu;
class QToolBar;

namespace varnel::screen {

// What each action does; also its key in Actions().
enum class Command {
  kFirst,
  kPrevious,
  kNext,
  kLast,
  kNew,
  kCopy,
  kDelete,
  kUndo,
  kSave,
  kRefresh,
  kQuery,
  kRunQuery,
  kCancelQuery,
  kSelectAll,
  kInvertSelection,
  kClearSelection,
  kEnglish,
  kChinese,
  kQuit,
};

class MainWindow : public QMainWindow {
  Q_OBJECT

 public:
  // A window over Recordset (loaded or not); REQUIRES it outlives the window.
  explicit MainWindow(ClsRecordset& Recordset, QWidget* Parent = nullptr);

  QAction* Action(Command command) const { return actions_.at(command); }
  qt::RecordsetView& Grid() { return *grid_; }
  qt::RecordsetForm& Form() { return *form_; }
  qt::RecordsetModel& Model() { return *model_; }
  // The status bar's texts: "Row 3 of 300", the status in words, the totals.
  QString RowText() const;
  QString StatusText() const;
  QString TotalsText() const;

  // The fields' display names per language, given to the fields at each switch.
  void SetScreenNames(app::ScreenNames Names) { names_ = std::move(Names); }
  // Offers Writer's conflict dialog when a save meets someone else's change (not owned).
  void SetWriter(TableWriter* Writer) { writer_ = Writer; }
  // Saves the pending edit, resolving a conflict with the user; UpdateRecord's answer.
  Enum_EditRecord Save();

  // Renders the window as it is shown to a PNG file; false when it cannot be written.
  bool SaveScreenshot(const QString& Path);

 public slots:
  void UpdateStatusBar();
  void UpdateActions();

 protected:
  void changeEvent(QEvent* Event) override;
  void closeEvent(QCloseEvent* Event) override;

 private:
  void MakeActions();
  void MakeMenus();
  QAction* AddAction(Command command, const QKeySequence& keys, const std::function<void()>& run);
  void Retranslate();
  void SwitchLanguage(int32_t language);
  bool ResolvePendingEdit();  // false when the user chose to stay
  void CountSelectedRows();   // once per change of the marks, not per status-bar update

  ClsRecordset& rs_;
  TableWriter* writer_ = nullptr;
  app::ScreenNames names_;
  qt::RecordsetModel* model_;
  qt::RecordsetView* grid_;
  qt::RecordsetForm* form_;
  std::map<Command, QAction*> actions_;
  std::map<QString, QMenu*> menus_;
  QToolBar* toolbar_ = nullptr;
  QLabel* row_label_;
  QLabel* status_label_;
  QLabel* totals_label_;
  int32_t selected_rows_ = 0;
};

}  // namespace varnel::screen
