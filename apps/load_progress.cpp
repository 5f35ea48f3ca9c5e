#include "load_progress.h"

#include <cstdio>

#include "texts.h"

namespace varnel::app {
namespace {

// How often the connection tells the rows read; drawing is rarer still.
constexpr int64_t kRowsPerReport = 1024;

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

LoadProgress::LoadProgress(ClsRecordset& recordset, db::Connection& connection)
    : recordset_(recordset), connection_(connection) {
  connection_.OnRowsRead([this](int64_t rows) { RowsRead(rows); }, kRowsPerReport);
}

LoadProgress::~LoadProgress() { connection_.OnRowsRead(nullptr); }

void LoadProgress::Begin(const std::string& condition) {
  total_ = CountRows(recordset_, condition);  // read before the load is watched
  done_ = 0;
  start_ = last_draw_ = Clock::now();
  drawn_ = false;
  active_ = total_ > 0;
}

void LoadProgress::RowsRead(int64_t rows) {
  if (!active_) {
    return;
  }
  done_ = rows;
  const Clock::time_point now = Clock::now();
  // Short loads draw nothing; long ones are redrawn a few times a second.
  if (now - start_ > std::chrono::milliseconds(300) &&
      now - last_draw_ > std::chrono::milliseconds(100)) {
    Draw();
  }
}

void LoadProgress::Draw() {
  const std::string line = Say(Text::Loading, fmt::arg("table", recordset_.TableName),
                               fmt::arg("done", done_), fmt::arg("total", total_));
  std::fprintf(stderr, "\r%s\033[K", line.c_str());
  std::fflush(stderr);
  drawn_ = true;
  last_draw_ = Clock::now();
}

void LoadProgress::End() {
  if (drawn_) {
    std::fputs("\r\033[K", stderr);  // the line goes once the rows are there
    std::fflush(stderr);
  }
  active_ = false;
  drawn_ = false;
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
