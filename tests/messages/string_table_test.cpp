#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>
#include <thread>

#include "varnel/messages.h"

namespace varnel {
namespace {

struct StringRow {
  int32_t id;
  const char* english;
  const char* chinese;
};

TEST(StringTable, LoadsEachEntryInTheThreadLanguageAsStored) {
  const StringRow rows[] = {
      {0, "English", "Chinese"},
      {101, "Error", "错误"},
      {105, " can not be null.", "  不能为空！"},
      {106, "Error:", "错误："},
      {113, "can not be  > 100% OR < 0% .", "不能 > 100% 或 < 0% 。"},
      {115, "Please set ' ", "请设置‘"},
      {116, "' currency sign.", "’的货币符号。"},
      {150, "You can not update the read only field.", "这个字段的值是只读的，不能更新。"},
      {602, "Information", "信息"},
  };
  for (const StringRow& row : rows) {
    SetThreadUILanguage(1033);
    EXPECT_EQ(LoadResString(row.id), row.english) << row.id;
    SetThreadUILanguage(2052);
    EXPECT_EQ(LoadResString(row.id), row.chinese) << row.id;
  }
  SetThreadUILanguage(0);
}

TEST(StringTable, UnknownIdsAreEmptyAndOtherLanguagesFallBackToEnglish) {
  SetThreadUILanguage(1033);
  for (int32_t id : {-1, 1, 100, 119, 149, 151, 599, 603}) {
    EXPECT_EQ(LoadResString(id), "") << id;
  }
  SetThreadUILanguage(1041);
  EXPECT_EQ(GetThreadUILanguage(), 1041);
  EXPECT_EQ(LoadResString(101), "Error");
  SetThreadUILanguage(0);
}

TEST(UiLanguage, IsKeptPerThread) {
  SetThreadUILanguage(2052);
  int32_t other_language = 0;
  std::string other_text;
  std::thread([&] {
    SetThreadUILanguage(1033);
    other_language = GetThreadUILanguage();
    other_text = LoadResString(101);
  }).join();
  EXPECT_EQ(other_language, 1033);
  EXPECT_EQ(other_text, "Error");
  EXPECT_EQ(GetThreadUILanguage(), 2052);
  SetThreadUILanguage(0);
}

// Sets the four locale variables for a scope and restores them afterwards.
class LocaleEnvironment {
 public:
  LocaleEnvironment(const char* language, const char* lc_all, const char* lc_messages,
                    const char* lang) {
    const char* values[] = {language, lc_all, lc_messages, lang};
    for (int i = 0; i < 4; ++i) {
      const char* old = std::getenv(kNames[i]);
      saved_[i] = old ? std::optional<std::string>(old) : std::nullopt;
      Set(kNames[i], values[i]);
    }
  }
  ~LocaleEnvironment() {
    for (int i = 0; i < 4; ++i) {
      Set(kNames[i], saved_[i] ? saved_[i]->c_str() : nullptr);
    }
  }

 private:
  static void Set(const char* name, const char* value) {
    if (value) {
      setenv(name, value, 1);
    } else {
      unsetenv(name);
    }
  }
  static constexpr const char* kNames[4] = {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"};
  std::optional<std::string> saved_[4];
};

TEST(UiLanguage, ZeroFollowsTheFirstNonEmptyLocaleVariable) {
  struct Case {
    const char *language, *lc_all, *lc_messages, *lang;
    int32_t expected;
  };
  const Case cases[] = {
      {nullptr, nullptr, nullptr, nullptr, 1033},
      {nullptr, nullptr, nullptr, "zh_CN.UTF-8", 2052},
      {"", "", "", "zh_TW", 2052},
      {"en_US:zh_CN", nullptr, nullptr, "zh_CN.UTF-8", 1033},
      {"zh_CN:en", "C", nullptr, nullptr, 2052},
      {nullptr, "de_DE.UTF-8", "zh_CN", "zh_CN", 1033},
      {nullptr, nullptr, "zh", "en_US", 2052},
      {nullptr, nullptr, nullptr, "C.UTF-8", 1033},
  };
  SetThreadUILanguage(0);
  for (const Case& c : cases) {
    LocaleEnvironment env(c.language, c.lc_all, c.lc_messages, c.lang);
    EXPECT_EQ(GetThreadUILanguage(), c.expected)
        << (c.language ? c.language : "-") << " " << (c.lc_all ? c.lc_all : "-") << " "
        << (c.lc_messages ? c.lc_messages : "-") << " " << (c.lang ? c.lang : "-");
    EXPECT_EQ(LoadResString(101), c.expected == 2052 ? "错误" : "Error");
  }
  LocaleEnvironment chinese("zh_CN", nullptr, nullptr, nullptr);
  SetThreadUILanguage(1033);
  EXPECT_EQ(GetThreadUILanguage(), 1033) << "an explicit language wins over the environment";
  SetThreadUILanguage(0);
}

}  // namespace
}  // namespace varnel
