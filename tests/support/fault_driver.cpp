#include "support/fault_driver.h"

#include <stdexcept>
#include <utility>

#include "db/db_errors.h"
#include "db/driver.h"
#include "db/providers.h"

namespace varnel::testing {

using db::internal::DbError;
using db::internal::DbFailure;
using db::internal::Driver;

struct FaultScope::State {
  Fault fault = Fault::kNone;
  int countdown = 0;  // statements until the fault fires
  bool dropped = false;
  int fired = 0;
  db::internal::DriverWrapper previous;
};

namespace {

[[noreturn]] void RaiseLost() {
  throw DbError("server closed the connection unexpectedly (injected)", DbFailure::kConnectionLost);
}

class FaultDriver final : public Driver {
 public:
  FaultDriver(std::unique_ptr<Driver> real, std::shared_ptr<FaultScope::State> state)
      : real_(std::move(real)), state_(std::move(state)) {}

  int64_t Execute(std::string_view sql, const std::vector<Variant>& params) override {
    Statement();
    return real_->Execute(sql, params);
  }
  std::unique_ptr<db::internal::Statement> Prepare(std::string_view sql) override {
    Reachable();
    return real_->Prepare(sql);
  }
  std::unique_ptr<db::internal::Statement> PrepareBound(
      std::string_view sql, const std::vector<Variant>& params) override {
    Reachable();
    return real_->PrepareBound(sql, params);
  }
  void BeginTransaction() override {
    Reachable();
    real_->BeginTransaction();
  }
  void CommitTransaction() override;
  void RollbackTransaction() override {
    if (!state_->dropped) {
      real_->RollbackTransaction();
    }
  }
  bool InTransaction() const override { return !state_->dropped && real_->InTransaction(); }
  bool TextHoldsNul() const override { return real_->TextHoldsNul(); }
  db::internal::Dialect GetDialect() const override { return real_->GetDialect(); }
  db::internal::TableCatalog& Catalog() override { return real_->Catalog(); }
  db::internal::SqlTranslator* Translator() override { return real_->Translator(); }

 private:
  void Reachable() const {
    if (state_->dropped) {
      RaiseLost();
    }
  }
  // A dropped connection loses its transaction: the server rolls it back.
  void Drop() {
    if (real_->InTransaction()) {
      real_->RollbackTransaction();
    }
    state_->dropped = true;
    RaiseLost();
  }
  void Statement();

  std::unique_ptr<Driver> real_;
  std::shared_ptr<FaultScope::State> state_;
};

void FaultDriver::Statement() {
  Reachable();
  const Fault fault = state_->fault;
  if (fault != Fault::kStatement && fault != Fault::kDropConnection &&
      fault != Fault::kUnexpected) {
    return;
  }
  if (--state_->countdown > 0) {
    return;
  }
  state_->fault = Fault::kNone;
  ++state_->fired;
  if (fault == Fault::kStatement) {
    throw DbError("database is locked (injected)", DbFailure::kBusy);
  }
  if (fault == Fault::kUnexpected) {
    throw std::runtime_error("injected: not a database error");
  }
  Drop();
}

void FaultDriver::CommitTransaction() {
  Reachable();
  const Fault fault = state_->fault;
  if (fault == Fault::kCommit || fault == Fault::kCommitLost) {
    state_->fault = Fault::kNone;
    ++state_->fired;
    if (fault == Fault::kCommit) {
      throw DbError("database or disk is full (injected)", DbFailure::kDiskFull);
    }
    real_->CommitTransaction();
    state_->dropped = true;
    RaiseLost();
  }
  real_->CommitTransaction();
}

}  // namespace

FaultScope::FaultScope() : state_(std::make_shared<State>()) {
  std::weak_ptr<State> weak = state_;
  state_->previous = db::internal::SetDriverWrapper(
      [weak](std::unique_ptr<Driver> real) -> std::unique_ptr<Driver> {
        if (auto state = weak.lock()) {
          return std::make_unique<FaultDriver>(std::move(real), state);
        }
        return real;
      });
}

FaultScope::~FaultScope() { db::internal::SetDriverWrapper(std::move(state_->previous)); }

void FaultScope::Arm(Fault fault, int nth) {
  state_->fault = fault;
  state_->countdown = nth;
}

void FaultScope::Disarm() {
  state_->fault = Fault::kNone;
  state_->dropped = false;
}

int FaultScope::fired() const { return state_->fired; }

}  // namespace varnel::testing
