// The numeric test, the leading-number reading and the number parsers.
#include "automation/numeric_text.h"

#include <gtest/gtest.h>

#include <utility>

#include "varnel/variant.h"

namespace varnel {
namespace {

TEST(IsNumeric, AcceptsWhatThePlatformReadsAsANumberInTextOrByKind) {
  const std::pair<const char*, bool> cases[] = {
      {"1", true},      {" 12 ", true},     {"-3.5", true},     {"+.5", true},    {"5.", true},
      {"1,000", true},  {"1,000.25", true}, {"1,0,0", true},    {"1e5", true},    {"1.5E-3", true},
      {"2d2", true},    {"\t7\t", true},    {"", false},        {"   ", false},   {".", false},
      {"-", false},     {",1", false},      {"1.000,5", false}, {"1e", false},    {"1e+", false},
      {"12abc", false}, {"1 2", false},     {"- 1", false},     {"1.2.3", false}, {"abc", false},
      {"1e400", false}, {"$5", false},      {"0x10", false},
  };
  for (const auto& [text, numeric] : cases) {
    EXPECT_EQ(IsNumeric(std::string_view(text)), numeric) << '"' << text << '"';
    EXPECT_EQ(IsNumeric(Variant(text)), numeric) << "as a Variant: \"" << text << '"';
  }
  // Other kinds by kind: a date is no number.
  const std::pair<Variant, bool> kinds[] = {
      {Variant(), true},           {Variant::Null(), false},
      {Variant(int16_t{1}), true}, {Variant(Currency{1}), true},
      {Variant(true), true},       {Variant(Date{1}), false}};
  for (const auto& [value, numeric] : kinds) {
    EXPECT_EQ(IsNumeric(value), numeric) << value.TypeName();
  }
}

TEST(Val, ReadsTheLeadingNumber) {
  const std::pair<const char*, double> cases[] = {
      {"1,000", 1},   {"12abc", 12}, {"  -3.5e2x", -350}, {"abc", 0},     {"", 0},
      {"1 2 3", 123}, {".5", 0.5},   {"-.5", -0.5},       {"1e", 1},      {"1e+x", 1},
      {"1.2.3", 1.2}, {"--5", 0},    {"1D2", 100},        {"+7", 7},      {"\t4\n2", 42},
      {"1.50", 1.5},  {"-", 0},      {"0007", 7},         {"3e-2", 0.03},
  };
  for (const auto& [text, value] : cases) {
    EXPECT_EQ(Val(text), value) << '"' << text << '"';
  }
  EXPECT_THROW(Val("9e999"), VbError);
}

}  // namespace
}  // namespace varnel
