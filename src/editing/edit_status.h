// The edit status of a recordset as a state machine: which operation moves it
// where, what each state promises about the snapshots, and the checks of
// those promises in debug builds.
//
// States (EditStatus) and what is pending in each:
//
//   E_Nothing       no data source (a failed open); every edit is refused
//   E_Default       nothing pending; memory holds what the database holds
//   E_Query         query by form: Modify writes QueryValue, rows are untouched
//   E_Modify        row SavedRow differs from the database; SavedValues holds
//                   its values as they were (SavedRow 0: no snapshot)
//   E_AddNew        the last row was inserted and is not in the database
//   E_Copy          the last row was copied and is not in the database
//   E_Delete        row DeletedRow was removed from memory; DeletedValues holds it
//   E_ModifyDelete  the modified row was then removed: both snapshots are held
//   E_AddNewDelete  the inserted row was removed again: nothing to save
//   E_CopyDelete    the copied row was removed again: nothing to save
//
// Transitions (the operation in brackets performs it):
//
//   from \ by       Modify     NewRecord  CopyRecord  DeleteRecord    UndoRecord  UpdateRecord
//   E_Default       E_Modify   E_AddNew   E_Copy      E_Delete        -           -
//   E_Modify        -          (save)     (save)      E_ModifyDelete  E_Default   E_Default
//   E_AddNew        -          (save)     (save)      E_AddNewDelete  E_Default   E_Default
//   E_Copy          -          (save)     (save)      E_CopyDelete    E_Default   E_Default
//   E_Delete        (save)     (save)     (save)      (save) E_Delete E_Default   E_Default
//   E_ModifyDelete  (save)     (save)     (save)      (save) E_Delete E_Modify    E_Default
//   E_AddNewDelete  E_Modify*  (save)     (save)      E_Delete        E_AddNew    E_Default
//   E_CopyDelete    E_Modify*  (save)     (save)      E_Delete        E_Copy      E_Default
//
//   (save): UpdateRecord runs first and the operation goes on from E_Default
//   only when it answers E_Succeed. *: the status is reset to E_Default without
//   EditStatusChange before the change is applied. A change of a main Boolean
//   field leaves the status as it is. Modify or DeleteRecord aimed at a row
//   other than the pending one saves the pending edit first, so that one edit
//   never spans two rows.
//
// Query mode (SavedQueryValues holds every field's criterion from entering
// query mode until it ends):
//
//   from            by                            to
//   any             NewQuery, RefineQuery         E_Query, once the pending edit is
//                                                 saved (else unchanged); NewQuery
//                                                 empties the criteria, RefineQuery keeps them
//   E_Query         ExecuteQuery                  as the reload leaves it (E_Default,
//                                                 E_Nothing when it cannot open)
//   E_Query         ExecuteQuery, no condition    E_Query, criteria still saved
//   E_Query         ExecuteQuery cancelled        E_Query, saved criteria dropped
//   E_Query         CancelQuery                   E_Default, criteria given back
//   any             ClearQuery                    as CancelQuery; criteria empty
//
// UpdateRecord ends every pending state in E_Default: committed when the
// client answers E_Succeed, rolled back in memory when it answers E_OtherErr
// (and when the edit is discarded because the recordset is Locked or the
// current row is not editable), kept pending when it answers E_Defeat.
// After a commit or a roll-back the rows in memory are the rows the database
// holds.
//
// SavedValues and DeletedValues hold one value per field and, after them, the
// row's edit mark (a Boolean), so that undoing restores the row as it was,
// its editability included (a changed F_Locked value would otherwise leave
// the mark it set). GetModifyValue and GetDeleteValue read only the values.
#pragma once

#include <cstdint>
#include <optional>

#include "recordset/recordset_state.h"

namespace varnel::internal {

// A deletion is waiting to be saved (or is moot): E_Delete and the three *Delete states.
bool IsDeletionStatus(Enum_EditStatus status);

// The status that DeleteRecord leaves when it deletes a row in `status`.
Enum_EditStatus StatusAfterDelete(Enum_EditStatus status);

// The status under a pending deletion: what undoing the deletion returns to.
Enum_EditStatus StatusUnderDeletion(Enum_EditStatus status);

// The row whose change is pending: SavedRow in E_Modify (none without a
// snapshot), the last row in E_AddNew and E_Copy; none in other states.
std::optional<int32_t> PendingRow(const RecordsetState& rs);

// Checks the invariants above (array lengths, snapshot shapes, rows in
// range); does nothing in release builds.
void AssertValid(const RecordsetState& rs);

}  // namespace varnel::internal
