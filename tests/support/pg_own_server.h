// A PostgreSQL server of a test's own, for tests that stop it: started (a
// fresh cluster on a free loopback port) through scripts/pg-server.sh when
// made, stopped and thrown away when destroyed.
//
//   PgOwnServer server;                 // raises, with the script's reason, when it cannot start
//   cn->Open(server.ConnectionString());
//   server.Kill();                      // as a crash: every session is cut
//   server.Restart();                   // same port, same data
#pragma once

#include <string>

#include "support/temp_dir.h"

namespace varnel::testing {

class PgOwnServer {
 public:
  PgOwnServer();
  ~PgOwnServer();
  PgOwnServer(const PgOwnServer&) = delete;
  PgOwnServer& operator=(const PgOwnServer&) = delete;

  // "Provider=PostgreSQL;Host=127.0.0.1;Port=...;Database=varnel_test;User ID=varnel;Password="
  const std::string& ConnectionString() const { return connection_string_; }
  void Kill();
  void Restart();

 private:
  // Runs the script's Action on the server's folder; returns what it printed.
  std::string Run(const std::string& action) const;

  TempDir parent_;  // reachable by the server's own user
  std::string dir_;
  std::string connection_string_;
  bool started_ = false;
};

}  // namespace varnel::testing
