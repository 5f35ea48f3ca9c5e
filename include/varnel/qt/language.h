// Switching the language of the engine's texts and the binding's (and the
// program's) Qt translations together, while the program runs.
//
//   varnel::qt::SetLanguage(2052);   // Chinese: widgets get a LanguageChange event
#pragma once

#include <cstdint>

#include "varnel/export.h"

VARNEL_API_BEGIN

namespace varnel::qt {

/// Sets the thread's UI language (1033 English, 2052 Chinese, 0 from the
/// environment) for the engine's string table and installs the matching Qt
/// translations embedded under ":/i18n" (every "*_zh_CN.qm" for Chinese).
/// Every widget then receives QEvent::LanguageChange. Call on the GUI thread.
void SetLanguage(int32_t LangId);

}  // namespace varnel::qt

VARNEL_API_END
