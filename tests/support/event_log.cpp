#include "event_log.h"

#include <algorithm>

namespace varnel::testing {

std::string EventLog::Joined() const {
  std::string out;
  for (const std::string& name : names) {
    if (!out.empty()) {
      out += ",";
    }
    out += name;
  }
  return out;
}

bool EventLog::Saw(const std::string& name) const {
  return std::find(names.begin(), names.end(), name) != names.end();
}

}  // namespace varnel::testing
