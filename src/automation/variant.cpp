// The Variant's storage: inline numbers and short text, shared immutable
// blocks for long text. Copying and destroying are on the hot path of loading
// whole tables, so they are a 16-byte copy plus, for long text only, one
// atomic count.
#include "varnel/variant.h"

#include <atomic>
#include <cassert>
#include <cstddef>
#include <cstring>
#include <new>

namespace varnel {

namespace {
constexpr size_t kInlineChars = 14;  // 8 in bits_, 6 in small_
}  // namespace

// The characters follow the header in the same allocation and never change,
// so every copy shares them.
struct Variant::HeapText {
  mutable std::atomic<uint32_t> refs;
  size_t size;
  const char* Chars() const { return reinterpret_cast<const char*>(this + 1); }
  char* Chars() { return reinterpret_cast<char*>(this + 1); }
};

Variant Variant::Null() noexcept {
  Variant value;
  value.tag_ = Tag::Null;
  return value;
}

Variant::Variant(bool Value) noexcept : bits_(Value ? 1 : 0), tag_(Tag::Boolean) {}

Variant::Variant(int16_t Value) noexcept : bits_(0), tag_(Tag::Integer) {
  std::memcpy(&bits_, &Value, sizeof Value);
}

Variant::Variant(int32_t Value) noexcept : bits_(0), tag_(Tag::Long) {
  std::memcpy(&bits_, &Value, sizeof Value);
}

Variant::Variant(int64_t Value) noexcept : tag_(Tag::LongLong) {
  std::memcpy(&bits_, &Value, sizeof Value);
}

// The low 64 bits in bits_; the high 32 bits, the scale and the sign in small_.
Variant::Variant(Decimal Value) noexcept : bits_(Value.Lo), small_size_(0), tag_(Tag::Decimal) {
  assert(Value.Scale <= 28);
  std::memcpy(small_, &Value.Hi, sizeof Value.Hi);
  small_[4] = static_cast<char>(Value.Scale);
  small_[5] = static_cast<char>((Value.Negative && (Value.Lo != 0 || Value.Hi != 0)) ? 1 : 0);
}

Variant::Variant(double Value) noexcept : tag_(Tag::Double) {
  std::memcpy(&bits_, &Value, sizeof Value);
}

Variant::Variant(Currency Value) noexcept : tag_(Tag::Currency) {
  std::memcpy(&bits_, &Value.Value, sizeof Value.Value);
}

Variant::Variant(Date Value) noexcept : tag_(Tag::Date) {
  std::memcpy(&bits_, &Value.Value, sizeof Value.Value);
}

Variant::Variant(const char* Value) { AssignString(Value ? std::string_view(Value) : ""); }

Variant::Variant(std::string_view Value) { AssignString(Value); }

void Variant::AssignString(std::string_view Text) {
  static_assert(offsetof(Variant, bits_) == 0 && offsetof(Variant, small_) == 8,
                "inline text must be contiguous from the start of the Variant");
  if (Text.size() <= kInlineChars) {
    bits_ = 0;
    std::memset(small_, 0, sizeof small_);
    if (!Text.empty()) {  // an empty view may hold a null pointer
      std::memcpy(reinterpret_cast<char*>(this), Text.data(), Text.size());
    }
    small_size_ = static_cast<uint8_t>(Text.size());
    tag_ = Tag::SmallString;
    return;
  }
  void* block = ::operator new(sizeof(HeapText) + Text.size());
  HeapText* heap = new (block) HeapText{{1}, Text.size()};
  std::memcpy(heap->Chars(), Text.data(), Text.size());
  bits_ = reinterpret_cast<uintptr_t>(heap);
  small_size_ = 0;
  tag_ = Tag::HeapString;
}

const Variant::HeapText* Variant::Heap() const noexcept {
  return reinterpret_cast<const HeapText*>(static_cast<uintptr_t>(bits_));
}

void Variant::Release() noexcept {
  if (tag_ != Tag::HeapString) {
    return;
  }
  const HeapText* heap = Heap();
  if (heap->refs.fetch_sub(1, std::memory_order_acq_rel) == 1) {
    heap->~HeapText();
    ::operator delete(const_cast<HeapText*>(heap));
  }
}

Variant::Variant(const Variant& Other) noexcept {
  std::memcpy(static_cast<void*>(this), &Other, sizeof(Variant));
  if (tag_ == Tag::HeapString) {
    Heap()->refs.fetch_add(1, std::memory_order_relaxed);
  }
}

Variant::Variant(Variant&& Other) noexcept {
  std::memcpy(static_cast<void*>(this), &Other, sizeof(Variant));
  Other.tag_ = Tag::Empty;
  Other.bits_ = 0;
}

Variant& Variant::operator=(const Variant& Other) noexcept {
  // Counting the new block first keeps self-assignment safe.
  if (Other.tag_ == Tag::HeapString) {
    Other.Heap()->refs.fetch_add(1, std::memory_order_relaxed);
  }
  Release();
  std::memcpy(static_cast<void*>(this), &Other, sizeof(Variant));
  return *this;
}

Variant& Variant::operator=(Variant&& Other) noexcept {
  if (this != &Other) {
    Release();
    std::memcpy(static_cast<void*>(this), &Other, sizeof(Variant));
    Other.tag_ = Tag::Empty;
    Other.bits_ = 0;
  }
  return *this;
}

VbVarType Variant::VarType() const noexcept {
  switch (tag_) {
    case Tag::Empty:
      return vbEmpty;
    case Tag::Null:
      return vbNull;
    case Tag::Integer:
      return vbInteger;
    case Tag::Long:
      return vbLong;
    case Tag::Double:
      return vbDouble;
    case Tag::Currency:
      return vbCurrency;
    case Tag::Date:
      return vbDate;
    case Tag::Boolean:
      return vbBoolean;
    case Tag::LongLong:
      return vbLongLong;
    case Tag::Decimal:
      return vbDecimal;
    case Tag::SmallString:
    case Tag::HeapString:
      return vbString;
  }
  return vbEmpty;
}

std::string Variant::TypeName() const {
  switch (VarType()) {
    case vbEmpty:
      return "Empty";
    case vbNull:
      return "Null";
    case vbInteger:
      return "Integer";
    case vbLong:
      return "Long";
    case vbDouble:
      return "Double";
    case vbCurrency:
      return "Currency";
    case vbDate:
      return "Date";
    case vbString:
      return "String";
    case vbBoolean:
      return "Boolean";
    case vbLongLong:
      return "LongLong";
    case vbDecimal:
      return "Decimal";
  }
  return "Empty";
}

bool Variant::IsNumber() const noexcept {
  return tag_ == Tag::Integer || tag_ == Tag::Long || tag_ == Tag::Double ||
         tag_ == Tag::Currency || tag_ == Tag::LongLong || tag_ == Tag::Decimal;
}

std::string_view Variant::StringView() const noexcept {
  if (tag_ == Tag::SmallString) {
    return std::string_view(reinterpret_cast<const char*>(this), small_size_);
  }
  if (tag_ == Tag::HeapString) {
    const HeapText* heap = Heap();
    return std::string_view(heap->Chars(), heap->size);
  }
  return std::string_view();
}

bool operator==(const Variant& A, const Variant& B) noexcept {
  if (A.VarType() != B.VarType()) {
    return false;
  }
  switch (A.VarType()) {
    case vbEmpty:
    case vbNull:
      return true;
    case vbInteger:
      return A.AsInteger() == B.AsInteger();
    case vbLong:
      return A.AsLong() == B.AsLong();
    case vbDouble:
      return A.AsDouble() == B.AsDouble();
    case vbDate:
      return A.AsDate() == B.AsDate();
    case vbCurrency:
      return A.AsCurrency() == B.AsCurrency();
    case vbBoolean:
      return A.AsBoolean() == B.AsBoolean();
    case vbLongLong:
      return A.AsLongLong() == B.AsLongLong();
    case vbDecimal:
      return A.AsDecimal() == B.AsDecimal();
    case vbString:
      return A.StringView() == B.StringView();
  }
  return false;
}

}  // namespace varnel
