// The two-language string table: every text the library shows to a user.
#pragma once

#include <cstdint>
#include <string_view>

namespace varnel::internal {

inline constexpr int32_t kLanguageEnglish = 1033;
inline constexpr int32_t kLanguageChinese = 2052;

// The text of entry id in language (Chinese for 2052, English for any other
// language); empty for an id that is not in the table.
std::string_view LookUpString(int32_t id, int32_t language);

// The UI language that the process environment asks for: the first non-empty
// of LANGUAGE, LC_ALL, LC_MESSAGES, LANG; a value starting with "zh" is
// Chinese, anything else (or nothing) English.
int32_t EnvironmentUILanguage();

}  // namespace varnel::internal
