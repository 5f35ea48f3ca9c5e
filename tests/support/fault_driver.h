// Faults injected into the real database drivers: while a FaultScope lives,
// every connection opened gets its driver (SQLite's or PostgreSQL's) wrapped,
// and an armed fault fires at the chosen point, as the database would fail
// there. Nothing is mocked: every call that does not fail reaches the database.
//
//   FaultScope faults;                            // before the connection opens
//   faults.Arm(Fault::kCommitLost);               // the next commit is lost
//   rs.UpdateRecord();                            // E_Defeat, edit kept
//   faults.Disarm();                              // the database is back
#pragma once

#include <memory>

namespace varnel::testing {

enum class Fault {
  kNone,
  kStatement,       // the Nth statement is refused (the database is busy)
  kCommit,          // COMMIT is refused (disk full); the transaction stays to roll back
  kCommitLost,      // COMMIT goes through, then the connection drops: outcome unknown
  kDropConnection,  // the connection drops at the Nth statement; its transaction is lost
  kUnexpected,      // the Nth statement throws something that is no database error
};

class FaultScope {
 public:
  FaultScope();   // wraps every driver opened from now on
  ~FaultScope();  // drivers opened from now on are not wrapped
  FaultScope(const FaultScope&) = delete;
  FaultScope& operator=(const FaultScope&) = delete;

  // Fires Fault once, at the Nth statement counted from now (kStatement,
  // kDropConnection, kUnexpected) or at the next commit.
  void Arm(Fault fault, int nth = 1);
  // No fault any more; a dropped connection works again.
  void Disarm();
  // How many faults fired since the scope began.
  int fired() const;

  struct State;

 private:
  std::shared_ptr<State> state_;
};

}  // namespace varnel::testing
