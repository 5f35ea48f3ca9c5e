// Column totals. A recount adds the rows in order, and the platform's
// addition makes the kind of its result depend on that order: Long addends
// give a Long total only while every running total stays within Long (past
// it the total turns Double), and Double addends round at every step. So a
// difference is applied only to totals whose result is known without the
// order: whole numbers of units (Long totals, currency fields' Currency
// totals) whose positive and negative addends, summed apart, stay in range,
// since every running total lies between those two sums. Double totals,
// numeric text and Currency values in a non-currency field are recounted.
#include "recordset/column_total.h"

#include <utility>
#include <vector>

#include "fields/field_access.h"

namespace varnel::internal {
namespace {

// The units a total can be followed in: whole numbers (a Long total) or
// 1/10000 (the Currency total of a currency field).
enum class TotalUnits { Whole, Currency };

TotalUnits UnitsOf(const ClsFields& field) {
  return field.FieldType == F_Currency ? TotalUnits::Currency : TotalUnits::Whole;
}

Variant Zero(TotalUnits units) {
  return units == TotalUnits::Currency ? Variant(Currency{0}) : Variant(int32_t{0});
}

// An addend as a count of units; nullopt when it is not a whole number of
// them (a Double, numeric text, a Currency value in a non-currency field).
std::optional<__int128> AddendUnits(const Variant& addend, TotalUnits units) {
  switch (addend.VarType()) {
    case vbInteger:
      return units == TotalUnits::Whole ? std::optional<__int128>(addend.AsInteger())
                                        : std::nullopt;
    case vbLong:
      return units == TotalUnits::Whole ? std::optional<__int128>(addend.AsLong()) : std::nullopt;
    case vbCurrency:
      return units == TotalUnits::Currency ? std::optional<__int128>(addend.AsCurrency().Value)
                                           : std::nullopt;
    default:
      return std::nullopt;
  }
}

// No addend counts as 0 units.
std::optional<__int128> AddendUnits(const std::optional<Variant>& addend, TotalUnits units) {
  return addend ? AddendUnits(*addend, units) : std::optional<__int128>(0);
}

ClsFields& FieldAt(RecordsetState& rs, size_t field_index) {
  if (field_index >= rs.fields.size()) {
    RaiseError(9);
  }
  return *rs.fields[field_index];
}

bool InRange(__int128 value, TotalUnits units) {
  return units == TotalUnits::Currency ? value >= INT64_MIN && value <= INT64_MAX
                                       : value >= INT32_MIN && value <= INT32_MAX;
}

void Shift(ColumnTotalRecord& record, __int128 addend, int sign) {
  (addend > 0 ? record.positive : record.negative) += sign * addend;
}

// The record describes the total: both are whole units of the field's kind,
// and the two sums of the record add up to it.
bool RecordMatches(const ColumnTotalRecord& record, const Variant& total, TotalUnits units) {
  if (!record.spanned) {
    return false;
  }
  const VbVarType kind = units == TotalUnits::Currency ? vbCurrency : vbLong;
  const std::optional<__int128> value = AddendUnits(total, units);
  return total.VarType() == kind && value && *value == record.positive + record.negative;
}

// Takes removed off and puts added on the total when the result is certain
// to equal a recount; false, with nothing changed, when it is not.
bool ApplyDifference(RecordsetState& rs, ClsFields& field, const std::optional<Variant>& removed,
                     const std::optional<Variant>& added) {
  const auto found = rs.column_totals.find(&field);
  const TotalUnits units = UnitsOf(field);
  if (!field.IsSum || found == rs.column_totals.end() ||
      !RecordMatches(found->second, field.SumValue, units)) {
    return false;
  }
  const std::optional<__int128> removed_units = AddendUnits(removed, units);
  const std::optional<__int128> added_units = AddendUnits(added, units);
  if (!removed_units || !added_units || !InRange(*added_units - *removed_units, units)) {
    return false;
  }
  ColumnTotalRecord next = found->second;
  Shift(next, *removed_units, -1);
  Shift(next, *added_units, 1);
  if (!InRange(next.positive, units) || !InRange(next.negative, units)) {
    return false;  // a running total of the recount could leave the range
  }
  const Variant difference = added.value_or(Zero(units)) - removed.value_or(Zero(units));
  field.SumValue = field.SumValue + difference;
  found->second = next;
  return true;
}

}  // namespace

std::optional<Variant> TotalAddend(const ClsFields& field, const Variant& value) {
  if (!value.IsNumber() && !(value.IsString() && IsNumeric(value))) {
    return std::nullopt;
  }
  return field.FieldType == F_Currency ? Variant(value.ToCurrency()) : value;
}

void RecountTotal(RecordsetState& rs, size_t field_index) {
  ClsFields& field = FieldAt(rs, field_index);
  if (!field.IsSum) {
    field.SumValue = Variant::Null();
    return;
  }
  ColumnTotalRecord& record = rs.column_totals[&field];
  const uint64_t recounts = record.recounts + 1;
  record = ColumnTotalRecord{recounts};
  const TotalUnits units = UnitsOf(field);
  Variant total = Zero(units);
  ColumnTotalRecord counted{recounts, true};
  const std::vector<Variant>& values = FieldAccess::Values(field);
  for (size_t row = 1; row < values.size(); ++row) {
    if (const std::optional<Variant> addend = TotalAddend(field, values[row])) {
      total = total + *addend;
      const std::optional<__int128> addend_units = AddendUnits(*addend, units);
      counted.spanned = counted.spanned && addend_units.has_value();
      if (counted.spanned) {
        Shift(counted, *addend_units, 1);
      }
    }
  }
  field.SumValue = std::move(total);
  record = counted;
}

void AdjustTotal(RecordsetState& rs, size_t field_index, const Variant& old_value,
                 const Variant& new_value) {
  ClsFields& field = FieldAt(rs, field_index);
  if (!ApplyDifference(rs, field, TotalAddend(field, old_value), TotalAddend(field, new_value))) {
    RecountTotal(rs, field_index);
  }
}

void AddAppendedValue(RecordsetState& rs, size_t field_index, const Variant& value) {
  ClsFields& field = FieldAt(rs, field_index);
  if (!field.IsSum) {
    return;
  }
  if (!field.SumValue.IsNumber()) {
    RecountTotal(rs, field_index);  // no running total to add to
    return;
  }
  const std::optional<Variant> addend = TotalAddend(field, value);
  if (!addend) {
    return;
  }
  const auto found = rs.column_totals.find(&field);
  if (found != rs.column_totals.end()) {
    ColumnTotalRecord& record = found->second;
    const std::optional<__int128> units = AddendUnits(*addend, UnitsOf(field));
    if (units && RecordMatches(record, field.SumValue, UnitsOf(field))) {
      Shift(record, *units, 1);
    } else {
      record.spanned = false;
    }
  }
  field.SumValue = field.SumValue + *addend;
}

uint64_t TotalRecounts(const RecordsetState& rs, const ClsFields& field) {
  const auto found = rs.column_totals.find(&field);
  return found == rs.column_totals.end() ? 0 : found->second.recounts;
}

}  // namespace varnel::internal
