#include "varnel/qt/recordset_form.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QStackedWidget>

#include "qt/field_editor.h"
#include "qt/value_convert.h"

namespace varnel::qt {

using detail::ToQString;

RecordsetForm::RecordsetForm(RecordsetModel& Model, Layout Mode, QWidget* Parent)
    : QWidget(Parent), model_(Model) {
  if (Mode == kGenerate) {
    Generate();
  }
  connect(&model_, &RecordsetModel::CurrentRowChanged, this, &RecordsetForm::Refresh);
  connect(&model_, &RecordsetModel::EditStatusChanged, this, &RecordsetForm::Refresh);
  connect(&model_, &RecordsetModel::RowsReloaded, this, &RecordsetForm::Refresh);
  connect(&model_, &QAbstractItemModel::modelReset, this, &RecordsetForm::Refresh);
  connect(&model_, &QAbstractItemModel::dataChanged, this, &RecordsetForm::OnDataChanged);
  Refresh();
}

void RecordsetForm::Generate() {
  layout_ = new QFormLayout(this);
  layout_->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
  ClsRecordset& rs = model_.Recordset();
  for (int32_t column = 1; column <= rs.Count(); ++column) {
    const auto field = rs.Item(column);
    auto* pages = new QStackedWidget(this);
    QWidget* editor = detail::CreateEditor(*field, pages, true);
    auto* criteria = new QLineEdit(pages);
    pages->addWidget(editor);
    pages->addWidget(criteria);
    pages->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    auto* caption = new QLabel(this);
    caption->setBuddy(editor);
    layout_->addRow(caption, pages);
    const QString name = ToQString(field->Name);
    editor->setObjectName(name);
    criteria->setObjectName(name + "_criteria");
    bindings_.push_back({column, editor, criteria, pages, caption});
    by_name_.insert(name.toLower(), bindings_.size() - 1);
    const size_t at = bindings_.size() - 1;
    detail::OnEditorCommitted(editor, this, [this, at] { Commit(bindings_[at]); });
    connect(criteria, &QLineEdit::editingFinished, this,
            [this, at] { CommitCriteria(bindings_[at]); });
  }
  Retranslate();
}

bool RecordsetForm::Bind(const QString& FieldName, QWidget* Editor) {
  const auto field = model_.Recordset().Item(Variant(detail::FromQString(FieldName)));
  if (!field || Editor == nullptr) {
    return false;
  }
  int32_t column = 0;
  for (int32_t i = 1; i <= model_.Recordset().Count(); ++i) {
    if (model_.Recordset().Item(i) == field) {
      column = i;
    }
  }
  bindings_.push_back({column, Editor, nullptr, nullptr, nullptr});
  by_name_.insert(ToQString(field->Name).toLower(), bindings_.size() - 1);
  const size_t at = bindings_.size() - 1;
  detail::OnEditorCommitted(Editor, this, [this, at] {
    if (model_.Recordset().EditStatus() == E_Query) {
      CommitCriteria(bindings_[at]);
    } else {
      Commit(bindings_[at]);
    }
  });
  Refresh();
  return true;
}

QWidget* RecordsetForm::Editor(const QString& FieldName) const {
  const auto found = by_name_.find(FieldName.toLower());
  return found == by_name_.end() ? nullptr : bindings_[*found].editor;
}

QLineEdit* RecordsetForm::CriteriaEditor(const QString& FieldName) const {
  const auto found = by_name_.find(FieldName.toLower());
  return found == by_name_.end() ? nullptr : bindings_[*found].criteria;
}

void RecordsetForm::Retranslate() {
  ClsRecordset& rs = model_.Recordset();
  const int32_t row = rs.AbsolutePosition();
  for (const Binding& binding : bindings_) {
    if (binding.caption == nullptr) {
      continue;
    }
    const auto field = rs.Item(binding.column);
    QString text = detail::Caption(*field);
    if (field->FieldType == F_Currency && row >= 1 && !field->SymbolName.empty()) {
      const Variant sign = field->GetSymbol(row);
      if (!sign.IsBlank()) {
        text += " (" + ToQString(CStr(sign)) + ")";  // the row's currency sign
      }
    }
    binding.caption->setText(text);
  }
}

void RecordsetForm::Refresh() {
  ClsRecordset& rs = model_.Recordset();
  const bool query = rs.EditStatus() == E_Query;
  const int32_t row = rs.AbsolutePosition();
  for (const Binding& binding : bindings_) {
    ShowBinding(binding, row, query);
  }
  Retranslate();
}

void RecordsetForm::ShowBinding(const Binding& binding, int32_t row, bool query) {
  ClsRecordset& rs = model_.Recordset();
  const auto field = rs.Item(binding.column);
  if (binding.pages != nullptr) {
    binding.pages->setCurrentIndex(query ? 1 : 0);
  }
  if (query) {
    QWidget* target = binding.criteria != nullptr ? binding.criteria : binding.editor;
    if (auto* line = qobject_cast<QLineEdit*>(target)) {
      const QSignalBlocker quiet(line);
      line->setText(ToQString(field->QueryValue));
      line->setReadOnly(false);
    }
    return;
  }
  const bool has_row = row >= 1 && row <= rs.Rows();
  detail::ShowValue(binding.editor, *field, has_row ? field->GetValue(row) : Variant());
  const Qt::ItemFlags flags =
      has_row ? model_.flags(model_.index(row - 1, binding.column - 1)) : Qt::ItemFlags();
  detail::SetEditorReadOnly(binding.editor,
                            !(flags & (Qt::ItemIsEditable | Qt::ItemIsUserCheckable)));
  binding.editor->setProperty("refused", false);
  binding.editor->setStyleSheet(QString());
  binding.editor->setToolTip(QString());
}

// What the user typed stays for correcting, marked, with the reason the
// library gave (a dialog said it too, unless the refusal was a silent one).
void RecordsetForm::MarkRefused(QWidget* Editor, const ErrorInfo& Error) {
  Editor->setProperty("refused", true);
  Editor->setStyleSheet("border: 1px solid #c0392b;");
  Editor->setToolTip(ToQString(Error.Description));
}

QWidget* RecordsetForm::ShowRefusal(const ErrorInfo& Error) {
  if (Error.Kind == K_None || Error.Kind == K_Cancelled || Error.Field.empty()) {
    return nullptr;
  }
  QWidget* editor = Editor(ToQString(Error.Field));
  if (editor != nullptr) {
    MarkRefused(editor, Error);
    editor->setFocus();
  }
  return editor;
}

void RecordsetForm::Commit(const Binding& binding) {
  ClsRecordset& rs = model_.Recordset();
  const int32_t row = rs.AbsolutePosition();
  if (row < 1 || row > rs.Rows() || rs.EditStatus() == E_Query) {
    return;
  }
  const QModelIndex cell = model_.index(row - 1, binding.column - 1);
  const QVariant typed = detail::ReadEditor(binding.editor);
  const QVariant stored = cell.data(Qt::EditRole);
  if (typed == stored || (typed.toString().isEmpty() && !stored.isValid())) {
    return;  // nothing changed: no edit starts
  }
  if (!model_.setData(cell, typed, Qt::EditRole)) {
    MarkRefused(binding.editor, LastError());
    return;
  }
  ShowBinding(binding, row, false);
}

void RecordsetForm::CommitCriteria(const Binding& binding) {
  ClsRecordset& rs = model_.Recordset();
  const auto* line = qobject_cast<const QLineEdit*>(binding.criteria != nullptr ? binding.criteria
                                                                                : binding.editor);
  if (rs.EditStatus() != E_Query || line == nullptr) {
    return;
  }
  const std::string text = detail::FromQString(line->text());
  if (text != rs.Item(binding.column)->QueryValue) {
    rs.Modify(Variant(binding.column), Variant(text));
  }
}

void RecordsetForm::OnDataChanged(const QModelIndex& TopLeft, const QModelIndex& BottomRight) {
  ClsRecordset& rs = model_.Recordset();
  const int32_t row = rs.AbsolutePosition();
  if (rs.EditStatus() == E_Query || row - 1 < TopLeft.row() || row - 1 > BottomRight.row()) {
    return;
  }
  for (const Binding& binding : bindings_) {
    if (binding.column - 1 >= TopLeft.column() && binding.column - 1 <= BottomRight.column() &&
        !binding.editor->property("refused").toBool()) {
      ShowBinding(binding, row, false);
    }
  }
}

}  // namespace varnel::qt
