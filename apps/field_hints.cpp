#include "field_hints.h"

#include <fmt/format.h>

#include "form_view.h"
#include "value_text.h"
#include "varnel/messages.h"

namespace varnel::app {
namespace {

struct Phrase {
  const char* english;
  const char* chinese;
};

const char* In(const Phrase& phrase) {
  return GetThreadUILanguage() == 2052 ? phrase.chinese : phrase.english;
}

enum class Kind { kNumber, kAmount, kDate, kText, kYesNo, kNone };

// One row per kind: its name, its criteria (examples as help shows them).
struct KindRow {
  Kind kind;
  Phrase name;
  const char* examples;  // " | " between examples
};

constexpr KindRow kKinds[] = {
    {Kind::kNumber, {"number", "数字"}, "12 | >=10 AND <20 | <>3 | NOT 5 | null | notnull"},
    {Kind::kAmount, {"amount", "金额"}, "12.50 | >=1000 AND <2000 | <5 | NOT>=100 | notnull"},
    {Kind::kDate,
     {"date", "日期"},
     "2024-06-01 | 6/1/2024 | >=2024-06-01 AND <2024-07-01 | >=TODAY()-30 | null"},
    {Kind::kText, {"text", "文本"}, "smith | not smith | like O'Brien | null | notnull"},
    {Kind::kYesNo, {"yes/no", "是/否"}, "yes | no | true | false | 是 | 否 | 真 | 假"},
};

Kind KindOf(const ClsFields& field) {
  switch (field.FieldType) {
    case F_Numeral:
      return Kind::kNumber;
    case F_Currency:
      return Kind::kAmount;
    case F_Date:
      return Kind::kDate;
    case F_Text:
    case F_Other:
      return Kind::kText;
    case F_Boolean:
    case F_Locked:
      return Kind::kYesNo;
    default:
      return Kind::kNone;
  }
}

std::string Range(const ClsFields& field) {
  if (field.InputMin.IsBlank() || field.InputMax.IsBlank()) {
    return "";
  }
  return fmt::format(fmt::runtime(In({" from {} to {}", "，范围 {} 至 {}"})),
                     ValueText(field, field.InputMin), ValueText(field, field.InputMax));
}

std::string ValueForm(const ClsFields& field) {
  switch (field.FieldType) {
    case F_Numeral:
      if (field.NumType == N_Integer) {
        return In({"a whole number", "整数"}) + Range(field) + In({", e.g. 12", "，例如 12"});
      }
      return In({"a number", "数字"}) + Range(field) + In({", e.g. 7.25", "，例如 7.25"});
    case F_Currency:
      return In({"an amount", "金额"}) + Range(field) + In({", e.g. 12.50", "，例如 12.50"});
    case F_Date:
      if (field.DateType == D_HNS || field.DateType == D_HN) {
        return In({"a time, e.g. 14:30", "时间，例如 14:30"});
      }
      if (field.DateType == D_YMD) {
        return In({"a date", "日期"}) + Range(field) +
               In({", e.g. 2024-06-01 or 6/1/2024", "，例如 2024-06-01 或 6/1/2024"});
      }
      return In({"a date and time, e.g. 2024-06-01 14:30", "日期时间，例如 2024-06-01 14:30"});
    case F_Boolean:
      return In({"yes or no (also true/false, 1/0, 是/否)", "是或否（也可写 yes/no、1/0、真/假）"});
    case F_Text:
    case F_Other:
      return field.DefinedSize > 0
                 ? fmt::format(
                       fmt::runtime(In({"text of up to {} characters", "最多 {} 个字符的文本"})),
                       field.DefinedSize)
                 : std::string(In({"any text", "任意文本"}));
    default:
      return "";
  }
}

}  // namespace

std::string ValueHint(const ClsFields& field) {
  const std::string form = field.Edit ? ValueForm(field) : std::string();
  if (form.empty()) {
    return "";
  }
  const std::string empty =
      field.EnableNull ? In({", or nothing to empty it", "，或不写以清空"}) : "";
  return fmt::format(fmt::runtime(In({"{} takes {}{}.", "{} 应为{}{}。"})), ShownName(field), form,
                     empty);
}

std::string CriteriaHint(const ClsFields& field) {
  const Kind kind = KindOf(field);
  for (const KindRow& row : kKinds) {
    if (row.kind == kind) {
      return fmt::format(fmt::runtime(In({"Criteria for {} (a {}): {}", "{}（{}）的条件：{}"})),
                         ShownName(field), In(row.name), row.examples);
    }
  }
  return "";
}

std::vector<CriteriaKind> CriteriaKinds() {
  std::vector<CriteriaKind> kinds;
  for (const KindRow& row : kKinds) {
    CriteriaKind kind{In(row.name), {}};
    const std::string_view examples = row.examples;
    for (size_t at = 0; at <= examples.size();) {
      const size_t bar = std::min(examples.find(" | ", at), examples.size());
      kind.examples.emplace_back(examples.substr(at, bar - at));
      at = bar + 3;
    }
    kinds.push_back(std::move(kind));
  }
  return kinds;
}

}  // namespace varnel::app
