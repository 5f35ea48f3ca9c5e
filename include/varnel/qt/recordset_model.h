// A Qt table model over a ClsRecordset: one column per field, one row per
// recordset row, read straight from the fields (the model keeps no copy).
//
//   varnel::qt::RecordsetModel model(rs);
//   QTableView view;
//   view.setModel(&model);
//
// Edits go through Modify, so the recordset's events, FormatValue and its
// read-only rules apply; rows inserted and removed by new, copy, delete, undo
// and roll-backs are announced row by row, loads as a reset. Model row r is
// recordset row r + 1.
#pragma once

#include <QAbstractTableModel>
#include <cstdint>
#include <memory>
#include <vector>

#include "varnel/export.h"
#include "varnel/varnel.h"

VARNEL_API_BEGIN

namespace varnel::qt {

/// A QAbstractTableModel that shows and edits a ClsRecordset in place.
class RecordsetModel : public QAbstractTableModel, private ClsRecordsetEvents, private RowObserver {
  Q_OBJECT

 public:
  /// Custom data roles.
  enum Role {
    /// The recordset's Variant of the cell, as a QVariant holding varnel::Variant.
    VariantRole = Qt::UserRole + 1,
  };

  /// Shows Recordset; REQUIRES it outlives the model. Connects to its events and rows.
  explicit RecordsetModel(ClsRecordset& Recordset, QObject* Parent = nullptr);
  ~RecordsetModel() override;

  /// The recordset shown.
  ClsRecordset& Recordset() const { return rs_; }

  /// The cell at 0-based Row and Column; invalid outside the rows and fields the views know.
  QModelIndex index(int Row, int Column, const QModelIndex& Parent = QModelIndex()) const override;
  /// Rows of the recordset (0 for a child index).
  int rowCount(const QModelIndex& Parent = QModelIndex()) const override;
  /// Fields of the recordset (0 for a child index).
  int columnCount(const QModelIndex& Parent = QModelIndex()) const override;
  /// Display text by the field's kind, the natural Qt type for EditRole, check
  /// state for Boolean fields, right alignment for numbers, VariantRole.
  QVariant data(const QModelIndex& Index, int Role = Qt::DisplayRole) const override;
  /// Moves to the row (saving a pending edit) and changes the cell through
  /// Modify; false when the move or the change was refused (the user was told why).
  bool setData(const QModelIndex& Index, const QVariant& Value, int Role = Qt::EditRole) override;
  /// Editable only where the field's Edit, computed and lock rules and GetEdit(row) allow.
  Qt::ItemFlags flags(const QModelIndex& Index) const override;
  /// Columns: the field's DisplayName (else Name). Rows: the row number with a
  /// mark of its state (current, modified, new, copied, deletion pending, locked).
  QVariant headerData(int Section, Qt::Orientation Orientation,
                      int Role = Qt::DisplayRole) const override;

  /// The state mark of a 1-based row as the vertical header shows it ("" for none).
  QString RowMark(int32_t Row) const;
  /// True when a 1-based row counts as selected: its mark in S_Multi, else the current row.
  bool RowIsSelected(int32_t Row) const;
  /// The state of a 1-based row in words, in the thread's UI language.
  QString RowStateText(int32_t Row) const;

  /// True while the recordset is inserting, removing or replacing rows: views
  /// must not move the recordset then.
  bool ChangingRows() const { return bracket_ > 0; }

  /// Re-reads the headers (after a language switch).
  void RetranslateHeaders();

 signals:
  /// The recordset's current row moved (1-based, 0 for none).
  void CurrentRowChanged(int Row);
  /// The edit status changed.
  void EditStatusChanged();
  /// The selection marks changed (ChangeSelectRows).
  void SelectionChanged();
  /// A load, refresh or query replaced the rows.
  void RowsReloaded();
  /// Values changed (totals may have moved).
  void ValuesChanged();

 private:
  // ClsRecordsetEvents
  void OnEvent(int32_t DispId) override;
  void ValueChange(int32_t Row, int32_t Col) override;
  void SymbolChange(int32_t Row, int32_t Col) override;
  void EditStatusChange() override;
  void RecordPointerChange() override;
  void ChangeSelectRows() override;
  // RowObserver
  void RowsAboutToBeInserted(int32_t First, int32_t Count) override;
  void RowsInserted(int32_t First, int32_t Count) override;
  void RowsAboutToBeRemoved(int32_t First, int32_t Count) override;
  void RowsRemoved(int32_t First, int32_t Count) override;
  void RowsAboutToBeReset() override;
  void RowsReset() override;
  void RowChanged(int32_t Row) override;

  void RowHeaderChanged(int32_t Row);
  void WholeRowChanged(int32_t Row);
  void CatchUp();     // a change of the row count that came without a notice
  void TakeFields();  // fields_ := the recordset's fields, in collection order
  // Where the rows are stored: the same after a load only when the rows it
  // replaced were put back (it failed or was cancelled).
  const void* RowsMark() const;

  ClsRecordset& rs_;
  std::vector<std::shared_ptr<ClsFields>> fields_;  // by column: no lookup per cell
  std::vector<const ClsFields*> signs_;  // by column: the field holding the currency sign
  int32_t cookie_ = 0;
  int32_t observer_cookie_ = 0;
  int32_t rows_ = 0;            // the row count the views know
  int32_t columns_ = 0;         // the field count the views know
  int32_t bracket_ = 0;         // > 0 between a begin and its end
  int32_t current_ = 0;         // the current row the header marks
  bool reset_pending_ = false;  // a load is replacing the rows: cells show nothing meanwhile
  bool reloaded_ = false;       // the views were reset for new rows
  const void* rows_before_reset_ = nullptr;
};

}  // namespace varnel::qt

Q_DECLARE_METATYPE(varnel::Variant)

VARNEL_API_END
