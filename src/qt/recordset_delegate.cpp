#include "qt/recordset_delegate.h"

#include "qt/field_editor.h"
#include "varnel/qt/recordset_model.h"

namespace varnel::qt::detail {
namespace {

std::shared_ptr<ClsFields> FieldOf(const QModelIndex& index) {
  const auto* model = qobject_cast<const RecordsetModel*>(index.model());
  return model == nullptr ? nullptr : model->Recordset().Item(index.column() + 1);
}

}  // namespace

QWidget* RecordsetDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                         const QModelIndex& index) const {
  const auto field = FieldOf(index);
  if (!field) {
    return QStyledItemDelegate::createEditor(parent, option, index);
  }
  QWidget* editor = CreateEditor(*field, parent, false);
  editor->setAutoFillBackground(true);
  return editor;
}

void RecordsetDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
  const auto field = FieldOf(index);
  if (!field) {
    QStyledItemDelegate::setEditorData(editor, index);
    return;
  }
  ShowValue(editor, *field, index.data(RecordsetModel::VariantRole).value<Variant>());
}

void RecordsetDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                     const QModelIndex& index) const {
  const auto field = FieldOf(index);
  if (!field) {
    QStyledItemDelegate::setModelData(editor, model, index);
    return;
  }
  const QVariant typed = ReadEditor(editor);
  // Leaving an editor unchanged is not an edit: it must not start one.
  if (typed == index.data(Qt::EditRole) ||
      (typed.toString().isEmpty() && !index.data(Qt::EditRole).isValid())) {
    return;
  }
  model->setData(index, typed, Qt::EditRole);
}

}  // namespace varnel::qt::detail
