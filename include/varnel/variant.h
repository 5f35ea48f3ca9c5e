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

#include <cassert>
#include <cstdint>
#include <cstring>
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
  vbDecimal = 14,   ///< an exact decimal (Decimal): 28-29 significant digits, scale 0-28
  vbLongLong = 20,  ///< a signed 8-byte integer
};

/// Days since 1899-12-30; the fraction is the time of day. Date{37747.5} is 2003-05-06 12:00.
struct Date {
  double Value = 0;  ///< the day count, with the time of day as its fraction
  /// Same day count.
  friend bool operator==(const Date&, const Date&) = default;
};

/// A count of 1/10000 units: Currency{12345} is 1.2345.
struct Currency {
  int64_t Value = 0;  ///< the amount in 1/10000 units
  /// Same amount.
  friend bool operator==(const Currency&, const Currency&) = default;
};

/// An exact decimal as the platform holds one: the value is the 96-bit magnitude
/// (Hi:Lo) divided by 10^Scale (0-28), negated when Negative. 1.50 is
/// Decimal{150, 0, 2, false}. Equality (==) compares values: 1.5 == 1.50.
struct Decimal {
  uint64_t Lo = 0;        ///< the low 64 bits of the magnitude
  uint32_t Hi = 0;        ///< the high 32 bits of the magnitude
  uint8_t Scale = 0;      ///< the count of decimal places, 0-28
  bool Negative = false;  ///< true for a value below zero (a zero is never negative)
  /// True when both stand for the same number, whatever their scales.
  friend bool operator==(const Decimal& A, const Decimal& B) noexcept;
};

/// A run-time error with the platform's number (errors.h names them all). Among them:
//   5 invalid procedure call or argument, 6 overflow, 9 subscript out of range,
//   11 division by zero, 13 type mismatch, 91 object variable not set,
//   94 invalid use of Null, 2103 no current record,
//   3706 provider cannot be found, -2147467259 database provider error.
class VbError : public std::runtime_error {
 public:
  /// An error with its number and the description shown to the user.
  VbError(int32_t Number, std::string Description);
  /// The run-time error number (5, 6, 13, ... or -2147467259 for the database).
  int32_t Number() const { return number_; }
  /// The description, in the thread's language where the library wrote it.
  const std::string& Description() const { return description_; }

 private:
  int32_t number_;
  std::string description_;
};

/// Raises VbError with the platform's standard description for Number.
[[noreturn]] void RaiseError(int32_t Number);

/// One automation value: Empty, Null, a number, a date, text or a Boolean, in 16 bytes.
class Variant {
 public:
  /// Empty.
  Variant() noexcept { tag_ = Tag::Empty; bits_ = 0; }
  /// A Null value.
  static Variant Null() noexcept;
  /// A Boolean (held as the automation value: True is -1).
  Variant(bool Value) noexcept;
  /// An Integer (16-bit).
  Variant(int16_t Value) noexcept;
  /// A Long (32-bit).
  Variant(int32_t Value) noexcept;
  /// A LongLong. Pass an int64_t (a `long long` argument needs a cast: it is
  /// as near to int32_t and double as to int64_t).
  Variant(int64_t Value) noexcept;
  /// A Double.
  Variant(double Value) noexcept;
  /// A Decimal, kept bit for bit (REQUIRES Value.Scale <= 28). A negative
  /// zero is stored as zero.
  Variant(Decimal Value) noexcept;
  /// A Currency.
  Variant(Currency Value) noexcept;
  /// A Date.
  Variant(Date Value) noexcept;
  /// A String (UTF-8).
  Variant(const char* Value);
  /// A String (UTF-8).
  Variant(std::string_view Value);
  /// A String (UTF-8).
  Variant(const std::string& Value) : Variant(std::string_view(Value)) {}

  /// A copy; text is shared, never copied character by character.
  Variant(const Variant& Other) noexcept;
  /// Takes Other's value; Other becomes Empty.
  Variant(Variant&& Other) noexcept;
  /// Copies Other's value.
  Variant& operator=(const Variant& Other) noexcept;
  /// Takes Other's value; Other becomes Empty.
  Variant& operator=(Variant&& Other) noexcept;
  ~Variant() { Release(); }

  /// The kind held (VarType).
  VbVarType VarType() const noexcept;
  /// The kind's name: "Empty", "Null", "Long", "String", ...
  std::string TypeName() const;
  /// True when Empty.
  bool IsEmpty() const noexcept { return tag_ == Tag::Empty; }
  /// True when Null.
  bool IsNull() const noexcept { return tag_ == Tag::Null; }
  /// True when Empty or Null.
  bool IsBlank() const noexcept { return tag_ <= Tag::Null; }
  /// True when a String.
  bool IsString() const noexcept { return tag_ == Tag::SmallString || tag_ == Tag::HeapString; }
  /// True for Integer, Long, LongLong, Double, Currency and Decimal (not Boolean, Date).
  bool IsNumber() const noexcept;

  /// The value of an Integer (REQUIRES VarType() == vbInteger).
  int16_t AsInteger() const noexcept {
    assert(tag_ == Tag::Integer);
    return Payload<int16_t>();
  }
  /// The value of a Long (REQUIRES VarType() == vbLong).
  int32_t AsLong() const noexcept {
    assert(tag_ == Tag::Long);
    return Payload<int32_t>();
  }
  /// The value of a LongLong (REQUIRES VarType() == vbLongLong).
  int64_t AsLongLong() const noexcept {
    assert(tag_ == Tag::LongLong);
    return Payload<int64_t>();
  }
  /// The value of a Double (REQUIRES VarType() == vbDouble).
  double AsDouble() const noexcept {
    assert(tag_ == Tag::Double);
    return Payload<double>();
  }
  /// The value of a Decimal (REQUIRES VarType() == vbDecimal).
  Decimal AsDecimal() const noexcept {
    assert(tag_ == Tag::Decimal);
    Decimal value;
    value.Lo = bits_;
    std::memcpy(&value.Hi, small_, sizeof value.Hi);
    value.Scale = static_cast<uint8_t>(small_[4]);
    value.Negative = small_[5] != 0;
    return value;
  }
  /// The value of a Currency (REQUIRES VarType() == vbCurrency).
  Currency AsCurrency() const noexcept {
    assert(tag_ == Tag::Currency);
    return Currency{Payload<int64_t>()};
  }
  /// The value of a Date (REQUIRES VarType() == vbDate).
  Date AsDate() const noexcept {
    assert(tag_ == Tag::Date);
    return Date{Payload<double>()};
  }
  /// The value of a Boolean (REQUIRES VarType() == vbBoolean).
  bool AsBoolean() const noexcept {
    assert(tag_ == Tag::Boolean);
    return bits_ != 0;
  }
  /// The characters of a String; valid while this Variant lives unchanged.
  std::string_view StringView() const noexcept;

  /// CStr: the standard text form. Conversions raise VbError 13, 6 or 94 when they fail.
  std::string ToString() const;
  /// CDbl: the value as a Double.
  double ToDouble() const;
  /// CLng: the value as a Long, rounded half to even.
  int32_t ToLong() const;
  /// CLngLng: whole numbers exactly, others rounded half to even; text is read
  /// exactly ("9007199254740993"). Raises 6 beyond the 8-byte range, 13, 94.
  int64_t ToLongLong() const;
  /// CDec: the exact decimal of the value (a Double by its 15 significant
  /// digits, text by up to 29). Raises 6 beyond +-79228162514264337593543950335, 13, 94.
  Decimal ToDecimal() const;
  /// CBool: zero is False, any other number True; "True"/"False" text.
  bool ToBool() const;
  /// CCur: the value in 1/10000 units, rounded half to even.
  Currency ToCurrency() const;
  /// CDate: a date from a Date, a date serial or date text.
  Date ToDate() const;

  /// Same kind and same value (Empty == Empty, Null == Null).
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
    LongLong,
    Decimal,
    SmallString,
    HeapString,
  };
  struct HeapText;
  void Release() noexcept;
  void AssignString(std::string_view Text);
  const HeapText* Heap() const noexcept;
  // The first sizeof(T) payload bytes read as T; the As* accessors check the kind.
  template <typename T>
  T Payload() const noexcept {
    T value;
    std::memcpy(&value, &bits_, sizeof value);
    return value;
  }

  // bits_ holds numbers (a Decimal's low 64 bits), or the HeapText pointer, or
  // the first 8 inline chars; small_ holds inline chars 8..13 (a Decimal's high
  // 32 bits, scale and sign) and small_size_ the inline length.
  uint64_t bits_;
  char small_[6];
  uint8_t small_size_;
  Tag tag_;
};

// Declared again outside the classes: a friend declaration alone does not
// export the operator from a shared library.
bool operator==(const Decimal& A, const Decimal& B) noexcept;
bool operator==(const Variant& A, const Variant& B) noexcept;

static_assert(sizeof(Variant) == 16, "a Variant must stay 16 bytes");

// The platform's operators. Text + text concatenates; Null propagates; / is
// floating, or a Decimal when either side is one. The result takes the most
// precise kind: Integer < Long < LongLong < Double < Currency < Date < Decimal.
Variant operator+(const Variant& A, const Variant& B);
Variant operator-(const Variant& A, const Variant& B);
Variant operator*(const Variant& A, const Variant& B);
Variant operator/(const Variant& A, const Variant& B);
// The & operator: both sides as text, Null taken as "".
Variant Concat(const Variant& A, const Variant& B);

// "New equals Old" as the value store needs it: numbers (Integer, Long,
// LongLong, Double, Currency, Decimal, Boolean) compare by value across kinds, text by exact
// characters, dates by value. Blank values compare equal only to blank values.
bool ValuesEqual(const Variant& A, const Variant& B) noexcept;

// Numeric test: blanks around, a sign, thousands separators, a point, an exponent.
bool IsNumeric(const Variant& Value);
bool IsNumeric(std::string_view Text);
// The leading-number reading: "1,000" gives 1, "12abc" gives 12, "abc" gives 0.
double Val(const std::string& Text);
// The standard text form (CStr): 1.5 -> "1.5", 1E+16 -> "1E+16", True -> "True";
// a LongLong or a Decimal with all its digits and no exponent.
std::string CStr(const Variant& Value);
/// CLngLng: the value as an 8-byte integer (see Variant::ToLongLong).
int64_t CLngLng(const Variant& Value);
/// CDec: the value as an exact decimal (see Variant::ToDecimal).
Decimal CDec(const Variant& Value);
// A date from a Date, a number (date serial) or text (m/d/yyyy, yyyy-mm-dd, times).
Date CDate(const Variant& Value);
// Format with a date pattern ("mm/dd/yyyy hh:nn:ss", "yyyy-mm-dd hh:nn:00",
// "mm/dd/yyyy", "hh:nn:ss", "hh:nn:00", ...). Tokens: yyyy mm dd hh nn ss, others literal.
std::string Format(const Variant& Value, const std::string& Pattern);
// ISO 8601 text "yyyy-mm-dd hh:nn:ss" of a date.
std::string IsoDate(Date Value);

}  // namespace varnel

VARNEL_API_END
