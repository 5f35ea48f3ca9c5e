#include <gtest/gtest.h>

#include "query_fixture.h"
#include "support/capture_ui.h"

namespace varnel::testing {
namespace {

// A recordset of one row with the field under test and a symbol field "Sym".
struct Formatting {
  explicit Formatting(Enum_FieldType type, const std::string& name = "Qty") {
    field = rs.Add(name);
    field->FieldType = type;
    rs.Add("Sym");
    rs.Rows(1);
  }
  // FormatValue of value; the result (true = refused) and the rewritten value.
  bool Format(Variant value) {
    result = value;
    return rs.FormatValue(Variant(field->Name), result, 1);
  }

  ClsRecordset rs;
  std::shared_ptr<ClsFields> field;
  Variant result;
};

TEST(FormatValue, BlankValuesBecomeNullForEveryKind) {
  for (Enum_FieldType type :
       {F_Other, F_Boolean, F_Date, F_Text, F_Currency, F_Numeral, F_Locked, F_MultiMode}) {
    for (const Variant& blank : {Variant(), Variant::Null(), Variant("   ")}) {
      Formatting f(type);
      EXPECT_FALSE(f.Format(blank)) << type;
      EXPECT_TRUE(f.result.IsNull()) << type;
    }
  }
}

TEST(FormatValue, AcceptedValuesTakeTheirKindsNormalForm) {
  const struct {
    Enum_FieldType type;
    Enum_NumType num_type;
    Enum_DateType date_type;
    Variant typed;
    Variant normal;
  } cases[] = {
      {F_Text, N_Integer, D_YMDHNS, Variant("  abc  "), Variant("  abc")},
      {F_Text, N_Integer, D_YMDHNS, Variant(1.5), Variant("1.5")},
      {F_Numeral, N_Integer, D_YMDHNS, Variant("2.5"), Variant(int32_t{2})},
      {F_Numeral, N_Integer, D_YMDHNS, Variant("3.5"), Variant(int32_t{4})},
      {F_Numeral, N_Integer, D_YMDHNS, Variant("3,000,000,000"), Variant(3e9)},
      {F_Numeral, N_Float, D_YMDHNS, Variant("1,234.5"), Variant(1234.5)},
      {F_Numeral, N_Percent, D_YMDHNS, Variant("50%"), Variant(0.5)},
      {F_Numeral, N_Percent, D_YMDHNS, Variant(0.25), Variant(0.25)},
      {F_Currency, N_Integer, D_YMDHNS, Variant("$1,234.50"), Variant(Currency{12345000})},
      {F_Currency, N_Integer, D_YMDHNS, Variant(int32_t{-3}), Variant(Currency{-30000})},
      {F_Date, N_Integer, D_YMD, Variant("5/6/2003 10:30"), Variant(Date{37747})},
      {F_Date, N_Integer, D_HN, Variant("2003-05-06 10:30:45"), Variant(Date{0.4375})},
      {F_Date, N_Integer, D_YMDHNS, Variant(37747.5), Variant(Date{37747.5})},
      {F_Boolean, N_Integer, D_YMDHNS, Variant(" Yes "), Variant(true)},
      {F_Boolean, N_Integer, D_YMDHNS, Variant("false"), Variant(false)},
      {F_Boolean, N_Integer, D_YMDHNS, Variant("是"), Variant(true)},
      {F_Boolean, N_Integer, D_YMDHNS, Variant("假"), Variant(false)},
      {F_Boolean, N_Integer, D_YMDHNS, Variant("0"), Variant(false)},
      {F_Boolean, N_Integer, D_YMDHNS, Variant(int32_t{2}), Variant(true)},
      {F_Locked, N_Integer, D_YMDHNS, Variant("1"), Variant(int32_t{1})},
      {F_Locked, N_Integer, D_YMDHNS, Variant(true), Variant(true)},
      {F_Other, N_Integer, D_YMDHNS, Variant(" raw "), Variant(" raw ")},
      {F_MultiMode, N_Integer, D_YMDHNS, Variant(7.5), Variant(7.5)},
  };
  for (const auto& c : cases) {
    CaptureScope capture;
    Formatting f(c.type);
    f.field->NumType = c.num_type;
    f.field->DateType = c.date_type;
    EXPECT_FALSE(f.Format(c.typed)) << c.typed.ToString();
    EXPECT_EQ(f.result, c.normal) << c.typed.ToString() << " -> " << f.result.ToString();
    EXPECT_TRUE(capture.shown().empty());
  }
}

struct Refused {
  int32_t language;
  const char* title;  // "Error:13" for the error dialog, "" for information
  const char* text;
};

// Sets up a field, offers value, and expects exactly one message.
template <class Setup>
void ExpectRefused(Enum_FieldType type, Setup setup, const Variant& value,
                   std::initializer_list<Refused> messages) {
  for (const Refused& m : messages) {
    CaptureScope capture(m.language);
    Formatting f(type);
    f.field->DisplayName = "Qty";
    setup(f);
    EXPECT_TRUE(f.Format(value)) << m.text;
    EXPECT_EQ(f.result, value) << m.text;
    ASSERT_EQ(capture.shown().size(), 1u) << m.text;
    EXPECT_EQ(capture.shown()[0].title, m.title);
    EXPECT_EQ(capture.shown()[0].text, m.text);
    EXPECT_FALSE(f.rs.SysErrState);
  }
}

const auto kNoSetup = [](Formatting&) {};

TEST(FormatValue, TypeMismatchIsReportedAsErrorThirteen) {
  const std::initializer_list<Refused> mismatch = {{1033, "Error:13", "Type Mismatch."},
                                                   {2052, "错误：13", "数据类型不匹配！"}};
  ExpectRefused(F_Numeral, kNoSetup, Variant("12abc"), mismatch);
  ExpectRefused(F_Date, kNoSetup, Variant("5/32/2003"), mismatch);
  ExpectRefused(F_Date, kNoSetup, Variant(true), mismatch);
  ExpectRefused(F_Boolean, kNoSetup, Variant("maybe"), mismatch);
  ExpectRefused(F_Locked, kNoSetup, Variant("locked"), mismatch);
  ExpectRefused(F_Currency, kNoSetup, Variant("$$5"), mismatch);
  ExpectRefused(
      F_Text, [](Formatting& f) { f.field->DefinedSize = 3; }, Variant("abcd"), mismatch);
}

TEST(FormatValue, TextFitsItsDefinedSizeInCharacters) {
  Formatting f(F_Text);
  f.field->DefinedSize = 3;
  EXPECT_FALSE(f.Format(Variant("中文字   ")));
  EXPECT_EQ(f.result, Variant("中文字"));
}

TEST(FormatValue, PercentOutsideZeroToHundredIsRefused) {
  ExpectRefused(F_Numeral, [](Formatting& f) { f.field->NumType = N_Percent; }, Variant("150%"),
                {{1033, "", "'Qty' can not be  > 100% OR < 0% ."},
                 {2052, "", "'Qty' 不能 > 100% 或 < 0% 。"}});
}

TEST(FormatValue, CurrencyNeedsTheRowsSymbolFirst) {
  const auto with_symbol_field = [](Formatting& f) { f.field->SymbolName = "Sym"; };
  ExpectRefused(
      F_Currency, with_symbol_field, Variant("5"),
      {{1033, "", "Please set ' Qty' currency sign."}, {2052, "", "请设置‘Qty’的货币符号。"}});
  Formatting f(F_Currency);
  with_symbol_field(f);
  f.rs.Item("Sym")->SetValue(Variant("USD"), 1);
  EXPECT_FALSE(f.Format(Variant("12.5 USD")));
  EXPECT_EQ(f.result, Variant(Currency{125000}));
}

TEST(FormatValue, ValuesOutsideTheInputRangeAreRefusedNamingTheBounds) {
  const auto one_to_ten = [](Formatting& f) {
    f.field->InputMin = Variant(int32_t{1});
    f.field->InputMax = Variant(int32_t{10});
  };
  ExpectRefused(F_Numeral, one_to_ten, Variant("11"),
                {{1033, "", "Please enter value 'Qty' >= 1 AND <= 10 ."},
                 {2052, "", "请输入 'Qty' >= 1 并且 <=10 的值。"}});
  ExpectRefused(
      F_Numeral, [](Formatting& f) { f.field->InputMin = Variant(0.5); }, Variant(int32_t{0}),
      {{1033, "", "Please enter value 'Qty' >= 0.5 ."}, {2052, "", "请输入 'Qty' >= 0.5 的值。"}});
  ExpectRefused(F_Currency, [](Formatting& f) { f.field->InputMax = Variant("$100"); },
                Variant("100.01"), {{1033, "", "Please enter value 'Qty' <= 100 ."}});
  ExpectRefused(F_Numeral,
                [](Formatting& f) {
                  f.field->InputMin = Variant(int32_t{10});
                  f.field->InputMax = Variant(int32_t{1});
                },
                Variant("5"),
                {{1033, "", "Please enter value 'Qty' <= 1 OR >= 10 ."},
                 {2052, "", "请输入 'Qty' <= 1 或 >=10 的值。"}});
  ExpectRefused(F_Date,
                [](Formatting& f) {
                  f.field->DateType = D_YMD;
                  f.field->InputMin = Variant("1/1/2003");
                },
                Variant("12/31/2002"), {{1033, "", "Please enter value 'Qty' >= 01/01/2003 ."}});
  Formatting inside(F_Numeral);
  one_to_ten(inside);
  EXPECT_FALSE(inside.Format(Variant("10")));
}

TEST(FormatValue, AutoCodingFieldsRefuseChanges) {
  ExpectRefused(F_AutoCoding, kNoSetup, Variant(int32_t{5}),
                {{1033, "", "You can not update the read only field."},
                 {2052, "", "这个字段的值是只读的，不能更新。"}});
  Formatting f(F_AutoCoding);
  f.field->SetValue(Variant(int32_t{5}), 1);
  EXPECT_FALSE(f.Format(Variant(int32_t{5})));
}

TEST(FormatValue, UnknownFieldIsReportedOnceAndRefused) {
  CaptureScope capture;
  Formatting f(F_Text);
  Variant value("x");
  EXPECT_TRUE(f.rs.FormatValue(Variant("Missing"), value));
  EXPECT_EQ(capture.shown().size(), 1u);
  EXPECT_EQ(value, Variant("x"));
}

}  // namespace
}  // namespace varnel::testing
