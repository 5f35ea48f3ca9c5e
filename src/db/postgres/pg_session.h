// One libpq connection to a PostgreSQL server, shared by the driver and the
// statements it prepared (a recordset may outlive its Connection, as with
// SQLite). Every call to the server goes through here, which keeps three
// promises:
//   - a statement that fails inside a transaction does not abort it: each call
//     made in a transaction runs under a savepoint, undone when the call fails,
//     so the transaction goes on as it would on SQLite;
//   - a lost connection is reported as such, and the next call reconnects
//     (unless a transaction was open: that one is gone, and only rolling it
//     back is allowed until then);
//   - the password never reaches a message;
//   - the server reads '...' text as the library writes it, a backslash being
//     an ordinary character, whatever the server's or database's default.
#pragma once

#include <libpq-fe.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace varnel::db::internal {

struct PgResultFree {
  void operator()(PGresult* result) const { PQclear(result); }
};
using PgResult = std::unique_ptr<PGresult, PgResultFree>;

// libpq's connection keywords and values, in order.
struct PgConnectParams {
  std::vector<std::string> keywords;
  std::vector<std::string> values;
  std::string password;  // kept to mask it in messages
  std::string where;     // "127.0.0.1:5432, database x, user y" for messages
};

class PgSession {
 public:
  // Connects; raises the provider error (refused) when the server cannot be
  // reached or refuses the login.
  explicit PgSession(PgConnectParams params);
  ~PgSession();
  PgSession(const PgSession&) = delete;
  PgSession& operator=(const PgSession&) = delete;

  // Runs one statement with the texts of Params (nullopt: NULL) bound to $1,
  // $2, ...; returns its result. Raises the provider error when it fails.
  PgResult Run(std::string_view sql, const std::vector<std::optional<std::string>>& params,
               std::string_view doing);
  // Runs the statements in turn, as one call (one savepoint in a transaction).
  // Each is Run with its own parameters; returns their results.
  std::vector<PgResult> RunAll(const std::vector<std::string>& statements,
                               const std::vector<std::vector<std::optional<std::string>>>& params,
                               std::string_view doing);
  // The result columns of Sql without running it.
  PgResult Describe(std::string_view sql, std::string_view doing);

  void Begin();
  void Commit();
  void Rollback();
  // A transaction is open: begun and not yet committed or rolled back (also
  // when the connection was lost meanwhile).
  bool InTransaction() const;

  // Counts the reconnections: names and prepared state read before a change
  // may be stale.
  uint64_t generation() const { return generation_; }

 private:
  template <class Call>
  auto Guarded(std::string_view doing, Call&& call);
  PgResult Exec(std::string_view sql, const std::vector<std::optional<std::string>>& params,
                std::string_view doing);
  void Plain(const char* sql, std::string_view doing);
  void EnsureConnected(std::string_view doing);
  // Makes the server read backslashes in '...' literally (standard_conforming_strings).
  void KeepBackslashesLiteral(std::string_view doing);
  // After a failed call: a connection lost while a transaction was open
  // (In_transaction, as it was before the call) loses that transaction.
  void NoteLoss(bool in_transaction);
  [[noreturn]] void RaiseFailure(const PGresult* result, std::string_view doing);

  PgConnectParams params_;
  PGconn* connection_ = nullptr;
  bool lost_in_transaction_ = false;
  uint64_t generation_ = 0;
};

}  // namespace varnel::db::internal
