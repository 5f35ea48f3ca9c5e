// An event sink that records the names of the events it receives.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "varnel/events.h"

namespace varnel::testing {

class EventLog : public ClsRecordsetEvents {
 public:
  void OnEvent(int32_t id) override { names.push_back(EventName(id)); }
  void Clear() { names.clear(); }
  // The recorded names joined by ",".
  std::string Joined() const {
    std::string out;
    for (const std::string& name : names) {
      out += (out.empty() ? "" : ",") + name;
    }
    return out;
  }
  // True when name was recorded.
  bool Saw(const std::string& name) const {
    return std::find(names.begin(), names.end(), name) != names.end();
  }

  std::vector<std::string> names;
};

}  // namespace varnel::testing
