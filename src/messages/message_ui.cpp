// The thread's MessageUi and the free MsgBox that forwards to it.
#include <utility>

#include "messages/console_ui.h"
#include "messages/last_error.h"
#include "varnel/messages.h"

namespace varnel {
namespace {

thread_local std::shared_ptr<MessageUi> thread_ui;

MessageUi& BuiltInUi() {
  static internal::ConsoleUi console;  // stateless, shared by every thread
  return console;
}

}  // namespace

void SetMessageUi(std::shared_ptr<MessageUi> Ui) { thread_ui = std::move(Ui); }

MessageUi& CurrentMessageUi() { return thread_ui ? *thread_ui : BuiltInUi(); }

int32_t MsgBox(const std::string& Prompt, int32_t Buttons, const std::string& Title) {
  if (internal::InLibraryOperation()) {
    internal::RecordReport(K_Error, 0, Prompt);  // a failure the library reports in a box
  }
  // Keep the UI alive even if it replaces itself while the box is open.
  const std::shared_ptr<MessageUi> keep = thread_ui;
  try {
    return CurrentMessageUi().MsgBox(Prompt, Buttons, Title);
  } catch (...) {
    return 0;  // a UI that fails counts as closed without a button
  }
}

}  // namespace varnel
