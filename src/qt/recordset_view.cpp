#include "varnel/qt/recordset_view.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>

#include "qt/recordset_delegate.h"

namespace varnel::qt {

RecordsetView::RecordsetView(QWidget* Parent) : QTableView(Parent) {
  // Qt's own selection is not used: the recordset's marks are the selection,
  // and the model paints them.
  setSelectionMode(QAbstractItemView::NoSelection);
  setItemDelegate(new detail::RecordsetDelegate(this));
  setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                  QAbstractItemView::AnyKeyPressed);
  verticalHeader()->setDefaultAlignment(Qt::AlignRight | Qt::AlignVCenter);
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
  horizontalHeader()->setResizeContentsPrecision(60);  // columns fit the first rows only
  setWordWrap(false);
}

void RecordsetView::SetRecordsetModel(RecordsetModel* Model) {
  if (model_ != nullptr) {
    disconnect(model_, nullptr, this, nullptr);
  }
  model_ = Model;
  setModel(Model);
  if (Model == nullptr) {
    return;
  }
  connect(Model, &RecordsetModel::CurrentRowChanged, this, &RecordsetView::FollowCurrentRow);
  connect(Model, &RecordsetModel::RowsReloaded, this, &RecordsetView::FitColumns);
  connect(Model, &RecordsetModel::SelectionChanged, viewport(), qOverload<>(&QWidget::update));
  FitColumns();
}

void RecordsetView::FitColumns() {
  // Only the rows in view are measured, so this costs the same on any table.
  resizeColumnsToContents();
  for (int column = 0; column < horizontalHeader()->count(); ++column) {
    if (columnWidth(column) > 260) {
      setColumnWidth(column, 260);
    }
  }
  FollowCurrentRow();
}

void RecordsetView::FollowCurrentRow() {
  if (model_ == nullptr) {
    return;
  }
  const int32_t row = model_->Recordset().AbsolutePosition();
  if (row < 1 || row > model_->rowCount()) {
    return;
  }
  const int column = currentIndex().isValid() ? currentIndex().column() : 0;
  const QModelIndex target = model_->index(row - 1, column);
  if (target != currentIndex()) {
    following_ = true;
    selectionModel()->setCurrentIndex(target, QItemSelectionModel::NoUpdate);
    following_ = false;
  }
  scrollTo(target);
}

void RecordsetView::currentChanged(const QModelIndex& Current, const QModelIndex& Previous) {
  QTableView::currentChanged(Current, Previous);
  if (following_ || model_ == nullptr || !Current.isValid() || model_->ChangingRows()) {
    return;
  }
  ClsRecordset& rs = model_->Recordset();
  const int32_t from = rs.AbsolutePosition();
  const int32_t to = Current.row() + 1;
  if (to == from) {
    return;
  }
  if (gesture_ == Shift) {
    rs.SysSetMutliSelectRows(true, to, Shift);  // the range runs from the row left
  }
  rs.AbsolutePosition(to);
  if (rs.AbsolutePosition() != to) {
    FollowCurrentRow();  // vetoed or not saved: the cursor goes back
    return;
  }
  if (gesture_ == None) {
    rs.SysSetMutliSelectRows(true, to, None);
  }
  viewport()->update();
}

Enum_SelectRow RecordsetView::GestureOf(Qt::KeyboardModifiers modifiers) const {
  if (modifiers & Qt::ShiftModifier) {
    return Shift;
  }
  if (modifiers & Qt::ControlModifier) {
    return Ctrl;
  }
  return None;
}

void RecordsetView::mousePressEvent(QMouseEvent* Event) {
  const QModelIndex target = indexAt(Event->position().toPoint());
  gesture_ = GestureOf(Event->modifiers());
  if (model_ != nullptr && target.isValid() && Event->button() == Qt::LeftButton) {
    ClsRecordset& rs = model_->Recordset();
    const int32_t row = target.row() + 1;
    if (gesture_ == Ctrl) {
      rs.SysSetMutliSelectRows(!rs.GetSelectRow(row), row, Ctrl);
    } else if (gesture_ == Shift && row == rs.AbsolutePosition()) {
      rs.SysSetMutliSelectRows(true, row, Shift);
    } else if (gesture_ == None && row == rs.AbsolutePosition()) {
      rs.SysSetMutliSelectRows(true, row, None);
    }
  }
  QTableView::mousePressEvent(Event);
  gesture_ = None;
  viewport()->update();
}

void RecordsetView::keyPressEvent(QKeyEvent* Event) {
  // Shift with a move extends the range; Ctrl moves without touching the selection.
  gesture_ = GestureOf(Event->modifiers());
  QTableView::keyPressEvent(Event);
  gesture_ = None;
}

}  // namespace varnel::qt
