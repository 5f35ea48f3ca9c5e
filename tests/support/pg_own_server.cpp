#include "support/pg_own_server.h"

#include <stdio.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <stdexcept>

namespace varnel::testing {
namespace {

std::string Trimmed(std::string text) {
  while (!text.empty() && (text.back() == '\n' || text.back() == ' ')) {
    text.pop_back();
  }
  return text;
}

}  // namespace

PgOwnServer::PgOwnServer() : dir_((parent_.path() / "pg").string()) {
  // The server runs as its own user, which must be able to reach the folder.
  chmod(parent_.path().c_str(), 0711);
  const std::string printed = Run("start");
  connection_string_ = Trimmed(printed.substr(printed.rfind("Provider=")));
  started_ = true;
}

PgOwnServer::~PgOwnServer() {
  if (started_) {
    try {
      Run("stop");
    } catch (const std::exception&) {
      // Nothing more to do: the folder goes with parent_.
    }
  }
}

void PgOwnServer::Kill() { Run("kill"); }

void PgOwnServer::Restart() { Run("restart"); }

std::string PgOwnServer::Run(const std::string& action) const {
  const std::string command =
      std::string("'") + VARNEL_PG_SERVER_SCRIPT + "' " + action + " '" + dir_ + "' 2>&1";
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) {
    throw std::runtime_error("cannot run " + command);
  }
  std::string printed;
  char buffer[512];
  while (fgets(buffer, sizeof(buffer), pipe) != nullptr) {
    printed += buffer;
  }
  const int status = pclose(pipe);
  if (status != 0 || (action == "start" && printed.find("Provider=") == std::string::npos)) {
    throw std::runtime_error("pg-server.sh " + action + " failed: " + Trimmed(printed));
  }
  return printed;
}

}  // namespace varnel::testing
