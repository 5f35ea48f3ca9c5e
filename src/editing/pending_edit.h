// What a writer reads of a recordset whose pending edit it saves: the fields,
// the edit status, the rows in memory and the kept rows, each kept row lined
// up with the current fields, and the flag its message procedures hold.
// Nothing else of the recordset's state is reachable through it.
//
//   const PendingEdit edit(recordset);
//   if (edit.Status() == E_Modify) { auto before = edit.SavedValues(); ... }
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "varnel/recordset.h"

namespace varnel::internal {

struct RecordsetState;

class PendingEdit {
 public:
  explicit PendingEdit(const ClsRecordset& recordset);

  // The fields in collection order.
  const std::vector<std::shared_ptr<ClsFields>>& Fields() const;
  Enum_EditStatus Status() const;
  // The edit changes or removes a row the database holds (E_Modify, E_Delete,
  // E_ModifyDelete), so there is a row to compare with the database's.
  bool ChangesLoadedRow() const;
  int32_t Rows() const;
  // Every field's value at row, in field order (Empty outside the store).
  std::vector<Variant> ValuesAt(int32_t row) const;
  // The modified row (0: no snapshot) and its values before the edit, one per
  // current field (Empty for a field added since); nullopt when erased.
  int32_t SavedRow() const;
  std::optional<std::vector<Variant>> SavedValues() const;
  // The row the deleted row stood at (0: none).
  int32_t DeletedRow() const;
  // The deleted row's values, one per current field; nullopt when erased.
  std::optional<std::vector<Variant>> DeletedValues() const;
  // The recordset's SysErrState: the writer's reports hold it as the
  // recordset's own do, so a client callback sees one busy flag.
  bool& ErrorState() const;

 private:
  const RecordsetState& rs_;
};

}  // namespace varnel::internal
