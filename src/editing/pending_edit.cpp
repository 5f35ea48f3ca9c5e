#include "editing/pending_edit.h"

#include "recordset/edit_state.h"
#include "recordset/recordset_state.h"
#include "recordset/row_store.h"

namespace varnel::internal {
namespace {

std::optional<std::vector<Variant>> LinedUp(const RecordsetState& rs,
                                            const std::optional<RowSnapshot>& kept) {
  if (!kept) {
    return std::nullopt;
  }
  std::vector<Variant> values;
  values.reserve(rs.fields.size());
  for (size_t i = 0; i < rs.fields.size(); ++i) {
    values.push_back(kept->ValueOf(*rs.fields[i], i).value_or(Variant()));
  }
  return values;
}

}  // namespace

PendingEdit::PendingEdit(const ClsRecordset& recordset) : rs_(RecordsetAccess::State(recordset)) {}

const std::vector<std::shared_ptr<ClsFields>>& PendingEdit::Fields() const { return rs_.fields; }

Enum_EditStatus PendingEdit::Status() const { return rs_.edit_status; }

bool PendingEdit::ChangesLoadedRow() const {
  return rs_.edit_status == E_Modify || IsDeletionToSave(rs_.edit_status);
}

int32_t PendingEdit::Rows() const { return rs_.Rows(); }

std::vector<Variant> PendingEdit::ValuesAt(int32_t row) const { return RowValues(rs_, row); }

int32_t PendingEdit::SavedRow() const { return rs_.saved_row; }

std::optional<std::vector<Variant>> PendingEdit::SavedValues() const {
  return LinedUp(rs_, rs_.saved_values);
}

int32_t PendingEdit::DeletedRow() const { return rs_.deleted_row; }

std::optional<std::vector<Variant>> PendingEdit::DeletedValues() const {
  return LinedUp(rs_, rs_.deleted_values);
}

bool& PendingEdit::ErrorState() const { return rs_.self.SysErrState; }

}  // namespace varnel::internal
