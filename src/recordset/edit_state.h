// The edit status of a recordset as one state machine: the operations that
// move it, the table of where each goes, the groups of states the operations
// test, and the promises each state makes about the snapshots, checked by
// AssertValid in debug builds. Every status change of the library goes
// through MoveStatus; nothing else writes the status (the public EditStatus
// setter, which stores what the client gives, is the one exception).
//
// States and what is pending in each:
//
//   E_Nothing       no data source (nothing to open from); edits are refused
//   E_Default       nothing pending; memory holds what the database holds
//   E_Query         query by form: Modify writes QueryValue, rows are untouched
//   E_Modify        row SavedRow differs from the database; SavedValues holds
//                   it as it was (SavedRow 0: no snapshot)
//   E_AddNew        the last row was inserted and is not in the database
//   E_Copy          the last row was copied and is not in the database
//   E_Delete        row DeletedRow left memory; DeletedValues holds it
//   E_ModifyDelete  the modified row then left memory: both snapshots are held
//   E_AddNewDelete  the inserted row left again: nothing to save
//   E_CopyDelete    the copied row left again: nothing to save
//
// Transitions (kTransitions in edit_state.cpp is this table):
//
//   from \ by   Modify   New      Copy     Delete     Undo     Commit  RollBack Discard
//   Default     Modify   s:AddNew s:Copy   Delete     .        Default Default  Default
//   Query       Query    .        .        .          .        .       .        .
//   Modify      Modify   s:AddNew s:Copy   ModifyDel  Default  Default Default  Default
//   Delete      s:Modify s:AddNew s:Copy   s:Delete   Default  Default Default  Default
//   AddNew      AddNew   s:AddNew s:Copy   AddNewDel  Default  Default Default  Default
//   Copy        Copy     s:AddNew s:Copy   CopyDel    Default  Default Default  Default
//   ModifyDel   s:Modify s:AddNew s:Copy   s:Delete   Modify   Default Default  Default
//   AddNewDel   d:Modify s:AddNew s:Copy   Delete     AddNew   Default Default  Default
//   CopyDel     d:Modify s:AddNew s:Copy   Delete     Copy     Default Default  Default
//   Nothing     .        .        .        .          .        .       .        .
//
//   from \ by   EnterQuery LeaveQuery Load     OpenNothing Close
//   any         s:Query    .          Default  Nothing     q:Default
//   Query       s:Query    Default    Default  Nothing     q:Default
//
//   ".": the operation does nothing in that state (it may be refused).
//   s: the pending edit is saved first (the save step, Commit/RollBack/Discard
//      or kept by Defeat); the operation goes on only when the save succeeds.
//   d: the removed unsaved row is dropped first, silently (no EditStatusChange).
//   q: stored silently.
//   Commit: UpdateRecord's client answered E_Succeed (or was not asked);
//   RollBack: it answered E_OtherErr; E_Defeat leaves the status as it is.
//   Discard: UpdateRecord found the recordset Locked or the row not editable.
//   A change of a main Boolean field moves nothing (Modify stays in place).
//   A load that fails with a database error moves nothing.
//   EditStatusChange is raised by every move that changes the value, except
//   the silent ones.
#pragma once

#include <cstdint>
#include <optional>

#include "recordset/recordset_state.h"

namespace varnel::internal {

enum class EditOp : uint8_t {
  kModify,  // a value applied to a row (not a main Boolean field)
  kNewRecord,
  kCopyRecord,
  kDeleteRecord,
  kUndoRecord,
  kCommit,       // UpdateRecord, client answer E_Succeed or not asked
  kRollBack,     // UpdateRecord, client answer E_OtherErr
  kDiscard,      // UpdateRecord found the edit locked or the row not editable
  kEnterQuery,   // NewQuery, RefineQuery
  kLeaveQuery,   // CancelQuery, and a load that gives the criteria back
  kLoad,         // the rows were (or are being) replaced by a load
  kOpenNothing,  // a load found nothing to open from
  kClose,        // CloseDataSource
};

// What runs before the move.
enum class Prelude : uint8_t {
  kNone,
  kSaveFirst,    // the pending edit is saved; the move needs E_Succeed
  kDropRemoved,  // a removed unsaved row is forgotten silently
};

struct EditMove {
  Prelude prelude = Prelude::kNone;
  std::optional<Enum_EditStatus> to;  // nullopt: the operation does nothing here
  bool silent = false;                // stored without EditStatusChange
};

// The table's cell for (from, op).
EditMove PlanMove(Enum_EditStatus from, EditOp op);

// The status that follows `from` by op with the client's answer to the save
// (answer matters for the save only, and only where the client is asked:
// E_Defeat keeps `from`, E_OtherErr rolls back). nullopt when the operation
// does nothing in `from`.
std::optional<Enum_EditStatus> NextStatus(Enum_EditStatus from, EditOp op,
                                          Enum_EditRecord answer = E_Succeed);

// Stores the status that op leads to from the current one, raising
// EditStatusChange when it changed (unless the move is silent). Does nothing
// when the table has no move. REQUIRES the prelude to have run.
void MoveStatus(RecordsetState& rs, EditOp op);

// Runs the kDropRemoved prelude: E_Default without EditStatusChange.
void DropRemovedRow(RecordsetState& rs);

// ---- groups of states ----
// An edit waits to be written (or dropped): everything but Default, Query, Nothing.
bool IsPending(Enum_EditStatus status);
// A row of memory is being edited: E_Modify, E_AddNew, E_Copy.
bool IsRowPending(Enum_EditStatus status);
// An inserted row waits: E_AddNew, E_Copy.
bool IsInsertion(Enum_EditStatus status);
// A deletion that the database must see waits: E_Delete, E_ModifyDelete.
bool IsDeletionToSave(Enum_EditStatus status);
// UpdateRecord asks the client to write it: a pending row or a deletion to save.
bool AsksClient(Enum_EditStatus status);
// A row left memory: E_Delete and the three *Delete states.
bool IsDeletion(Enum_EditStatus status);
// Rows can neither be moved over nor edited: E_Query, E_Nothing.
bool IsIdle(Enum_EditStatus status);

// The row whose change is pending: SavedRow in E_Modify (none without a
// snapshot), the last row in E_AddNew and E_Copy; none in other states.
std::optional<int32_t> PendingRow(const RecordsetState& rs);

// Checks the invariants of the current state (array lengths, snapshot shapes,
// rows in range); does nothing in release builds.
void AssertValid(const RecordsetState& rs);

// Checks the invariants on entry and again on every way out of a scope.
class ValidScope {
 public:
  explicit ValidScope(const RecordsetState& rs) : rs_(rs) { AssertValid(rs_); }
  ~ValidScope() { AssertValid(rs_); }
  ValidScope(const ValidScope&) = delete;
  ValidScope& operator=(const ValidScope&) = delete;

 private:
  const RecordsetState& rs_;
};

}  // namespace varnel::internal
