#include "public/row_observers.h"

#include <algorithm>

#include "recordset/recordset_state.h"

namespace varnel::internal {

int32_t RowObservers::Add(RowObserver* observer) {
  entries_.push_back({++last_cookie_, observer});
  return last_cookie_;
}

void RowObservers::Remove(int32_t cookie) {
  std::erase_if(entries_, [cookie](const Entry& e) { return e.cookie == cookie; });
}

bool RowObservers::Connected(int32_t cookie) const {
  return std::any_of(entries_.begin(), entries_.end(),
                     [cookie](const Entry& e) { return e.cookie == cookie; });
}

RowsInsertNotice::RowsInsertNotice(RowObservers& observers, int32_t first, int32_t count)
    : observers_(observers), first_(first), count_(count) {
  observers_.Notify(&RowObserver::RowsAboutToBeInserted, first_, count_);
}

RowsInsertNotice::~RowsInsertNotice() {
  observers_.Notify(&RowObserver::RowsInserted, first_, count_);
}

RowsRemoveNotice::RowsRemoveNotice(RowObservers& observers, int32_t first, int32_t count)
    : observers_(observers), first_(first), count_(count) {
  observers_.Notify(&RowObserver::RowsAboutToBeRemoved, first_, count_);
}

RowsRemoveNotice::~RowsRemoveNotice() {
  observers_.Notify(&RowObserver::RowsRemoved, first_, count_);
}

RowsResetNotice::RowsResetNotice(RowObservers& observers) : observers_(observers) {
  observers_.Notify(&RowObserver::RowsAboutToBeReset);
}

RowsResetNotice::~RowsResetNotice() { observers_.Notify(&RowObserver::RowsReset); }

}  // namespace varnel::internal

namespace varnel {

int32_t ClsRecordset::AddRowObserver(RowObserver* Observer) {
  return internal::RecordsetAccess::State(*this).row_observers.Add(Observer);
}

void ClsRecordset::RemoveRowObserver(int32_t Cookie) {
  internal::RecordsetAccess::State(*this).row_observers.Remove(Cookie);
}

}  // namespace varnel
