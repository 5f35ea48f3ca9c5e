// The row observers of one recordset and the scoped notices that the row work
// raises through them: a notice announces the change when it is made and
// reports it done when it goes out of scope, so that a failure midway still
// closes every bracket a view has opened.
#pragma once

#include <cstdint>
#include <vector>

#include "varnel/row_observer.h"

namespace varnel::internal {

class RowObservers {
 public:
  int32_t Add(RowObserver* observer);
  void Remove(int32_t cookie);

  // Calls member on every observer, in connection order. An observer that
  // throws is passed over: the row work it watches must not stop halfway.
  template <class... Params, class... Args>
  void Notify(void (RowObserver::*member)(Params...), Args... args) {
    if (entries_.empty()) {
      return;
    }
    const std::vector<Entry> snapshot = entries_;
    for (const Entry& entry : snapshot) {
      if (Connected(entry.cookie)) {
        try {
          (entry.observer->*member)(args...);
        } catch (...) {  // NOLINT(bugprone-empty-catch): see above
        }
      }
    }
  }

 private:
  struct Entry {
    int32_t cookie;
    RowObserver* observer;
  };
  bool Connected(int32_t cookie) const;

  std::vector<Entry> entries_;
  int32_t last_cookie_ = 0;
};

// Rows first..first+count-1 are being inserted for the life of the notice.
class RowsInsertNotice {
 public:
  RowsInsertNotice(RowObservers& observers, int32_t first, int32_t count);
  ~RowsInsertNotice();
  RowsInsertNotice(const RowsInsertNotice&) = delete;
  RowsInsertNotice& operator=(const RowsInsertNotice&) = delete;

 private:
  RowObservers& observers_;
  int32_t first_, count_;
};

// Rows first..first+count-1 are being removed for the life of the notice.
class RowsRemoveNotice {
 public:
  RowsRemoveNotice(RowObservers& observers, int32_t first, int32_t count);
  ~RowsRemoveNotice();
  RowsRemoveNotice(const RowsRemoveNotice&) = delete;
  RowsRemoveNotice& operator=(const RowsRemoveNotice&) = delete;

 private:
  RowObservers& observers_;
  int32_t first_, count_;
};

// Every row is being replaced for the life of the notice.
class RowsResetNotice {
 public:
  explicit RowsResetNotice(RowObservers& observers);
  ~RowsResetNotice();
  RowsResetNotice(const RowsResetNotice&) = delete;
  RowsResetNotice& operator=(const RowsResetNotice&) = delete;

 private:
  RowObservers& observers_;
};

}  // namespace varnel::internal
