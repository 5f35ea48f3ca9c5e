// The public face of the string table: LoadResString in the thread's UI language.
#include "messages/string_table.h"
#include "varnel/messages.h"

namespace varnel {
namespace {

// 0 = follow the environment, read afresh at each lookup so that a change of
// the environment is seen by the next message.
thread_local int32_t thread_ui_language = 0;

}  // namespace

void SetThreadUILanguage(int32_t LangId) { thread_ui_language = LangId; }

int32_t GetThreadUILanguage() {
  return thread_ui_language != 0 ? thread_ui_language : internal::EnvironmentUILanguage();
}

std::string LoadResString(int32_t Id) {
  return std::string(internal::LookUpString(Id, GetThreadUILanguage()));
}

}  // namespace varnel
