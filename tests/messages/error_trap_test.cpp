#include "messages/error_trap.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "support/capture_ui.h"
#include "varnel/variant.h"

namespace varnel {
namespace {

using testing::CaptureScope;

template <class Throw>
testing::ShownMessage ReportOf(Throw&& raise, int32_t language = 1033) {
  CaptureScope capture(language);
  bool state = false;
  const bool result = internal::Trapped(state, true, [&] {
    raise();
    return false;
  });
  EXPECT_TRUE(result) << "the trap returns the failure result";
  EXPECT_FALSE(state);
  EXPECT_EQ(capture.shown().size(), 1u);
  return capture.shown().empty() ? testing::ShownMessage{} : capture.shown()[0];
}

TEST(ErrorTrap, ReportsARunTimeErrorWithItsNumberAndDescription) {
  const auto shown = ReportOf([] { throw VbError(94, "Invalid use of Null"); });
  EXPECT_EQ(shown.caption, "Error");
  EXPECT_EQ(shown.title, "Error:94");
  EXPECT_EQ(shown.text, "Invalid use of Null");
  const auto chinese = ReportOf([] { throw VbError(-2147221504 + 3, "x"); }, 2052);
  EXPECT_EQ(chinese.caption, "错误");
  EXPECT_EQ(chinese.title, "错误：3");
}

TEST(ErrorTrap, ReportsOtherExceptionsAsInvalidProcedureCall) {
  const auto standard = ReportOf([] { throw std::out_of_range("row 7 is outside 1..5"); });
  EXPECT_EQ(standard.title, "Error:5");
  EXPECT_EQ(standard.text, "row 7 is outside 1..5");
  const auto unknown = ReportOf([] { throw 42; });
  EXPECT_EQ(unknown.title, "Error:5");
  EXPECT_FALSE(unknown.text.empty());
}

TEST(ErrorTrap, ARunTimeErrorNumberedZeroIsNotShown) {
  CaptureScope capture;
  bool state = false;
  internal::Trapped(state, 0, []() -> int { throw VbError(0, ""); });
  EXPECT_TRUE(capture.shown().empty());
}

}  // namespace
}  // namespace varnel
