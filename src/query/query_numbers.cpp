// The numeric and currency kinds of the comparison translator: a value is
// read as the field kind reads it and written back in its plain number form,
// so that only digits, a sign, a point and an exponent reach the SQL.
#include <optional>
#include <string>

#include "fields/value_formats.h"
#include "query/comparison_grammar.h"
#include "query/query_engine.h"
#include "query/term_grammar.h"
#include "varnel/fields.h"

namespace varnel::internal {
namespace {

class NumberKind final : public ComparisonKind {
 public:
  NumberKind(std::string_view name, Enum_NumType type) : column_(Column(name)), type_(type) {}
  ValueKindId id() const override { return ValueKindId::kNumber; }
  std::optional<std::string> Compare(CompareOp op, std::string_view value) override {
    const Variant typed{value};
    // Every digit: a 16-digit account number must not become 1.23456789012346E+15.
    const std::optional<Variant> number =
        type_ == N_Percent ? ReadExactPercent(typed) : ReadExactNumber(typed);
    return number ? std::optional(column_ + std::string(OpText(op)) + WriteExactNumber(*number))
                  : std::nullopt;
  }

 private:
  std::string column_;
  Enum_NumType type_;
};

class CurrencyKind final : public ComparisonKind {
 public:
  explicit CurrencyKind(std::string_view name) : column_(Column(name)) {}
  ValueKindId id() const override { return ValueKindId::kCurrency; }
  std::optional<std::string> Compare(CompareOp op, std::string_view value) override {
    const std::optional<Currency> amount = ReadCurrency(Variant(value));
    if (!amount) {
      return std::nullopt;
    }
    return column_ + std::string(OpText(op)) + WriteCurrency(*amount);
  }

 private:
  std::string column_;
};

}  // namespace

std::optional<std::string> TranslateNumber(const ClsFields& field, QueryParse& parse) {
  NumberKind kind(field.Name, field.NumType);
  return TranslateComparisons(field.QueryValue, field.Name, kind, parse);
}

std::optional<std::string> TranslateCurrency(const ClsFields& field, QueryParse& parse) {
  CurrencyKind kind(field.Name);
  return TranslateComparisons(field.QueryValue, field.Name, kind, parse);
}

}  // namespace varnel::internal
