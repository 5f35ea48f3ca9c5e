#include "recordset/edit_state.h"

#include <array>
#include <cassert>

#include "fields/field_access.h"

namespace varnel::internal {
namespace {

constexpr size_t kStates = 10;  // E_Default..E_CopyDelete, then E_Nothing
constexpr size_t kOps = static_cast<size_t>(EditOp::kClose) + 1;

size_t StateIndex(Enum_EditStatus status) {
  if (status >= E_Default && status <= E_CopyDelete) {
    return static_cast<size_t>(status);
  }
  return kStates - 1;  // E_Nothing, and any value a client stored
}

// Cell spellings of the table in edit_state.h.
constexpr EditMove No = {Prelude::kNone, std::nullopt, false};
constexpr EditMove To(Enum_EditStatus to) { return {Prelude::kNone, to, false}; }
constexpr EditMove Saved(Enum_EditStatus to) { return {Prelude::kSaveFirst, to, false}; }
constexpr EditMove Dropped(Enum_EditStatus to) { return {Prelude::kDropRemoved, to, false}; }
constexpr EditMove Quietly(Enum_EditStatus to) { return {Prelude::kNone, to, true}; }

using Row = std::array<EditMove, kOps>;

// Columns: Modify, New, Copy, Delete, Undo, Commit, RollBack, Discard,
//          EnterQuery, LeaveQuery, Load, OpenNothing, Close.
constexpr std::array<Row, kStates> kTransitions = {{
    /* E_Default */
    {To(E_Modify), Saved(E_AddNew), Saved(E_Copy), To(E_Delete), No, To(E_Default), To(E_Default),
     To(E_Default), Saved(E_Query), No, To(E_Default), To(E_Nothing), Quietly(E_Default)},
    /* E_Query */
    {To(E_Query), No, No, No, No, No, No, No, Saved(E_Query), To(E_Default), To(E_Default),
     To(E_Nothing), Quietly(E_Default)},
    /* E_Modify */
    {To(E_Modify), Saved(E_AddNew), Saved(E_Copy), To(E_ModifyDelete), To(E_Default), To(E_Default),
     To(E_Default), To(E_Default), Saved(E_Query), No, To(E_Default), To(E_Nothing),
     Quietly(E_Default)},
    /* E_Delete */
    {Saved(E_Modify), Saved(E_AddNew), Saved(E_Copy), Saved(E_Delete), To(E_Default), To(E_Default),
     To(E_Default), To(E_Default), Saved(E_Query), No, To(E_Default), To(E_Nothing),
     Quietly(E_Default)},
    /* E_AddNew */
    {To(E_AddNew), Saved(E_AddNew), Saved(E_Copy), To(E_AddNewDelete), To(E_Default), To(E_Default),
     To(E_Default), To(E_Default), Saved(E_Query), No, To(E_Default), To(E_Nothing),
     Quietly(E_Default)},
    /* E_Copy */
    {To(E_Copy), Saved(E_AddNew), Saved(E_Copy), To(E_CopyDelete), To(E_Default), To(E_Default),
     To(E_Default), To(E_Default), Saved(E_Query), No, To(E_Default), To(E_Nothing),
     Quietly(E_Default)},
    /* E_ModifyDelete */
    {Saved(E_Modify), Saved(E_AddNew), Saved(E_Copy), Saved(E_Delete), To(E_Modify), To(E_Default),
     To(E_Default), To(E_Default), Saved(E_Query), No, To(E_Default), To(E_Nothing),
     Quietly(E_Default)},
    /* E_AddNewDelete */
    {Dropped(E_Modify), Saved(E_AddNew), Saved(E_Copy), To(E_Delete), To(E_AddNew), To(E_Default),
     To(E_Default), To(E_Default), Saved(E_Query), No, To(E_Default), To(E_Nothing),
     Quietly(E_Default)},
    /* E_CopyDelete */
    {Dropped(E_Modify), Saved(E_AddNew), Saved(E_Copy), To(E_Delete), To(E_Copy), To(E_Default),
     To(E_Default), To(E_Default), Saved(E_Query), No, To(E_Default), To(E_Nothing),
     Quietly(E_Default)},
    /* E_Nothing */
    {No, No, No, No, No, No, No, No, Saved(E_Query), No, To(E_Default), To(E_Nothing),
     Quietly(E_Default)},
}};

}  // namespace

EditMove PlanMove(Enum_EditStatus from, EditOp op) {
  return kTransitions[StateIndex(from)][static_cast<size_t>(op)];
}

std::optional<Enum_EditStatus> NextStatus(Enum_EditStatus from, EditOp op, Enum_EditRecord answer) {
  if (!AsksClient(from)) {
    answer = E_Succeed;  // nobody was asked: the save goes through
  }
  if (op == EditOp::kCommit && answer == E_OtherErr) {
    op = EditOp::kRollBack;
  } else if ((op == EditOp::kCommit || op == EditOp::kRollBack) && answer != E_Succeed &&
             answer != E_OtherErr) {
    return PlanMove(from, op).to ? std::optional<Enum_EditStatus>(from) : std::nullopt;
  }
  return PlanMove(from, op).to;
}

void MoveStatus(RecordsetState& rs, EditOp op) {
  const EditMove move = PlanMove(rs.edit_status, op);
  if (!move.to) {
    return;
  }
  if (move.silent) {
    rs.edit_status = *move.to;
  } else {
    rs.SetEditStatusValue(*move.to);
  }
}

void DropRemovedRow(RecordsetState& rs) {
  assert(PlanMove(rs.edit_status, EditOp::kModify).prelude == Prelude::kDropRemoved);
  rs.edit_status = E_Default;
}

bool IsPending(Enum_EditStatus status) {
  return status != E_Default && status != E_Query && status != E_Nothing;
}

bool IsRowPending(Enum_EditStatus status) { return status == E_Modify || IsInsertion(status); }

bool IsInsertion(Enum_EditStatus status) { return status == E_AddNew || status == E_Copy; }

bool IsDeletionToSave(Enum_EditStatus status) {
  return status == E_Delete || status == E_ModifyDelete;
}

bool AsksClient(Enum_EditStatus status) {
  return IsRowPending(status) || IsDeletionToSave(status);
}

bool IsDeletion(Enum_EditStatus status) {
  return IsDeletionToSave(status) || status == E_AddNewDelete || status == E_CopyDelete;
}

bool IsIdle(Enum_EditStatus status) { return status == E_Query || status == E_Nothing; }

std::optional<int32_t> PendingRow(const RecordsetState& rs) {
  if (rs.edit_status == E_Modify && rs.saved_row > 0 && rs.saved_values) {
    return rs.saved_row;
  }
  if (IsInsertion(rs.edit_status) && rs.Rows() > 0) {
    return rs.Rows();
  }
  return std::nullopt;
}

void AssertValid([[maybe_unused]] const RecordsetState& rs) {
#ifndef NDEBUG
  const int32_t rows = rs.Rows();
  assert(rs.edit_marks.size() == rs.select_marks.size());
  assert(rs.keys.size() == rs.fields.size());
  for (const auto& field : rs.fields) {
    const size_t length = FieldAccess::Values(*field).size();
    assert(length == static_cast<size_t>(rows) + 1 || (rows == 0 && length <= 1));
  }
  const size_t count = rs.fields.size();
  assert(!rs.saved_values || rs.saved_values->size() == count + 1);
  assert(!rs.deleted_values || rs.deleted_values->size() == count + 1);
  const Enum_EditStatus status = rs.edit_status;
  if (status == E_Modify) {
    assert(rs.saved_row >= 0 && rs.saved_row <= rows);
  }
  if (IsDeletion(status)) {
    assert(!rs.deleted_values || (rs.deleted_row >= 1 && rs.deleted_row <= rows + 1));
  }
  if (status == E_ModifyDelete) {
    assert(rs.saved_row == 0 || rs.saved_row == rs.deleted_row);
  }
#endif
}

}  // namespace varnel::internal
