// One screen on one connection, set up as the console sets it up: the fields
// (from the field-information table or a table's columns), the writer that
// saves rows, the lock rule, and reloading on refresh.
#pragma once

#include <memory>
#include <optional>

#include "load_progress.h"
#include "lock_marks.h"
#include "options.h"
#include "screen_setup.h"
#include "varnel/varnel.h"

namespace varnel::screen {

class Session {
 public:
  // Configures the recordset on Connection (open) as Options say; does not load.
  // Raises VbError or std::runtime_error with a description for the user.
  Session(const app::Options& Options, std::shared_ptr<db::Connection> Connection);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  ClsRecordset& Recordset() { return rs_; }
  db::Connection& Connection() { return *connection_; }
  TableWriter& Writer() { return *writer_; }
  // The fields' display names in both languages (none for --table).
  const app::ScreenNames& Names() const { return names_; }

 private:
  std::shared_ptr<db::Connection> connection_;
  ClsRecordset rs_;
  app::ScreenNames names_;
  std::optional<TableWriter> writer_;
  std::optional<app::ReopenOnRefresh> reopen_;
  std::optional<app::LockMarks> locks_;
  int32_t reopen_cookie_ = 0, locks_cookie_ = 0;
};

}  // namespace varnel::screen
