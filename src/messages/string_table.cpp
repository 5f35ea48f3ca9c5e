#include "messages/string_table.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>

namespace varnel::internal {
namespace {

struct StringEntry {
  int32_t id;
  std::string_view english;
  std::string_view chinese;
};

// One row per id, both languages side by side. The texts are kept exactly as
// the message catalogue has them, blanks included: callers join fragments such
// as 104/105 around a field name.
constexpr StringEntry kStringTable[] = {
    {0, "English", "Chinese"},
    {101, "Error", "错误"},
    {102, "No current record.", "无当前记录。"},
    {103, "Type Mismatch.", "数据类型不匹配！"},
    {104, "Please enter value ", "请输入 "},
    {105, " can not be null.", "  不能为空！"},
    {106, "Error:", "错误："},
    {107, "OK", "确定"},
    {108, " Value created already exists.", " 中该值已经存在。"},
    {109, " OR >= ", " 或 >="},
    {110, " AND <= ", " 并且 <="},
    {111, " OR > ", " 或 > "},
    {112, " AND < ", " 并且 < "},
    {113, "can not be  > 100% OR < 0% .", "不能 > 100% 或 < 0% 。"},
    {114, " .", " 的值。"},
    {115, "Please set ' ", "请设置‘"},
    {116, "' currency sign.", "’的货币符号。"},
    {117, "' doesn't be found.", "'没有找到。"},
    {118, "It doesn't find field '", "没有找到字段'"},
    {150, "You can not update the read only field.", "这个字段的值是只读的，不能更新。"},
    {600, "OK", "确定"},
    {601, "Error", "错误"},
    {602, "Information", "信息"},
};

constexpr bool IdsAscending() {
  for (size_t i = 1; i < std::size(kStringTable); ++i) {
    if (kStringTable[i - 1].id >= kStringTable[i].id) {
      return false;
    }
  }
  return true;
}

static_assert(std::size(kStringTable) == 23, "the message catalogue has 23 entries");
static_assert(IdsAscending(), "ids must ascend: lookup is a binary search");

bool StartsWithChinese(const char* value) { return value[0] == 'z' && value[1] == 'h'; }

}  // namespace

std::string_view LookUpString(int32_t id, int32_t language) {
  const auto* end = std::end(kStringTable);
  const auto* entry =
      std::lower_bound(std::begin(kStringTable), end, id,
                       [](const StringEntry& e, int32_t key) { return e.id < key; });
  if (entry == end || entry->id != id) {
    return {};
  }
  return language == kLanguageChinese ? entry->chinese : entry->english;
}

int32_t EnvironmentUILanguage() {
  for (const char* name : {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* value = std::getenv(name);
    if (value != nullptr && value[0] != '\0') {
      return StartsWithChinese(value) ? kLanguageChinese : kLanguageEnglish;
    }
  }
  return kLanguageEnglish;
}

}  // namespace varnel::internal
