// A table view of a RecordsetModel that keeps Qt's cursor and the recordset's
// current row and selection in step, both ways.
//
//   varnel::qt::RecordsetModel model(rs);
//   varnel::qt::RecordsetView view;
//   view.SetRecordsetModel(&model);
//
// Moving the cursor is an AbsolutePosition move (with its veto and its save of
// a pending edit); a vetoed or failed move puts the cursor back. Click, Shift
// and Ctrl (mouse or keyboard) select rows through SysSetMutliSelectRows with
// None, Shift and Ctrl; selected rows are painted from the recordset's marks.
#pragma once

#include <QTableView>

#include "varnel/export.h"
#include "varnel/qt/recordset_model.h"

VARNEL_API_BEGIN

namespace varnel::qt {

/// A QTableView bound to a RecordsetModel, with the recordset's row and selection rules.
class RecordsetView : public QTableView {
  Q_OBJECT

 public:
  /// An empty view; call SetRecordsetModel.
  explicit RecordsetView(QWidget* Parent = nullptr);
  /// Shows Model (not owned) with editors for its fields and follows its current row.
  void SetRecordsetModel(RecordsetModel* Model);
  /// The model shown, or nullptr.
  RecordsetModel* Model() const { return model_; }

 public slots:
  /// Sizes the columns to the rows in view (at most 260 pixels) and follows the current row.
  void FitColumns();
  /// Puts the cursor on the recordset's current row without moving the recordset.
  void FollowCurrentRow();

 protected:
  /// Moves the recordset to the new row (AbsolutePosition); a vetoed move puts the cursor back.
  void currentChanged(const QModelIndex& Current, const QModelIndex& Previous) override;
  /// Click, Shift-click and Ctrl-click select rows through SysSetMutliSelectRows.
  void mousePressEvent(QMouseEvent* Event) override;
  /// Shift and Ctrl with the arrow keys select as the mouse does.
  void keyPressEvent(QKeyEvent* Event) override;

 private:
  Enum_SelectRow GestureOf(Qt::KeyboardModifiers modifiers) const;

  RecordsetModel* model_ = nullptr;
  bool following_ = false;         // the cursor is being put on the current row
  Enum_SelectRow gesture_ = None;  // the modifiers of the press being handled
};

}  // namespace varnel::qt

VARNEL_API_END
