// ClsRecordset::FormatValue: each field kind's normal form of a value, and
// each refusal with its exact message in both languages.
#include <gtest/gtest.h>

#include <array>
#include <tuple>

#include "support/capture_ui.h"
#include "varnel/varnel.h"

namespace varnel::testing {
namespace {

struct Field {
  Enum_FieldType type;
  Enum_NumType num = N_Integer;
  Enum_DateType date = D_YMDHNS;
  int32_t size = 0;
  Variant min = {}, max = {}, stored = {};
  const char* sign = nullptr;  // the row's currency sign in field "Sym"; nullptr: none named
};

// FormatValue of value for field "Qty" in a recordset of one row; true = refused.
bool Format(const Field& field, Variant& value) {
  ClsRecordset rs;
  auto f = rs.Add("Qty");
  f->FieldType = field.type;
  f->NumType = field.num;
  f->DateType = field.date;
  f->DefinedSize = field.size;
  f->InputMin = field.min;
  f->InputMax = field.max;
  rs.Add("Sym");
  rs.Rows(1);
  f->SetValue(field.stored, 1);
  f->SymbolName = field.sign ? "Sym" : "";
  rs.Item("Sym")->SetValue(Variant(field.sign ? field.sign : ""), 1);
  return rs.FormatValue(Variant("Qty"), value, 1);
}

TEST(FormatValue, AcceptedValuesTakeTheirKindsNormalFormAndBlankOnesBecomeNull) {
  // The field, a value typed into it, and the value's normal form.
  const std::tuple<Field, Variant, Variant> rows[] = {
      {{F_Text}, "  abc  ", "  abc"},
      {{F_Text}, 1.5, "1.5"},
      {{.type = F_Text, .size = 3}, "中文字   ", "中文字"},
      {{F_Numeral}, "2.5", int32_t{2}},
      {{F_Numeral}, "3.5", int32_t{4}},
      {{F_Numeral}, "3,000,000,000", 3e9},
      {{F_Numeral, N_Float}, "1,234.5", 1234.5},
      {{F_Numeral, N_Percent}, "50%", 0.5},
      {{F_Numeral, N_Percent}, 0.25, 0.25},
      {{.type = F_Numeral, .min = int32_t{1}, .max = int32_t{10}}, "10", int32_t{10}},
      {{F_Currency}, "$1,234.50", Currency{12345000}},
      {{F_Currency}, int32_t{-3}, Currency{-30000}},
      {{.type = F_Currency, .sign = "USD"}, "12.5 USD", Currency{125000}},
      {{F_Date, N_Integer, D_YMD}, "5/6/2003 10:30", Date{37747}},
      {{F_Date, N_Integer, D_HN}, "2003-05-06 10:30:45", Date{0.4375}},
      {{F_Date}, 37747.5, Date{37747.5}},
      {{F_Boolean}, " Yes ", true},
      {{F_Boolean}, "是", true},
      {{F_Boolean}, "0", false},
      {{F_Boolean}, int32_t{2}, true},
      {{F_Locked}, "1", int32_t{1}},
      {{F_Other}, " raw ", " raw "},
      {{.type = F_AutoCoding, .stored = int32_t{5}}, int32_t{5}, int32_t{5}},
      {{F_Numeral}, "   ", Variant::Null()},
  };
  for (const auto& [field, typed, normal] : rows) {
    CaptureScope capture;
    Variant value = typed;
    EXPECT_FALSE(Format(field, value)) << typed.ToString();
    EXPECT_EQ(value, normal) << typed.ToString() << " -> " << value.ToString();
    EXPECT_TRUE(capture.shown().empty());
  }
}

TEST(FormatValue, RefusedValuesAreKeptAndTheUserIsToldOnceInHisLanguage) {
  using Told = std::array<const char*, 2>;  // English, Chinese
  const Told mismatch{"Type Mismatch.", "数据类型不匹配！"}, error13{"Error:13", "错误：13"};
  // The field, a value typed into it, and what the user is told.
  const std::tuple<Field, Variant, Told> rows[] = {
      {{F_Numeral}, "12abc", mismatch},
      {{F_Date}, "5/32/2003", mismatch},
      {{F_Date}, true, mismatch},
      {{F_Boolean}, "maybe", mismatch},
      {{F_Locked}, "locked", mismatch},
      {{F_Currency}, "$$5", mismatch},
      {{.type = F_Text, .size = 3}, "abcd", mismatch},
      {{F_Numeral, N_Percent},
       "150%",
       {"'Qty' can not be  > 100% OR < 0% .", "'Qty' 不能 > 100% 或 < 0% 。"}},
      {{.type = F_Currency, .sign = ""},
       "5",
       {"Please set ' Qty' currency sign.", "请设置‘Qty’的货币符号。"}},
      {{.type = F_Numeral, .min = int32_t{1}, .max = int32_t{10}},
       "11",
       {"Please enter value 'Qty' >= 1 AND <= 10 .", "请输入 'Qty' >= 1 并且 <=10 的值。"}},
      {{.type = F_Numeral, .min = int32_t{10}, .max = int32_t{1}},
       "5",
       {"Please enter value 'Qty' <= 1 OR >= 10 .", "请输入 'Qty' <= 1 或 >=10 的值。"}},
      {{.type = F_Numeral, .min = 0.5},
       int32_t{0},
       {"Please enter value 'Qty' >= 0.5 .", "请输入 'Qty' >= 0.5 的值。"}},
      {{.type = F_Currency, .max = "$100"},
       "100.01",
       {"Please enter value 'Qty' <= 100 .", "请输入 'Qty' <= 100 的值。"}},
      {{.type = F_Date, .date = D_YMD, .min = "1/1/2003"},
       "12/31/2002",
       {"Please enter value 'Qty' >= 01/01/2003 .", "请输入 'Qty' >= 01/01/2003 的值。"}},
      {{F_AutoCoding},
       int32_t{5},
       {"You can not update the read only field.", "这个字段的值是只读的，不能更新。"}},
  };
  for (const auto& [field, typed, told] : rows) {
    for (const int32_t language : {1033, 2052}) {
      CaptureScope capture(language);
      Variant value = typed;
      EXPECT_TRUE(Format(field, value)) << typed.ToString();
      EXPECT_EQ(value, typed);
      ASSERT_EQ(capture.shown().size(), 1u) << typed.ToString();
      const bool chinese = language == 2052;
      EXPECT_EQ(capture.shown()[0].title, told == mismatch ? error13[chinese] : "");
      EXPECT_EQ(capture.shown()[0].text, told[chinese]);
    }
  }
  CaptureScope capture;
  Variant value("x");
  EXPECT_TRUE(ClsRecordset().FormatValue(Variant("Missing"), value)) << "an unknown field";
  EXPECT_EQ(capture.shown().size(), 1u);
}

}  // namespace
}  // namespace varnel::testing
