// The connected event sinks of one recordset and the one way to raise an event.
#pragma once

#include <cstdint>
#include <type_traits>
#include <utility>
#include <vector>

#include "messages/last_error.h"
#include "varnel/events.h"

namespace varnel::internal {

class EventSinks {
 public:
  int32_t Advise(ClsRecordsetEvents* sink) {
    sinks_.push_back({++last_cookie_, sink});
    return last_cookie_;
  }

  void Unadvise(int32_t cookie) {
    std::erase_if(sinks_, [cookie](const Entry& e) { return e.cookie == cookie; });
  }

  // Calls OnEvent(id) and then the member on every sink, in connection order.
  // A sink may disconnect itself or others meanwhile: each is looked up again
  // before it is called. By-reference arguments pass from sink to sink.
  template <class... Params, class... Args>
  void Raise(EventDispId id, void (ClsRecordsetEvents::*member)(Params...), Args&&... args) {
    if (sinks_.empty()) {
      return;
    }
    const std::vector<Entry> snapshot = sinks_;
    for (const Entry& entry : snapshot) {
      if (!Connected(entry.cookie)) {
        continue;
      }
      entry.sink->OnEvent(id);
      (entry.sink->*member)(args...);
    }
    (NoteCancel(id, args), ...);
  }

 private:
  // A Before event's Cancel set by a handler is what the thread's last error
  // tells of the operation it stopped.
  template <class Arg>
  static void NoteCancel(EventDispId id, const Arg& arg) {
    if constexpr (std::is_same_v<Arg, bool>) {
      if (arg) {
        RecordReport(K_Cancelled, 0, EventName(id));
      }
    }
  }

  struct Entry {
    int32_t cookie;
    ClsRecordsetEvents* sink;
  };

  bool Connected(int32_t cookie) const {
    for (const Entry& e : sinks_) {
      if (e.cookie == cookie) {
        return true;
      }
    }
    return false;
  }

  std::vector<Entry> sinks_;
  int32_t last_cookie_ = 0;
};

}  // namespace varnel::internal
