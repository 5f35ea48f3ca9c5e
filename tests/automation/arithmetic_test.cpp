// The platform's operators on variants, concatenation among them: result kinds, promotion, Null,
// Empty, text, dates and the errors they raise.
#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "varnel/variant.h"

namespace varnel {
namespace {

using Operator = std::function<Variant(const Variant&, const Variant&)>;

const Operator kAdd = [](const Variant& a, const Variant& b) { return a + b; };
const Operator kSub = [](const Variant& a, const Variant& b) { return a - b; };
const Operator kMul = [](const Variant& a, const Variant& b) { return a * b; };
const Operator kDiv = [](const Variant& a, const Variant& b) { return a / b; };
const Operator kCat = [](const Variant& a, const Variant& b) { return Concat(a, b); };

Variant I(int16_t v) { return Variant(v); }
Variant L(int32_t v) { return Variant(v); }
Variant C(int64_t units) { return Variant(Currency{units}); }
Variant D(double serial) { return Variant(Date{serial}); }
Variant LL(int64_t v) { return Variant(v); }
Variant Dec(const char* text) { return Variant(CDec(Variant(text))); }

struct Case {
  const char* what;
  Operator op;
  Variant a;
  Variant b;
  Variant expected;   // same kind and value (operator==)
  int32_t error = 0;  // or the error raised
};

TEST(VariantArithmetic, ResultKindsValuesAndErrorsFollowThePlatform) {
  const std::vector<Case> cases = {
      {"Integer + Integer", kAdd, I(2), I(3), I(5)},
      {"Integer overflow becomes Long", kAdd, I(32767), I(1), L(32768)},
      {"Integer * Integer overflow becomes Long", kMul, I(300), I(300), L(90000)},
      {"Long overflow becomes Double", kAdd, L(2147483647), L(1), Variant(2147483648.0)},
      {"Long + Double is Double", kAdd, L(1), Variant(0.5), Variant(1.5)},
      {"Long * Currency is Currency", kMul, L(3), C(12500), C(37500)},
      {"Double + Currency is Currency", kAdd, Variant(0.25), C(10000), C(12500)},
      {"Currency * Currency is exact", kMul, C(15000), C(15000), C(22500)},
      {"Currency product rounds half to even", kMul, C(1), C(5000), C(0)},
      {"Currency product rounds half to even up", kMul, C(3), C(5000), C(2)},
      {"Boolean is -1", kAdd, Variant(true), I(5), I(4)},
      {"Boolean + Boolean is Integer", kAdd, Variant(true), Variant(true), I(-2)},
      {"Empty + Integer", kAdd, Variant(), I(7), I(7)},
      {"Empty + Empty is Integer 0", kAdd, Variant(), Variant(), I(0)},
      {"Text + text concatenates", kAdd, Variant("1"), Variant("2"), Variant("12")},
      {"Empty + text is the text", kAdd, Variant(), Variant("ab"), Variant("ab")},
      {"Text + number adds as Double", kAdd, Variant("1.5"), I(2), Variant(3.5)},
      {"Number + text adds as Double", kAdd, L(1), Variant(" 2 "), Variant(3.0)},
      {"Text - text subtracts", kSub, Variant("5"), Variant("2"), Variant(3.0)},
      {"Text * Integer", kMul, Variant("1,000"), I(2), Variant(2000.0)},
      {"Text + Currency is Currency", kAdd, Variant("1.5"), C(10000), C(25000)},
      {"Null + number", kAdd, Variant::Null(), I(1), Variant::Null()},
      {"Null / 0", kDiv, Variant::Null(), I(0), Variant::Null()},
      {"Date + number is Date", kAdd, D(37747), I(1), D(37748)},
      {"number + Date is Date", kAdd, Variant(0.5), D(37747), D(37747.5)},
      {"Date - number is Date", kSub, D(37747.5), Variant(0.25), D(37747.25)},
      {"Date - Date is Double", kSub, D(37750), D(37747), Variant(3.0)},
      {"Date beyond the calendar becomes Double", kAdd, D(2958465), L(10), Variant(2958475.0)},
      {"Integer / Integer is Double", kDiv, I(1), I(4), Variant(0.25)},
      {"Currency / Integer is Double", kDiv, C(10000), I(4), Variant(0.25)},
      {"Empty / number is 0", kDiv, Variant(), I(5), Variant(0.0)},
      {"x / 0", kDiv, I(1), I(0), {}, 11},
      {"x / Empty", kDiv, Variant(2.5), Variant(), {}, 11},
      {"0 / 0 is overflow", kDiv, I(0), I(0), {}, 6},
      {"non-numeric text + number", kAdd, Variant("abc"), I(1), {}, 13},
      {"number + non-numeric text", kAdd, I(1), Variant("12abc"), {}, 13},
      {"Empty - non-numeric text", kSub, Variant(), Variant("a"), {}, 13},
      {"text * non-numeric text", kMul, Variant("2"), Variant(""), {}, 13},
      {"Currency overflow", kMul, C(INT64_MAX), I(2), {}, 6},
      {"Currency sum overflow", kAdd, C(INT64_MAX), C(1), {}, 6},
      {"Double overflow", kMul, Variant(1e308), I(10), {}, 6},
      {"Double to Currency overflow", kAdd, Variant(1e300), C(1), {}, 6},
      {"quotient overflow", kDiv, Variant(1e308), Variant(1e-10), {}, 6},
      {"Long + LongLong is LongLong", kAdd, L(1), LL(2), LL(3)},
      {"LongLong keeps every digit", kAdd, LL(9007199254740992), I(1), LL(9007199254740993)},
      {"LongLong * Long", kMul, LL(3000000000), L(3), LL(9000000000)},
      {"LongLong - Long to the least", kSub, LL(-INT64_MAX), L(1), LL(INT64_MIN)},
      {"LongLong overflow", kAdd, LL(INT64_MAX), L(1), {}, 6},
      {"LongLong + Double is Double", kAdd, LL(2), Variant(0.5), Variant(2.5)},
      {"LongLong * Currency is Currency", kMul, LL(3), C(12500), C(37500)},
      {"LongLong beyond Currency", kAdd, LL(INT64_MAX), C(1), {}, 6},
      {"LongLong / Long is Double", kDiv, LL(1), L(4), Variant(0.25)},
      {"Decimal + Long is Decimal", kAdd, Dec("1234567890.1234567891"), L(1),
       Dec("1234567891.1234567891")},
      {"Decimal + Double", kAdd, Dec("0.1"), Variant(0.2), Dec("0.3")},
      {"Decimal * Currency", kMul, Dec("1.5"), C(20000), Dec("3")},
      {"Date + Decimal is Decimal", kAdd, D(1), Dec("0.5"), Dec("1.5")},
      {"text - Decimal reads the text exactly", kSub, Variant("12345678901234567.5"), Dec("0.5"),
       Dec("12345678901234567")},
      {"Decimal / Decimal is Decimal", kDiv, Dec("1"), Dec("3"),
       Dec("0.3333333333333333333333333333")},
      {"Long / Decimal", kDiv, L(1), Dec("8"), Dec("0.125")},
      {"Decimal product rounds half to even", kMul, Dec("0.0000000000000000000000000001"),
       Dec("0.5"), Dec("0")},
      {"Decimal product keeps 29 digits", kMul, Dec("7922816251426433759354395033.5"), I(10),
       Dec("79228162514264337593543950335")},
      {"Decimal overflow", kAdd, Dec("79228162514264337593543950335"), L(1), {}, 6},
      {"Decimal x / 0", kDiv, Dec("1"), L(0), {}, 11},
      {"Decimal 0 / 0", kDiv, Dec("0"), I(0), {}, 6},
      {"text & Null", kCat, Variant("x"), Variant::Null(), Variant("x")},
      {"Null & text", kCat, Variant::Null(), Variant("x"), Variant("x")},
      {"Null & Null is Null", kCat, Variant::Null(), Variant::Null(), Variant::Null()},
      {"Empty & Empty is text", kCat, Variant(), Variant(), Variant("")},
      {"numbers & in their text form", kCat, I(1), Variant(2.5), Variant("12.5")},
      {"Boolean & Currency", kCat, Variant(true), C(37500), Variant("True3.75")},
      {"text & Date", kCat, Variant("Qty: "), D(37747.5), Variant("Qty: 5/6/2003 12:00:00 PM")},
      {"long texts", kCat, Variant(std::string(20, 'a')), Variant(std::string(20, 'a')),
       Variant(std::string(40, 'a'))},
  };
  for (const Case& c : cases) {
    try {
      Variant result = c.op(c.a, c.b);
      EXPECT_EQ(c.error, 0) << c.what << ": no error";
      EXPECT_EQ(result, c.expected) << c.what << ": got " << result.TypeName() << " "
                                    << (result.IsNull() ? "Null" : CStr(result));
    } catch (const VbError& error) {
      EXPECT_EQ(error.Number(), c.error) << c.what;
    }
  }
}

}  // namespace
}  // namespace varnel
