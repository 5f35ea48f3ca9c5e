#include "varnel/qt/conflict_dialog.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "qt/texts.h"
#include "qt/value_convert.h"

namespace varnel::qt {

using detail::Tr;

namespace {

QString Shown(const Variant& value) {
  return value.IsEmpty() ? QString() : (value.IsNull() ? "Null" : detail::ToQString(CStr(value)));
}

QTableWidget* FieldsTable(const SaveConflict& conflict, QWidget* parent) {
  auto* table = new QTableWidget(static_cast<int>(conflict.Fields.size()), 3, parent);
  table->setObjectName("ConflictFields");
  table->setHorizontalHeaderLabels({Tr("Field"), Tr("You typed"), Tr("The database holds now")});
  table->verticalHeader()->hide();
  table->setEditTriggers(QAbstractItemView::NoEditTriggers);
  for (int i = 0; i < table->rowCount(); ++i) {
    const ConflictField& field = conflict.Fields[static_cast<size_t>(i)];
    const QString columns[] = {detail::ToQString(field.DisplayName), Shown(field.Typed),
                               conflict.KeyLess      ? Tr("(not found)")
                               : conflict.RowDeleted ? Tr("(deleted)")
                                                     : Shown(field.Database)};
    for (int c = 0; c < 3; ++c) {
      auto* item = new QTableWidgetItem(columns[c]);
      if (field.ChangedByOthers || !(field.Typed == field.Database)) {
        QFont bold = item->font();
        bold.setBold(field.ChangedByOthers);
        item->setFont(bold);
      }
      table->setItem(i, c, item);
    }
  }
  table->horizontalHeader()->setStretchLastSection(true);
  table->resizeColumnsToContents();
  return table;
}

}  // namespace

ConflictDialog::ConflictDialog(const SaveConflict& Conflict, QWidget* Parent) : QDialog(Parent) {
  setObjectName("ConflictDialog");
  setWindowTitle(Tr("Someone else changed this row"));
  setWindowModality(Qt::ApplicationModal);
  auto* layout = new QVBoxLayout(this);
  const QString said =
      Conflict.KeyLess      ? Tr("Someone else changed or deleted this row after you loaded it; a "
                                      "table without a key cannot tell which.")
      : Conflict.RowDeleted ? Tr("Someone else deleted this row after you loaded it.")
                            : Tr("Someone else changed this row after you loaded it. "
                                 "Fields they changed are in bold.");
  auto* text = new QLabel(said, this);
  text->setWordWrap(true);
  layout->addWidget(text);
  layout->addWidget(FieldsTable(Conflict, this));
  auto* buttons = new QDialogButtonBox(this);
  buttons->addButton(Button("WriteMine", Tr("Write mine"), kWriteMine),
                     QDialogButtonBox::AcceptRole);
  buttons->addButton(Button("TakeTheirs", Tr("Take theirs"), kTakeTheirs),
                     QDialogButtonBox::DestructiveRole);
  buttons->addButton(Button("KeepEditing", Tr("Keep editing"), kKeepEditing),
                     QDialogButtonBox::RejectRole);
  layout->addWidget(buttons);
  resize(560, 320);
}

QPushButton* ConflictDialog::Button(const char* name, const QString& text, Choice choice) {
  auto* button = new QPushButton(text, this);
  button->setObjectName(name);
  connect(button, &QPushButton::clicked, this, [this, choice] {
    chosen_ = choice;
    done(choice == kKeepEditing ? QDialog::Rejected : QDialog::Accepted);
  });
  return button;
}

Enum_EditRecord ConflictDialog::Resolve(TableWriter& Writer, QWidget* Parent) {
  const std::optional<SaveConflict> conflict = Writer.PendingConflict();
  if (!conflict) {
    return E_Defeat;
  }
  ConflictDialog dialog(*conflict, Parent);
  dialog.exec();
  switch (dialog.Chosen()) {
    case kWriteMine:
      return Writer.ResolveKeepMine();
    case kTakeTheirs:
      return Writer.ResolveTakeTheirs();
    default:
      return E_Defeat;  // the edit stays pending, as typed
  }
}

}  // namespace varnel::qt
