// Automation values: the variant that every field value, event argument and
// SQL parameter is held in, with the platform's arithmetic and conversions.
//
//   varnel::Variant qty(int32_t{3});
//   varnel::Variant price(varnel::Currency{12500});   // 1.25
//   varnel::Variant amount = qty * price;            // Currency 3.75
//   std::string text = varnel::CStr(amount);         // "3.75"
//
// A Variant is 16 bytes: an 8-byte payload and a tag. Text up to 14 bytes is
// held inline; longer text lives in an immutable, reference-counted block, so
// copying a Variant never copies characters.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include "varnel/export.h"

VARNEL_API_BEGIN

namespace varnel {

// The platform's variant type numbers (VarType).
enum VbVarType : int32_t {
  vbEmpty = 0,
  vbNull = 1,
  vbInteger = 2,
  vbLong = 3,
  vbDouble = 5,
  vbCurrency = 6,
  vbDate = 7,
  vbString = 8,
  vbBoolean = 11,
};

// Days since 1899-12-30; the fraction is the time of day. Date{37747.5} is 2003-05-06 12:00.
struct Date {
  double Value = 0;
  friend bool operator==(const Date&, const Date&) = default;
};

// A count of 1/10000 units: Currency{12345} is 1.2345.
struct Currency {
  int64_t Value = 0;
  friend bool operator==(const Currency&, const Currency&) = default;
};

// A run-time error with the platform's number. The numbers used by the library:
//   5 invalid procedure call or argument, 6 overflow, 9 subscript out of range,
//   11 division by zero, 13 type mismatch, 91 object variable not set,
//   94 invalid use of Null, 2103 no current record,
//   3706 provider cannot be found, -2147467259 database provider error.
class VbError : public std::runtime_error {
 public:
  VbError(int32_t Number, std::string Description);
  int32_t Number() const { return number_; }
  const std::string& Description() const { return description_; }

 private:
  int32_t number_;
  std::string description_;
};

// Raises VbError with the platform's standard description for Number.
[[noreturn]] void RaiseError(int32_t Number);

class Variant {
 public:
  Variant() noexcept { tag_ = Tag::Empty; bits_ = 0; }
  static Variant Null() noexcept;
  Variant(bool Value) noexcept;
  Variant(int16_t Value) noexcept;
  Variant(int32_t Value) noexcept;
  Variant(double Value) noexcept;
  Variant(Currency Value) noexcept;
  Variant(Date Value) noexcept;
  Variant(const char* Value);
  Variant(std::string_view Value);
  Variant(const std::string& Value) : Variant(std::string_view(Value)) {}

  Variant(const Variant& Other) noexcept;
  Variant(Variant&& Other) noexcept;
  Variant& operator=(const Variant& Other) noexcept;
  Variant& operator=(Variant&& Other) noexcept;
  ~Variant() { Release(); }

  VbVarType VarType() const noexcept;
  std::string TypeName() const;
  bool IsEmpty() const noexcept { return tag_ == Tag::Empty; }
  bool IsNull() const noexcept { return tag_ == Tag::Null; }
  bool IsBlank() const noexcept { return tag_ <= Tag::Null; }  // Empty or Null
  bool IsString() const noexcept { return tag_ == Tag::SmallString || tag_ == Tag::HeapString; }
  bool IsNumber() const noexcept;  // Integer, Long, Double, Currency (not Boolean, Date)

  // Raw payloads; each REQUIRES the matching VarType().
  int16_t AsInteger() const noexcept;
  int32_t AsLong() const noexcept;
  double AsDouble() const noexcept;
  Currency AsCurrency() const noexcept;
  Date AsDate() const noexcept;
  bool AsBoolean() const noexcept;
  // The characters of a String; valid while this Variant lives unchanged.
  std::string_view StringView() const noexcept;

  // Conversions by the platform's rules; failures raise VbError (13, 6, 94).
  std::string ToString() const;  // CStr
  double ToDouble() const;       // CDbl
  int32_t ToLong() const;        // CLng (banker's rounding)
  bool ToBool() const;           // CBool
  Currency ToCurrency() const;   // CCur
  Date ToDate() const;           // CDate

  // Same kind and same value (Empty == Empty, Null == Null).
  friend bool operator==(const Variant& A, const Variant& B) noexcept;

 private:
  enum class Tag : uint8_t {
    Empty,
    Null,
    Integer,
    Long,
    Double,
    Currency,
    Date,
    Boolean,
    SmallString,
    HeapString,
  };
  struct HeapText;
  void Release() noexcept;
  void AssignString(std::string_view Text);
  const HeapText* Heap() const noexcept;

  // bits_ holds numbers, or the HeapText pointer, or the first 8 inline chars;
  // small_ holds inline chars 8..13 and the inline length.
  uint64_t bits_;
  char small_[6];
  uint8_t small_size_;
  Tag tag_;
};

static_assert(sizeof(Variant) == 16, "a Variant must stay 16 bytes");

// The platform's operators. Text + text concatenates; Null propagates; / is floating.
Variant operator+(const Variant& A, const Variant& B);
Variant operator-(const Variant& A, const Variant& B);
Variant operator*(const Variant& A, const Variant& B);
Variant operator/(const Variant& A, const Variant& B);
// The & operator: both sides as text, Null taken as "".
Variant Concat(const Variant& A, const Variant& B);

// "New equals Old" as the value store needs it: numbers (Integer, Long, Double,
// Currency, Boolean) compare by value across kinds, text by exact characters,
// dates by value. Blank values compare equal only to blank values.
bool ValuesEqual(const Variant& A, const Variant& B) noexcept;

// Numeric test: blanks around, a sign, thousands separators, a point, an exponent.
bool IsNumeric(const Variant& Value);
bool IsNumeric(std::string_view Text);
// The leading-number reading: "1,000" gives 1, "12abc" gives 12, "abc" gives 0.
double Val(const std::string& Text);
// The standard text form (CStr): 1.5 -> "1.5", 1E+16 -> "1E+16", True -> "True".
std::string CStr(const Variant& Value);
// A date from a Date, a number (date serial) or text (m/d/yyyy, yyyy-mm-dd, times).
Date CDate(const Variant& Value);
// Format with a date pattern ("mm/dd/yyyy hh:nn:ss", "yyyy-mm-dd hh:nn:00",
// "mm/dd/yyyy", "hh:nn:ss", "hh:nn:00", ...). Tokens: yyyy mm dd hh nn ss, others literal.
std::string Format(const Variant& Value, const std::string& Pattern);
// ISO 8601 text "yyyy-mm-dd hh:nn:ss" of a date.
std::string IsoDate(Date Value);

}  // namespace varnel

VARNEL_API_END
