#include "messages/console_ui.h"

#include <gtest/gtest.h>

#include "varnel/messages.h"

namespace varnel {
namespace {

using internal::ConsoleUi;

TEST(ConsoleUi, WritesEachMessageAsOneReadableBlockOnStandardError) {
  SetMessageUi(nullptr);
  SetThreadUILanguage(1033);
  bool state = false;
  ::testing::internal::CaptureStderr();
  MdlProcess::ShowErr("Error", 94, "Please enter value Qty can not be null.", state);
  MdlProcess::ShowInfor("You can not update the read only field.", state);
  EXPECT_EQ(MsgBox("Division by zero\r\n1/0", 0, "Operate"), 1);
  const std::string written = ::testing::internal::GetCapturedStderr();
  EXPECT_EQ(written,
            "Error [Error:94] Please enter value Qty can not be null.\n"
            "Information: You can not update the read only field.\n"
            "Operate: Division by zero\n  1/0\n");
  EXPECT_FALSE(MdlProcess::ErrForm().Visible);
  SetThreadUILanguage(0);
}

TEST(ConsoleUi, AnUntitledBoxIsTitledWithTheProgramName) {
  EXPECT_EQ(ConsoleUi::BoxText("Hello", ""), internal::ProgramName() + ": Hello");
  EXPECT_FALSE(internal::ProgramName().empty());
}

TEST(ConsoleUi, AnswersWithTheBoxsDefaultButton) {
  struct Case {
    int32_t buttons;
    int32_t answer;
  };
  const Case cases[] = {{0, 1},         {1, 1},         {2, 3},         {3, 6},  {4, 6},  {5, 4},
                        {4 + 0x100, 7}, {3 + 0x200, 2}, {2 + 0x100, 4}, {36, 6}, {16, 1}, {9, 1}};
  for (const Case& c : cases) {
    EXPECT_EQ(ConsoleUi::DefaultButton(c.buttons), c.answer) << c.buttons;
  }
}

}  // namespace
}  // namespace varnel
