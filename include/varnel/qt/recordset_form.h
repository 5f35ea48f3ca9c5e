// A form that shows the current row of a RecordsetModel in one editor per
// field, and takes query criteria in query mode.
//
//   varnel::qt::RecordsetForm form(model);   // widgets generated from the fields
//   // or, with the client's own widgets:
//   varnel::qt::RecordsetForm form(model, varnel::qt::RecordsetForm::kBindOnly);
//   form.Bind("Customer", ui->customerEdit);
//
// Editors: line edits with validators for text and numbers, check boxes for
// yes/no, date, date-time and time editors by DateType, the currency sign
// beside the caption; read-only for computed and locked fields and rows. A
// finished edit goes through Modify. In query mode every field takes its
// criterion as text (QueryValue).
#pragma once

#include <QHash>
#include <QWidget>
#include <vector>

#include "varnel/export.h"
#include "varnel/qt/recordset_model.h"

class QFormLayout;
class QLabel;
class QLineEdit;
class QStackedWidget;

VARNEL_API_BEGIN

namespace varnel::qt {

/// Editors bound to the fields of a RecordsetModel's recordset, following its current row.
class RecordsetForm : public QWidget {
  Q_OBJECT

 public:
  /// Whether the form makes its own editors.
  enum Layout {
    kGenerate,  ///< one captioned editor per field, in field order
    kBindOnly,  ///< no editors until Bind is called
  };

  /// A form over Model (not owned; it must outlive the form).
  explicit RecordsetForm(RecordsetModel& Model, Layout Mode = kGenerate, QWidget* Parent = nullptr);

  /// Binds the client's own Editor (a QLineEdit, QCheckBox or QDateTimeEdit
  /// kind) to the field named FieldName; false when there is no such field.
  bool Bind(const QString& FieldName, QWidget* Editor);
  /// The editor of the field named FieldName (its data editor), or nullptr.
  QWidget* Editor(const QString& FieldName) const;
  /// The criteria editor of the field named FieldName in query mode, or nullptr.
  QLineEdit* CriteriaEditor(const QString& FieldName) const;
  /// After a refused operation: marks and focuses the editor of the field Error
  /// names (LastError().Field), its tooltip the reason; nullptr when Error names no
  /// field of the form, or is a cancel or no error.
  QWidget* ShowRefusal(const ErrorInfo& Error);

 public slots:
  /// Shows the current row (or the criteria in query mode) in every editor.
  void Refresh();
  /// Re-reads the captions (after a language switch).
  void Retranslate();

 private:
  struct Binding {
    int32_t column;         // 1-based field index
    QWidget* editor;        // the data editor
    QLineEdit* criteria;    // the query editor (nullptr: the editor takes criteria)
    QStackedWidget* pages;  // generated forms: editor and criteria pages
    QLabel* caption;        // generated forms: the caption
  };

  void Generate();
  void Commit(const Binding& binding);
  void CommitCriteria(const Binding& binding);
  void ShowBinding(const Binding& binding, int32_t row, bool query);
  static void MarkRefused(QWidget* Editor, const ErrorInfo& Error);
  void OnDataChanged(const QModelIndex& TopLeft, const QModelIndex& BottomRight);

  RecordsetModel& model_;
  QFormLayout* layout_ = nullptr;
  std::vector<Binding> bindings_;
  QHash<QString, size_t> by_name_;  // lower-case field name -> binding
};

}  // namespace varnel::qt

VARNEL_API_END
