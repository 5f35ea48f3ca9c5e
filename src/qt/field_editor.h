// Editor widgets for one field, shared by the grid's delegate and the form:
// line edits with validators for text and numbers, date, date-time and time
// editors by DateType, check boxes for yes/no. A client's own widget of one
// of these kinds is handled the same way.
#pragma once

#include <QVariant>
#include <QWidget>

#include "varnel/varnel.h"

namespace varnel::qt::detail {

// A new editor for field, owned by parent. with_check_box: a QCheckBox for a
// yes/no field (the form); otherwise yes/no fields get a line edit (unused by the grid).
QWidget* CreateEditor(const ClsFields& field, QWidget* parent, bool with_check_box);

// Shows value (the field's stored value) in editor.
void ShowValue(QWidget* editor, const ClsFields& field, const Variant& value);

// What the editor holds, as the QVariant that RecordsetModel::setData and
// FromQt take: text for line edits, QDate/QTime/QDateTime, bool; a null
// QVariant for a blank date.
QVariant ReadEditor(const QWidget* editor);

// Lets editor say that the user finished a change; receiver's slot is called then.
void OnEditorCommitted(QWidget* editor, QObject* receiver, const std::function<void()>& slot);

// Makes editor read-only (or editable again) in the way its kind allows.
void SetEditorReadOnly(QWidget* editor, bool read_only);

}  // namespace varnel::qt::detail
