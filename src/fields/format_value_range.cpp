// The InputMin/InputMax check. Bounds are inclusive; a minimum above the
// maximum accepts the values outside the gap between them ("<= max OR >=
// min"). The refusal names the bounds in the field kind's own text form.
#include <compare>
#include <optional>
#include <string>

#include "fields/format_value.h"
#include "fields/value_formats.h"
#include "varnel/fields.h"
#include "varnel/messages.h"

namespace varnel::internal {
namespace {

bool IsSet(const Variant& bound) {
  return !bound.IsBlank() &&
         !(bound.IsString() && bound.StringView().find_first_not_of(' ') == std::string::npos);
}

// A value or bound read as the field's kind: a key that orders it, and how a
// user reads it.
struct Ordered {
  std::partial_ordering (*compare)(const Ordered&, const Ordered&);
  double number = 0;
  int64_t whole = 0;
  std::string text;
};

std::partial_ordering ByNumber(const Ordered& a, const Ordered& b) { return a.number <=> b.number; }
std::partial_ordering ByWhole(const Ordered& a, const Ordered& b) { return a.whole <=> b.whole; }
std::partial_ordering ByText(const Ordered& a, const Ordered& b) { return a.text <=> b.text; }

// nullopt when the field kind has no order (Booleans, raw values).
std::optional<Ordered> ReadOrdered(const ClsFields& field, const Variant& value) {
  switch (field.FieldType) {
    case F_Numeral: {
      const std::optional<double> n =
          field.NumType == N_Percent ? ReadPercent(value) : ReadNumber(value);
      if (!n) {
        RaiseError(13);
      }
      return Ordered{ByNumber, *n, 0, WriteNumber(*n)};
    }
    case F_Currency: {
      const std::optional<Currency> c = ReadCurrency(value);
      if (!c) {
        RaiseError(13);
      }
      return Ordered{ByWhole, 0, c->Value, WriteCurrency(*c)};
    }
    case F_Date: {
      const std::optional<Date> d = ReadDate(value);
      if (!d) {
        RaiseError(13);
      }
      return Ordered{ByWhole, 0, DateOrder(*d), WriteDate(*d, field.DateType)};
    }
    case F_Text: {
      std::string text = value.IsString() ? std::string(value.StringView()) : CStr(value);
      return Ordered{ByText, 0, 0, std::move(text)};
    }
    default:
      return std::nullopt;
  }
}

Refusal RangeNotice(const ClsFields& field, const std::string& description) {
  return Notice(LoadResString(104) + "'" + ShownName(field) + "'" + description +
                LoadResString(114));
}

}  // namespace

std::optional<Refusal> CheckRange(const ClsFields& field, const Variant& value) {
  const bool has_min = IsSet(field.InputMin), has_max = IsSet(field.InputMax);
  if (!has_min && !has_max) {
    return std::nullopt;
  }
  const std::optional<Ordered> v = ReadOrdered(field, value);
  if (!v) {
    return std::nullopt;
  }
  const std::optional<Ordered> low = has_min ? ReadOrdered(field, field.InputMin) : std::nullopt;
  const std::optional<Ordered> high = has_max ? ReadOrdered(field, field.InputMax) : std::nullopt;
  const bool above_low = !low || v->compare(*v, *low) >= 0;
  const bool below_high = !high || v->compare(*v, *high) <= 0;
  if (low && high && low->compare(*low, *high) > 0) {
    if (above_low || below_high) {
      return std::nullopt;
    }
    return RangeNotice(field, " <= " + high->text + LoadResString(109) + low->text);
  }
  if (above_low && below_high) {
    return std::nullopt;
  }
  if (low && high) {
    return RangeNotice(field, " >= " + low->text + LoadResString(110) + high->text);
  }
  return low ? RangeNotice(field, " >= " + low->text) : RangeNotice(field, " <= " + high->text);
}

}  // namespace varnel::internal
