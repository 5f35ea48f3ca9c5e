#include <gtest/gtest.h>

#include <functional>
#include <set>

#include "recordset/recordset_state.h"
#include "support/event_log.h"
#include "varnel/varnel.h"

namespace varnel {
namespace {

TEST(EventCatalogue, FiftyDistinctNamesByNumber) {
  std::string named;  // a few by number, and none outside 1..50
  for (const int32_t id : {1, 3, 8, 22, 33, 34, 43, 49, 50, 0, 51, -1}) {
    named += std::to_string(id) + "=" + EventName(id) + " ";
  }
  EXPECT_EQ(named,
            "1=ValueChange 3=ValueQueryChange 8=UserUpdateRecord 22=ModifyBefore "
            "33=RecordPointerChange 34=MainFieldChange 43=SysModifyAfter 49=SystemTime "
            "50=RecordPointerChange2 0= 51= -1= ");
  std::set<std::string> names;
  for (int32_t id = 1; id <= 50; ++id) {
    ASSERT_FALSE(EventName(id).empty()) << id;
    names.insert(EventName(id));
  }
  EXPECT_EQ(names.size(), 50u);
}

// Records "<sink>:<what>" into a shared trace.
struct TracingSink : ClsRecordsetEvents {
  TracingSink(std::string name, std::vector<std::string>& trace)
      : name(std::move(name)), trace(trace) {}
  void OnEvent(int32_t id) override { trace.push_back(name + ":OnEvent " + std::to_string(id)); }
  void ValueChange(int32_t, int32_t) override {
    trace.push_back(name + ":ValueChange");
    if (on_value_change) {
      on_value_change();
    }
  }
  void MoveRecordBefore(bool& Cancel) override {
    trace.push_back(name + ":MoveRecordBefore " + (Cancel ? "true" : "false"));
    Cancel = Cancel || cancels;
  }

  std::string name;
  std::vector<std::string>& trace;
  std::function<void()> on_value_change;
  bool cancels = false;
};

class EventRaising : public ::testing::Test {
 protected:
  void SetUp() override {
    field = rs.Add("F");
    rs.Rows(1);
  }
  void Change() { field->SetValue(Variant(++counter), 1); }

  ClsRecordset rs;
  std::shared_ptr<ClsFields> field;
  std::vector<std::string> trace;
  int32_t counter = 0;
};

// Every sink hears OnEvent, then the member, in connection order; a cancel
// passes on; a sink may unadvise itself and others during an event; an
// unadvised sink hears nothing.
TEST_F(EventRaising, SinksHearOnEventThenTheMemberInOrderAndMayUnadviseDuringAnEvent) {
  TracingSink a("a", trace), b("b", trace), c("c", trace);
  const int32_t cookie_a = rs.Advise(&a);
  rs.Advise(&b);
  const int32_t cookie_c = rs.Advise(&c);
  a.on_value_change = [&] {
    rs.Unadvise(cookie_a);
    rs.Unadvise(cookie_c);
  };
  b.cancels = true;  // a cancel passes on from sink to sink
  bool cancel = false;
  internal::RecordsetAccess::State(rs).Raise(Ev_MoveRecordBefore,
                                             &ClsRecordsetEvents::MoveRecordBefore, cancel);
  EXPECT_TRUE(cancel);
  EXPECT_EQ(trace[1], "a:MoveRecordBefore false");
  EXPECT_EQ(trace[3], "b:MoveRecordBefore false");
  EXPECT_EQ(trace[5], "c:MoveRecordBefore true");
  trace.clear();
  Change();
  EXPECT_EQ(trace, (std::vector<std::string>{"a:OnEvent 1", "a:ValueChange", "b:OnEvent 1",
                                             "b:ValueChange"}));
  trace.clear();
  EXPECT_EQ(rs.Advise(nullptr), 0);
  Change();
  EXPECT_EQ(trace, (std::vector<std::string>{"b:OnEvent 1", "b:ValueChange"}));
}

TEST_F(EventRaising, LockedAndEditStatusAnnounceOnlyAChange) {
  testing::EventLog log;
  rs.Advise(&log);
  rs.Locked(false);
  rs.Locked(true);
  rs.Locked(true);
  EXPECT_TRUE(rs.Locked());
  EXPECT_EQ(log.Joined(), "RecordPointerChange");
  log.Clear();
  rs.EditStatus(E_Default);
  rs.EditStatus(E_Modify);
  rs.EditStatus(E_Modify);
  EXPECT_EQ(rs.EditStatus(), E_Modify);
  EXPECT_EQ(log.Joined(), "EditStatusChange");
}

}  // namespace
}  // namespace varnel
