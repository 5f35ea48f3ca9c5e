#include "load_progress.h"

#include <sqlite3.h>

#include <chrono>
#include <cstdio>

#include "texts.h"

namespace varnel::app {
namespace {

using Clock = std::chrono::steady_clock;

// What is being loaded; touched only by the thread that loads.
struct Counter {
  bool active = false;
  int64_t done = 0;
  int64_t total = 0;
  std::string table;
  Clock::time_point start;
  Clock::time_point last_draw;
  bool drawn = false;
};

Counter& TheCounter() {
  static Counter counter;
  return counter;
}

void Draw(Counter& counter) {
  const std::string line = Say(Text::Loading, fmt::arg("table", counter.table),
                               fmt::arg("done", counter.done), fmt::arg("total", counter.total));
  std::fprintf(stderr, "\r%s\033[K", line.c_str());
  std::fflush(stderr);
  counter.drawn = true;
  counter.last_draw = Clock::now();
}

// Called by SQLite for every row a statement produces.
int OnRow(unsigned, void*, void*, void*) {
  Counter& counter = TheCounter();
  if (!counter.active) {
    return 0;
  }
  ++counter.done;
  if ((counter.done & 1023) == 0) {
    const Clock::time_point now = Clock::now();
    // Short loads draw nothing; long ones are redrawn a few times a second.
    if (now - counter.start > std::chrono::milliseconds(300) &&
        now - counter.last_draw > std::chrono::milliseconds(100)) {
      Draw(counter);
    }
  }
  return 0;
}

int RegisterRowTrace(sqlite3* db, const char**, const sqlite3_api_routines*) {
  sqlite3_trace_v2(db, SQLITE_TRACE_ROW, &OnRow, nullptr);
  return SQLITE_OK;
}

// The number of rows the load will read; 0 when it cannot be counted.
int64_t CountRows(ClsRecordset& rs, const std::string& condition) {
  if (!rs.SFConnection || rs.SFConnection->State() == 0) {
    return 0;
  }
  try {
    db::Recordset count;
    count.Open(
        "SELECT COUNT(*) FROM " + rs.TableName + (condition.empty() ? "" : " WHERE " + condition),
        rs.SFConnection);
    return count.Eof() ? 0 : count.Fields().Item(0).Value().ToLong();
  } catch (const std::exception&) {
    return 0;
  }
}

}  // namespace

void LoadProgress::InstallRowCounter() {
  sqlite3_auto_extension(reinterpret_cast<void (*)(void)>(&RegisterRowTrace));
}

void LoadProgress::Begin(const std::string& condition) {
  Counter& counter = TheCounter();
  counter.total = CountRows(recordset_, condition);
  counter.done = 0;
  counter.table = recordset_.TableName;
  counter.start = counter.last_draw = Clock::now();
  counter.drawn = false;
  counter.active = counter.total > 0;
}

void LoadProgress::End() {
  Counter& counter = TheCounter();
  if (counter.drawn) {
    std::fputs("\r\033[K", stderr);  // the line goes once the rows are there
    std::fflush(stderr);
  }
  counter.active = false;
  counter.drawn = false;
}

void LoadProgress::DataSourceInitUser(const std::string& OutCondition, const std::string&) {
  Begin(OutCondition);
}

void LoadProgress::DataSourceRefreshUser(const std::string& OutCondition, const std::string&) {
  Begin(OutCondition);
}

void LoadProgress::SysDataSourceInit() { End(); }

void LoadProgress::SysDataSourceRefresh() { End(); }

void ReopenOnRefresh::DataSourceRefreshUser(const std::string&, const std::string&) {
  if (recordset_.SFRecordset && recordset_.SFRecordset->State() != 0) {
    recordset_.SFRecordset->Close();
  }
}

}  // namespace varnel::app
