#include "db/postgres/pg_session.h"

#include "db/db_errors.h"
#include "db/postgres/pg_error.h"

namespace varnel::db::internal {
namespace {

constexpr const char* kSavepoint = "SAVEPOINT varnel_call";
constexpr const char* kReleaseSavepoint = "RELEASE SAVEPOINT varnel_call";
constexpr const char* kUndoSavepoint =
    "ROLLBACK TO SAVEPOINT varnel_call; RELEASE SAVEPOINT varnel_call";
constexpr const char* kLostTransactionNote =
    "The transaction that was open is lost: the server rolled it back.";

bool Succeeded(const PGresult* result) {
  if (result == nullptr) {
    return false;
  }
  const ExecStatusType status = PQresultStatus(result);
  return status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK || status == PGRES_EMPTY_QUERY;
}

// COPY to or from the client is not supported: a statement that starts one
// is ended at once, so the connection stays usable.
void EndCopy(PGconn* connection, const PGresult* result) {
  if (result == nullptr) {
    return;
  }
  const ExecStatusType status = PQresultStatus(result);
  if (status == PGRES_COPY_IN) {
    PQputCopyEnd(connection, "COPY from the client is not supported");
  } else if (status == PGRES_COPY_OUT) {
    char* row = nullptr;
    while (PQgetCopyData(connection, &row, 0) > 0) {
      PQfreemem(row);
    }
  } else {
    return;
  }
  while (PGresult* rest = PQgetResult(connection)) {
    PQclear(rest);
  }
}

// The library's SQL (and the scanner that translates it) reads a backslash in
// '...' as itself. A server or database configured otherwise would read \' as
// a quote that does not end the text, and so let typed text out of its quotes.
bool BackslashesLiteral(const PGconn* connection) {
  const char* setting = PQparameterStatus(connection, "standard_conforming_strings");
  return setting != nullptr && std::string_view(setting) == "on";
}

bool InTransactionBlock(const PGconn* connection) {
  const PGTransactionStatusType status = PQtransactionStatus(connection);
  return status == PQTRANS_INTRANS || status == PQTRANS_INERROR;
}

}  // namespace

PgSession::PgSession(PgConnectParams params) : params_(std::move(params)) {
  std::vector<const char*> keywords;
  std::vector<const char*> values;
  for (size_t i = 0; i < params_.keywords.size(); ++i) {
    keywords.push_back(params_.keywords[i].c_str());
    values.push_back(params_.values[i].c_str());
  }
  keywords.push_back(nullptr);
  values.push_back(nullptr);
  connection_ = PQconnectdbParams(keywords.data(), values.data(), 0);
  if (connection_ == nullptr || PQstatus(connection_) != CONNECTION_OK) {
    DbError error =
        PgError(PgFailure::kRefused, connection_, nullptr, params_.where, params_.password);
    PQfinish(connection_);
    throw error;
  }
  // Notices ("table does not exist, skipping") are not errors; libpq would
  // print them on standard error.
  PQsetNoticeProcessor(
      connection_, [](void*, const char*) {}, nullptr);
  KeepBackslashesLiteral("connecting");
}

void PgSession::KeepBackslashesLiteral(std::string_view doing) {
  if (!BackslashesLiteral(connection_)) {
    Plain("SET standard_conforming_strings = on", doing);
  }
}

PgSession::~PgSession() { PQfinish(connection_); }

void PgSession::EnsureConnected(std::string_view doing) {
  if (PQstatus(connection_) == CONNECTION_OK) {
    KeepBackslashesLiteral(doing);  // a client's own SET may have changed it
    return;
  }
  if (lost_in_transaction_) {
    throw PgError(PgFailure::kLost, connection_, nullptr, doing, params_.password,
                  std::string(kLostTransactionNote) + " Roll it back before going on.");
  }
  PQreset(connection_);
  if (PQstatus(connection_) != CONNECTION_OK) {
    throw PgError(PgFailure::kRefused, connection_, nullptr, params_.where, params_.password,
                  "(The connection had been lost; it could not be opened again for " +
                      std::string(doing) + ".)");
  }
  ++generation_;
  KeepBackslashesLiteral(doing);
}

void PgSession::NoteLoss(bool in_transaction) {
  if (in_transaction && PQstatus(connection_) != CONNECTION_OK) {
    lost_in_transaction_ = true;
  }
}

void PgSession::RaiseFailure(const PGresult* result, std::string_view doing) {
  EndCopy(connection_, result);
  if (PQstatus(connection_) != CONNECTION_OK) {
    throw PgError(PgFailure::kLost, connection_, result, doing, params_.password,
                  lost_in_transaction_ ? kLostTransactionNote : "");
  }
  throw PgError(PgFailure::kStatement, connection_, result, doing, params_.password);
}

PgResult PgSession::Exec(std::string_view sql,
                         const std::vector<std::optional<std::string>>& params,
                         std::string_view doing) {
  std::vector<const char*> values;
  values.reserve(params.size());
  for (const std::optional<std::string>& param : params) {
    values.push_back(param ? param->c_str() : nullptr);
  }
  const std::string text(sql);
  const bool in_transaction = InTransactionBlock(connection_);
  PgResult result(PQexecParams(connection_, text.c_str(), static_cast<int>(values.size()), nullptr,
                               values.data(), nullptr, nullptr, 0));
  if (!Succeeded(result.get())) {
    NoteLoss(in_transaction);
    RaiseFailure(result.get(), doing);
  }
  return result;
}

void PgSession::Plain(const char* sql, std::string_view doing) { Exec(sql, {}, doing); }

// Runs Call, under a savepoint when a transaction is open, so that a failure
// undoes only what Call did.
template <class Call>
auto PgSession::Guarded(std::string_view doing, Call&& call) {
  EnsureConnected(doing);
  if (PQtransactionStatus(connection_) != PQTRANS_INTRANS) {
    return call();
  }
  Plain(kSavepoint, doing);
  try {
    auto result = call();
    Plain(kReleaseSavepoint, doing);
    return result;
  } catch (const VbError&) {
    if (PQstatus(connection_) == CONNECTION_OK && InTransactionBlock(connection_)) {
      PQclear(PQexec(connection_, kUndoSavepoint));
    }
    throw;
  }
}

PgResult PgSession::Run(std::string_view sql, const std::vector<std::optional<std::string>>& params,
                        std::string_view doing) {
  return Guarded(doing, [&] { return Exec(sql, params, doing); });
}

std::vector<PgResult> PgSession::RunAll(
    const std::vector<std::string>& statements,
    const std::vector<std::vector<std::optional<std::string>>>& params, std::string_view doing) {
  return Guarded(doing, [&] {
    std::vector<PgResult> results;
    for (size_t i = 0; i < statements.size(); ++i) {
      results.push_back(Exec(statements[i], params[i], doing));
    }
    return results;
  });
}

PgResult PgSession::Describe(std::string_view sql, std::string_view doing) {
  return Guarded(doing, [&] {
    const std::string text(sql);
    const bool in_transaction = InTransactionBlock(connection_);
    PgResult prepared(PQprepare(connection_, "", text.c_str(), 0, nullptr));
    if (!Succeeded(prepared.get())) {
      NoteLoss(in_transaction);
      RaiseFailure(prepared.get(), doing);
    }
    PgResult described(PQdescribePrepared(connection_, ""));
    if (!Succeeded(described.get())) {
      NoteLoss(in_transaction);
      RaiseFailure(described.get(), doing);
    }
    return described;
  });
}

void PgSession::Begin() {
  EnsureConnected("beginning a transaction");
  Plain("BEGIN", "beginning a transaction");
}

void PgSession::Commit() {
  if (lost_in_transaction_) {
    lost_in_transaction_ = false;
    throw PgError(PgFailure::kLost, connection_, nullptr, "committing the transaction",
                  params_.password, std::string(kLostTransactionNote) + " Nothing of it was kept.");
  }
  EnsureConnected("committing the transaction");
  // COMMIT of a transaction in error ends it as a rollback without failing.
  const bool failed = PQtransactionStatus(connection_) == PQTRANS_INERROR;
  Plain("COMMIT", "committing the transaction");
  if (failed) {
    RaiseProviderError(
        "The transaction could not be committed: a statement of it had failed, so the server "
        "rolled it back.");
  }
}

void PgSession::Rollback() {
  if (lost_in_transaction_) {
    lost_in_transaction_ = false;  // the server already undid it
    return;
  }
  EnsureConnected("rolling back the transaction");
  Plain("ROLLBACK", "rolling back the transaction");
}

bool PgSession::InTransaction() const {
  if (PQstatus(connection_) != CONNECTION_OK) {
    return lost_in_transaction_;
  }
  return InTransactionBlock(connection_);
}

}  // namespace varnel::db::internal
