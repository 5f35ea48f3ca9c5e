// The date kind of the comparison translator. A value is a date the user
// typed (month first or ISO) or TODAY(), optionally followed by +n or -n
// days. Literals are cut to the field's DateType and written in the form its
// database reads. A date typed into a D_YMD field stands for that whole day,
// and into a D_YMDHN field for that whole minute, whatever time the column
// holds: "=" becomes a half-open range, "<=" compares with the next day, ...
#include <charconv>
#include <optional>
#include <string>

#include "db/dialect.h"
#include "fields/value_formats.h"
#include "query/comparison_grammar.h"
#include "query/query_engine.h"
#include "query/term_grammar.h"
#include "varnel/fields.h"
#include "varnel/modules.h"
#include "varnel/recordset.h"

namespace varnel::internal {
namespace {

constexpr std::string_view kToday = "TODAY";

// A trailing "+n" or "-n" (blanks allowed around the sign): the number of
// days and the text before it; nullopt when the text does not end so.
struct DayOffset {
  std::string_view base;
  int64_t days = 0;
};

std::optional<DayOffset> SplitDayOffset(std::string_view text) {
  text = TrimBlanks(text);
  size_t digits = text.size();
  while (digits > 0 && text[digits - 1] >= '0' && text[digits - 1] <= '9') {
    --digits;
  }
  const std::string_view number = text.substr(digits);
  const std::string_view before = TrimRightBlanks(text.substr(0, digits));
  if (number.empty() || number.size() > 7 || before.empty() ||
      (before.back() != '+' && before.back() != '-')) {
    return std::nullopt;
  }
  DayOffset offset{TrimBlanks(before.substr(0, before.size() - 1)), 0};
  std::from_chars(number.data(), number.data() + number.size(), offset.days);
  if (before.back() == '-') {
    offset.days = -offset.days;
  }
  return offset;
}

// "TODAY()" in any letter case, blanks allowed before and inside the parentheses.
bool IsToday(std::string_view text) {
  const std::string compact = CompactUpper(text);
  return compact.size() == kToday.size() + 2 && compact.starts_with(kToday) &&
         compact.ends_with("()");
}

class DateKind final : public ComparisonKind {
 public:
  explicit DateKind(const ClsFields& field)
      : field_(field), dialect_(DateDialectOf(field)), column_(ComparedColumn(field, dialect_)) {}
  ValueKindId id() const override { return ValueKindId::kDate; }

  std::optional<std::string> Compare(CompareOp op, std::string_view value) override {
    const std::optional<Date> typed = ReadTypedDate(value);
    if (!typed) {
      return std::nullopt;
    }
    const Date low = CutToDateType(*typed, field_.DateType);
    if (field_.DateType != D_YMD && field_.DateType != D_YMDHN) {
      return Side(OpText(op), low);
    }
    const std::optional<Date> high = field_.DateType == D_YMD ? AddDays(low, 1) : AddMinute(low);
    if (!high) {
      return std::nullopt;
    }
    return Span(op, low, *high);
  }

 private:
  std::string Side(std::string_view op, Date value) const {
    return column_ + std::string(op) + DateLiteral(value, field_.DateType, dialect_);
  }

  // The comparison with the span [low, high) that the typed value stands for.
  std::string Span(CompareOp op, Date low, Date high) const {
    switch (op) {
      case CompareOp::kEq:
        return "(" + Side(">=", low) + " and " + Side("<", high) + ")";
      case CompareOp::kNe:
        return "(" + Side("<", low) + " or " + Side(">=", high) + ")";
      case CompareOp::kLt:
        return Side("<", low);
      case CompareOp::kLe:
        return Side("<", high);
      case CompareOp::kGt:
        return Side(">=", high);
      case CompareOp::kGe:
        return Side(">=", low);
    }
    return {};
  }

  std::optional<Date> ReadTypedDate(std::string_view value) {
    if (IsToday(value)) {
      return Today();
    }
    if (std::optional<Date> literal = ReadDate(Variant(value))) {
      return literal;
    }
    const std::optional<DayOffset> offset = SplitDayOffset(value);
    if (!offset) {
      return std::nullopt;
    }
    const std::optional<Date> base =
        IsToday(offset->base) ? std::optional<Date>(Today()) : ReadDate(Variant(offset->base));
    return base ? AddDays(*base, offset->days) : std::nullopt;
  }

  // The recordset's date (its clock, which a client may replace), asked once.
  Date Today() {
    if (!today_) {
      today_ =
          field_.Parent ? MdlDataInterface::CurrentDateValue(*field_.Parent, D_YMD) : LocalToday();
    }
    return *today_;
  }

  // The column as a comparison reads it: on a database that keeps dates as
  // text of any shape, in the one shape of its literals.
  static std::string ComparedColumn(const ClsFields& field, DateDialect dialect) {
    if (dialect != DateDialect::kIsoText) {
      return Column(field.Name);
    }
    return db::internal::ComparableDateColumn(Column(field.Name),
                                              field.DateType == D_HNS || field.DateType == D_HN);
  }

  const ClsFields& field_;
  DateDialect dialect_;
  std::string column_;
  std::optional<Date> today_;
};

}  // namespace

std::optional<std::string> TranslateDate(const ClsFields& field, QueryParse& parse) {
  DateKind kind(field);
  return TranslateComparisons(field.QueryValue, field.Name, kind, parse);
}

}  // namespace varnel::internal
