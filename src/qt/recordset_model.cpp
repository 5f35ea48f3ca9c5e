#include "varnel/qt/recordset_model.h"

#include <QBrush>
#include <QGuiApplication>
#include <QPalette>

#include "fields/field_access.h"
#include "qt/texts.h"
#include "qt/value_convert.h"

namespace varnel::qt {

using detail::KindOf;
using detail::Tr;
using detail::ValueKind;

RecordsetModel::RecordsetModel(ClsRecordset& Recordset, QObject* Parent)
    : QAbstractTableModel(Parent), rs_(Recordset) {
  rows_ = rs_.Rows();
  TakeFields();
  current_ = rs_.AbsolutePosition();
  cookie_ = rs_.Advise(this);
  observer_cookie_ = rs_.AddRowObserver(this);
}

RecordsetModel::~RecordsetModel() {
  rs_.RemoveRowObserver(observer_cookie_);
  rs_.Unadvise(cookie_);
}

QModelIndex RecordsetModel::index(int Row, int Column, const QModelIndex& Parent) const {
  // Views ask for every visible cell on every paint: no virtual calls on the way.
  if (Parent.isValid() || Row < 0 || Row >= rows_ || Column < 0 || Column >= columns_) {
    return {};
  }
  return createIndex(Row, Column);
}

int RecordsetModel::rowCount(const QModelIndex& Parent) const {
  return Parent.isValid() ? 0 : rows_;
}

int RecordsetModel::columnCount(const QModelIndex& Parent) const {
  return Parent.isValid() ? 0 : columns_;
}

QVariant RecordsetModel::data(const QModelIndex& Index, int Role) const {
  const int32_t row = Index.row() + 1;
  if (!Index.isValid() || row > rs_.Rows() || Index.column() >= columns_ || reset_pending_) {
    return {};
  }
  const size_t column = static_cast<size_t>(Index.column());
  const ClsFields* field = fields_[column].get();
  const ValueKind kind = KindOf(*field);
  switch (Role) {
    case Qt::DisplayRole:
      return detail::DisplayText(*field, kind, detail::StoredValue(*field, row), signs_[column],
                                 row);
    case Qt::EditRole:
      return detail::EditValue(*field, detail::StoredValue(*field, row));
    case Qt::CheckStateRole: {
      if (kind != ValueKind::kBoolean) {
        return {};
      }
      const Variant& value = detail::StoredValue(*field, row);
      return value.IsBlank() || !value.ToBool() ? Qt::Unchecked : Qt::Checked;
    }
    case Qt::TextAlignmentRole:
      return QVariant::fromValue(Qt::AlignVCenter |
                                 (detail::IsNumeric(kind) ? Qt::AlignRight : Qt::AlignLeft));
    case VariantRole:
      return QVariant::fromValue(detail::StoredValue(*field, row));
    case Qt::BackgroundRole:
      if (RowIsSelected(row)) {
        QColor shade = QGuiApplication::palette().color(QPalette::Highlight);
        shade.setAlpha(70);
        return QBrush(shade);
      }
      return {};
    case Qt::ForegroundRole:
      if (!rs_.GetEdit(row)) {
        return QBrush(QGuiApplication::palette().color(QPalette::Disabled, QPalette::Text));
      }
      return {};
    default:
      return {};
  }
}

bool RecordsetModel::setData(const QModelIndex& Index, const QVariant& Value, int Role) {
  const int32_t row = Index.row() + 1;
  if (!Index.isValid() || row > rs_.Rows() ||
      (Role != Qt::EditRole && Role != Qt::CheckStateRole)) {
    return false;
  }
  if (rs_.AbsolutePosition() != row) {
    rs_.AbsolutePosition(row);  // saves a pending edit of another row; may be vetoed
    if (rs_.AbsolutePosition() != row) {
      return false;
    }
  }
  const Variant value =
      Role == Qt::CheckStateRole ? Variant(Value.toInt() == Qt::Checked) : detail::FromQt(Value);
  return !rs_.Modify(Variant(static_cast<int32_t>(Index.column() + 1)), value, 0);
}

Qt::ItemFlags RecordsetModel::flags(const QModelIndex& Index) const {
  if (!Index.isValid()) {
    return Qt::NoItemFlags;
  }
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  const int32_t row = Index.row() + 1;
  if (row > rs_.Rows() || Index.column() >= columns_ || rs_.EditStatus() == E_Query ||
      rs_.EditStatus() == E_Nothing) {
    return flags;
  }
  const auto& field = fields_[static_cast<size_t>(Index.column())];
  const bool computed = !field->ComputeString.empty() || field->FieldType == F_AutoCoding;
  const bool allowed =
      rs_.EditStatus() == E_AddNew || rs_.EditStatus() == E_Copy ? rs_.EditAddNew : rs_.EditModify;
  if (!field->Edit || computed || !allowed || !rs_.GetEdit(row) ||
      (rs_.Locked() && row == rs_.AbsolutePosition())) {
    return flags;
  }
  return flags |
         (KindOf(*field) == ValueKind::kBoolean ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable);
}

bool RecordsetModel::RowIsSelected(int32_t Row) const {
  if (rs_.SelectState() == S_Multi) {
    return rs_.GetSelectRow(Row);
  }
  return Row == current_;
}

QString RecordsetModel::RowMark(int32_t Row) const {
  if (Row < 1 || Row > rs_.Rows()) {
    return {};
  }
  if (Row == current_) {
    switch (rs_.EditStatus()) {
      case E_Modify:
        return QStringLiteral("✎");
      case E_AddNew:
        return QStringLiteral("✚");
      case E_Copy:
        return QStringLiteral("❐");
      case E_Delete:
      case E_ModifyDelete:
      case E_AddNewDelete:
      case E_CopyDelete:
        return QStringLiteral("✖");
      default:
        return QStringLiteral("▶");
    }
  }
  return rs_.GetEdit(Row) ? QString() : QStringLiteral("⊘");
}

QString RecordsetModel::RowStateText(int32_t Row) const {
  const QString mark = RowMark(Row);
  if (mark == QStringLiteral("✎")) return Tr("modified, not saved");
  if (mark == QStringLiteral("✚")) return Tr("new, not saved");
  if (mark == QStringLiteral("❐")) return Tr("copied, not saved");
  if (mark == QStringLiteral("✖")) return Tr("a deletion before this row is not saved");
  if (mark == QStringLiteral("⊘")) return Tr("locked");
  if (mark == QStringLiteral("▶")) return Tr("current row");
  return {};
}

QVariant RecordsetModel::headerData(int Section, Qt::Orientation Orientation, int Role) const {
  if (Orientation == Qt::Horizontal) {
    if (Section < 0 || Section >= columns_) {
      return {};
    }
    if (Role == Qt::DisplayRole) {
      return detail::Caption(*fields_[static_cast<size_t>(Section)]);
    }
    return {};
  }
  const int32_t row = Section + 1;
  switch (Role) {
    case Qt::DisplayRole: {
      const QString mark = RowMark(row);
      return mark.isEmpty() ? QString::number(row) : mark + " " + QString::number(row);
    }
    case Qt::ToolTipRole:
      return RowStateText(row);
    case Qt::TextAlignmentRole:
      return QVariant::fromValue(Qt::AlignVCenter | Qt::AlignRight);
    default:
      return {};
  }
}

void RecordsetModel::RetranslateHeaders() {
  if (columns_ > 0) {
    emit headerDataChanged(Qt::Horizontal, 0, columns_ - 1);
  }
  RowHeaderChanged(current_);
}

// ---- events ----

void RecordsetModel::OnEvent(int32_t DispId) {
  (void)DispId;
  CatchUp();
}

void RecordsetModel::ValueChange(int32_t Row, int32_t Col) {
  if (bracket_ == 0 && Row >= 1 && Row <= rows_ && Col >= 1 && Col <= columns_) {
    const QModelIndex cell = index(Row - 1, Col - 1);
    emit dataChanged(cell, cell);
    emit ValuesChanged();
  }
}

void RecordsetModel::SymbolChange(int32_t Row, int32_t Col) { ValueChange(Row, Col); }

void RecordsetModel::EditStatusChange() {
  RowHeaderChanged(current_);
  emit EditStatusChanged();
}

void RecordsetModel::RecordPointerChange() {
  const int32_t moved_to = rs_.AbsolutePosition();
  const int32_t left = current_;
  current_ = moved_to;
  RowHeaderChanged(left);
  if (moved_to != left) {
    RowHeaderChanged(moved_to);
  }
  WholeRowChanged(moved_to);  // a new or copied row's values came in silently
  emit CurrentRowChanged(moved_to);
  emit ValuesChanged();
}

void RecordsetModel::ChangeSelectRows() { emit SelectionChanged(); }

// ---- row notices ----

void RecordsetModel::RowsAboutToBeInserted(int32_t First, int32_t Count) {
  if (bracket_++ == 0) {
    beginInsertRows(QModelIndex(), First - 1, First + Count - 2);
  }
}

void RecordsetModel::RowsInserted(int32_t First, int32_t Count) {
  (void)First;
  if (bracket_ == 1) {
    rows_ += Count;
    endInsertRows();
  }
  if (--bracket_ == 0) {
    CatchUp();
  }
}

void RecordsetModel::RowsAboutToBeRemoved(int32_t First, int32_t Count) {
  if (bracket_++ == 0) {
    beginRemoveRows(QModelIndex(), First - 1, First + Count - 2);
  }
}

void RecordsetModel::RowsRemoved(int32_t First, int32_t Count) {
  (void)First;
  if (bracket_ == 1) {
    rows_ -= Count;
    endRemoveRows();
  }
  if (--bracket_ == 0) {
    CatchUp();
  }
}

// A load reads into fresh storage and puts the rows it replaced back when it
// fails or is cancelled. The views are reset only once the new rows are in:
// rows that came back as they were keep the views' cursor, scrolling and widths.
void RecordsetModel::RowsAboutToBeReset() {
  if (bracket_++ == 0) {
    reset_pending_ = true;
    rows_before_reset_ = RowsMark();
  }
}

void RecordsetModel::RowsReset() {
  if (bracket_ == 1) {
    reset_pending_ = false;
    const bool same_rows =
        RowsMark() == rows_before_reset_ && rows_ == rs_.Rows() && columns_ == rs_.Count();
    if (same_rows) {
      if (rows_ > 0 && columns_ > 0) {
        emit dataChanged(index(0, 0), index(rows_ - 1, columns_ - 1));  // painted blank meanwhile
      }
    } else {
      beginResetModel();
      rows_ = rs_.Rows();
      TakeFields();
      current_ = rs_.AbsolutePosition();
      endResetModel();
    }
    reloaded_ = !same_rows;
  }
  if (--bracket_ == 0 && reloaded_) {
    reloaded_ = false;
    emit RowsReloaded();
  }
}

const void* RecordsetModel::RowsMark() const {
  const auto first = rs_.begin();
  return first == rs_.end() ? nullptr : internal::FieldAccess::Values(**first).data();
}

void RecordsetModel::RowChanged(int32_t Row) {
  if (bracket_ == 0) {
    WholeRowChanged(Row);
  }
}

void RecordsetModel::RowHeaderChanged(int32_t Row) {
  if (bracket_ == 0 && Row >= 1 && Row <= rows_) {
    emit headerDataChanged(Qt::Vertical, Row - 1, Row - 1);
  }
}

void RecordsetModel::WholeRowChanged(int32_t Row) {
  if (bracket_ == 0 && Row >= 1 && Row <= rows_ && columns_ > 0) {
    emit dataChanged(index(Row - 1, 0), index(Row - 1, columns_ - 1));
  }
}

// A path that changed the rows without a notice (a field added or removed, a
// failed operation) is caught at the next event: the views start over.
void RecordsetModel::CatchUp() {
  if (bracket_ == 0 && (rows_ != rs_.Rows() || columns_ != rs_.Count())) {
    beginResetModel();
    rows_ = rs_.Rows();
    TakeFields();
    current_ = rs_.AbsolutePosition();
    endResetModel();
    emit RowsReloaded();
  }
}

void RecordsetModel::TakeFields() {
  fields_.assign(rs_.begin(), rs_.end());
  columns_ = static_cast<int32_t>(fields_.size());
  signs_.clear();
  for (const auto& field : fields_) {
    signs_.push_back(detail::SignField(*field));
  }
}

}  // namespace varnel::qt
