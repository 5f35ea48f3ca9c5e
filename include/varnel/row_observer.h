// Row-level notices for views that mirror a recordset row by row (a table
// model, a list). The fifty events tell a screen what an operation did; these
// tell a view which rows appear, disappear or change, before and after, so it
// can keep its own row numbering in step. Connect with ClsRecordset::AddRowObserver:
//
//   struct Mirror : varnel::RowObserver {
//     void RowsInserted(int32_t First, int32_t Count) override { /* rows First.. are new */ }
//   };
//   Mirror mirror;
//   int32_t cookie = rs.AddRowObserver(&mirror);   // ... rs.RemoveRowObserver(cookie);
//
// Rows are numbered from 1, as everywhere in the recordset. Every "about to"
// notice is followed by its matching notice, even when the operation fails
// midway; the view should then compare its row count with Rows(). Notices are
// raised inside the operation, with change events suspended: an observer reads
// the recordset but must not change it. The observer is not owned.
#pragma once

#include <cstdint>

#include "varnel/export.h"

VARNEL_API_BEGIN

namespace varnel {

/// Receives the recordset's structural row changes. Every member has an empty default body.
class RowObserver {
 public:
  virtual ~RowObserver() = default;
  /// Count rows are about to be inserted so that the first of them becomes row First.
  virtual void RowsAboutToBeInserted(int32_t First, int32_t Count) {
    (void)First;
    (void)Count;
  }
  /// Rows First..First+Count-1 were inserted (new, copy, undo of a delete, roll-back of a delete).
  virtual void RowsInserted(int32_t First, int32_t Count) {
    (void)First;
    (void)Count;
  }
  /// Rows First..First+Count-1 are about to be removed; they can still be read.
  virtual void RowsAboutToBeRemoved(int32_t First, int32_t Count) {
    (void)First;
    (void)Count;
  }
  /// Rows First..First+Count-1 were removed (delete, undo of a new row, roll-back of an insert).
  virtual void RowsRemoved(int32_t First, int32_t Count) {
    (void)First;
    (void)Count;
  }
  /// Every row is about to be replaced (load, refresh, query, close, Rows let).
  virtual void RowsAboutToBeReset() {}
  /// The rows were replaced; Rows() gives the new count.
  virtual void RowsReset() {}
  /// Values of Row changed without a ValueChange event (undo or roll-back of a modification).
  virtual void RowChanged(int32_t Row) { (void)Row; }
};

}  // namespace varnel

VARNEL_API_END
