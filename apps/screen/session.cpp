#include "session.h"

#include "screen_setup.h"

namespace varnel::screen {

Session::Session(const app::Options& Options, std::shared_ptr<db::Connection> Connection)
    : connection_(std::move(Connection)) {
  app::DefineScreen(Options, connection_, rs_);
  names_ = app::ReadScreenNames(Options, connection_);
  writer_.emplace(rs_, Options.keys);
  const std::vector<std::string> keys = writer_->KeyColumns();
  app::ProtectKeys(rs_, keys);
  if (!Options.table.empty() && !keys.empty()) {
    rs_.OrderByField1 = "[" + keys.front() + "]";  // the library's form of a column name
  }
  reopen_.emplace(rs_);
  locks_.emplace(rs_);
  reopen_cookie_ = rs_.Advise(&*reopen_);
  locks_cookie_ = rs_.Advise(&*locks_);
}

Session::~Session() {
  rs_.Unadvise(locks_cookie_);
  rs_.Unadvise(reopen_cookie_);
  writer_.reset();  // before the recordset it watches
}

}  // namespace varnel::screen
