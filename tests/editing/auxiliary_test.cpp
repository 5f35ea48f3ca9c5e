#include <cmath>

#include "editing/order_screen.h"

namespace varnel::testing {
namespace {

using RecordAuxiliary = OrderScreen;

class Clock : public ClsRecordsetEvents {
 public:
  void SystemTime(Date& SysTime) override {
    if (replace) {
      SysTime = time;
    }
  }
  bool replace = true;
  Date time{37747.0 + 52215.4 / 86400.0};  // 2003-05-06 14:30:15.4
};

TEST_F(RecordAuxiliary, MainRowIsTheFirstPresentNonZeroValue) {
  Fill({{1, "a", 1, 1}, {2, "b", 1, 1}, {3, "c", 1, 1}, {4, "d", 1, 1}});
  const Variant none[] = {Variant(int16_t{0}), Variant::Null(), Variant(), Variant(int32_t{0})};
  for (int32_t r = 1; r <= 4; ++r) {
    main->SetValue(none[r - 1], r);
  }
  EXPECT_EQ(rs.GetIsMainRow("Main"), 0);
  main->SetValue(Variant(int16_t{1}), 3);
  main->SetValue(Variant(int16_t{1}), 4);
  EXPECT_EQ(rs.GetIsMainRow("Main"), 3);
  main->SetValue(Variant(true), 2);  // the Boolean True (-1) counts
  EXPECT_EQ(rs.GetIsMainRow(Variant(int32_t{6})), 2);
  Fill({});
  EXPECT_EQ(rs.GetIsMainRow("NoSuchField"), 0);
  EXPECT_TRUE(capture.shown().empty());
}

TEST_F(RecordAuxiliary, ValuesBeforeModificationAndDeletion) {
  EXPECT_TRUE(rs.GetModifyValue("Name").IsEmpty());
  EXPECT_TRUE(rs.GetDeleteValue("Name").IsEmpty());
  EXPECT_TRUE(rs.GetModifyValue("NoSuchField").IsEmpty());
  rs.Modify("Qty", int32_t{7});
  EXPECT_EQ(rs.GetModifyValue("Qty").ToLong(), 2);
  EXPECT_EQ(rs.GetModifyValue(Variant(int32_t{2})), Variant("Ann"));
  rs.UpdateRecord();
  rs.DeleteRecord();
  EXPECT_EQ(rs.GetDeleteValue("Qty").ToLong(), 7);
  qty->Col = 42;  // a Col outside the collection finds nothing
  EXPECT_TRUE(rs.GetDeleteValue("Qty").IsEmpty());
  EXPECT_TRUE(capture.shown().empty());
}

TEST_F(RecordAuxiliary, SystemTimeIsCutToWholeSeconds) {
  const Date now = rs.GetSysTime();
  EXPECT_GT(now.Value, 43831);  // after 2020-01-01
  EXPECT_NEAR(std::round(now.Value * 86400.0), now.Value * 86400.0, 1e-3);
  EXPECT_EQ(now, CDate(Variant(Format(Variant(now), "mm/dd/yyyy hh:nn:ss"))));
  Clock clock;
  rs.Advise(&clock);
  log.Clear();
  EXPECT_EQ(rs.GetSysTime(), Date{37747.0 + 52215.0 / 86400.0});
  EXPECT_EQ(log.Joined(), "SystemTime");
}

TEST_F(RecordAuxiliary, CurrentDateValueCutsToTheDateKind) {
  Clock clock;
  rs.Advise(&clock);
  const double day = 37747.0;
  const struct {
    Enum_DateType kind;
    double value;
  } cases[] = {
      {D_YMDHNS, day + 52215.0 / 86400.0},
      {D_YMDHN, day + 52200.0 / 86400.0},
      {D_YMD, day},
      {D_HNS, 52215.0 / 86400.0},
      {D_HN, 52200.0 / 86400.0},
      {static_cast<Enum_DateType>(-1), day + 52215.0 / 86400.0},
  };
  for (const auto& c : cases) {
    EXPECT_NEAR(MdlDataInterface::CurrentDateValue(rs, c.kind).Value, c.value, 1e-9) << c.kind;
  }
}

TEST_F(RecordAuxiliary, CallUserEventRaisesUserEvent) {
  rs.CallUserEvent();
  EXPECT_EQ(log.Joined(), "UserEvent");
}

}  // namespace
}  // namespace varnel::testing
