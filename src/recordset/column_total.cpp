// Column totals kept by contributions. A row contributes its value to the
// field's sum over every row, to the sum over the selected rows while its
// mark is set, and to the sums of its symbol. Each event moves exactly the
// contributions it changes; the sums are exact (exact_sum.h), so the result
// is the recount's whatever the order of events.
#include "recordset/column_total.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "fields/field_access.h"
#include "fields/field_values.h"
#include "recordset/row_store.h"

namespace varnel::internal {
namespace {

TotalUnits UnitsOf(const ClsFields& field) {
  return field.FieldType == F_Currency ? TotalUnits::Currency : TotalUnits::Whole;
}

ClsFields& FieldAt(RecordsetState& rs, size_t field_index) {
  if (field_index >= rs.fields.size()) {
    RaiseError(9);
  }
  return *rs.fields[field_index];
}

std::string SymbolKey(const Variant& symbol) { return symbol.IsBlank() ? "" : CStr(symbol); }

const Variant& ValueAt(const ClsFields& field, int32_t row) {
  static const Variant kEmpty;
  const std::vector<Variant>& values = FieldAccess::Values(field);
  return row >= 0 && static_cast<size_t>(row) < values.size() ? values[row] : kEmpty;
}

bool Selected(const RecordsetState& rs, int32_t row) {
  return row >= 0 && static_cast<size_t>(row) < rs.select_marks.size() && rs.select_marks[row];
}

SymbolSums& SumsOf(ColumnTotalRecord& record, const std::string& symbol) {
  for (SymbolSums& sums : record.by_symbol) {
    if (sums.symbol == symbol) {
      return sums;
    }
  }
  record.by_symbol.push_back(SymbolSums{symbol, {}, {}});
  return record.by_symbol.back();
}

// The record counted for this field as it is now, and whether it was
// recounted just now (it then already holds every stored value and mark).
struct CurrentRecord {
  ColumnTotalRecord* record = nullptr;
  const ClsFields* companion = nullptr;
  bool fresh = false;
};

bool Describes(const ColumnTotalRecord& record, const ClsFields& field,
               const std::shared_ptr<ClsFields>& companion) {
  return !record.owner.expired() && record.units == UnitsOf(field) &&
         record.has_companion == (companion != nullptr) &&
         (!companion || record.companion.lock() == companion);
}

CurrentRecord Current(RecordsetState& rs, size_t index) {
  ClsFields& field = *rs.fields[index];
  const std::shared_ptr<ClsFields> companion = FindCompanion(field);
  const auto found = rs.column_totals.find(&field);
  if (found != rs.column_totals.end() && Describes(found->second, field, companion)) {
    return {&found->second, companion.get(), false};
  }
  RecountTotal(rs, index);
  return {&rs.column_totals.at(&field), companion.get(), true};
}

// Puts the value of row on (sign 1) or takes it off (sign -1).
void Contribute(RecordsetState& rs, const CurrentRecord& current, const Variant& value,
                const std::string* symbol, int32_t row, int sign) {
  ColumnTotalRecord& record = *current.record;
  const bool selected = Selected(rs, row);
  record.all.Add(value, record.units, sign);
  if (selected) {
    record.selected.Add(value, record.units, sign);
  }
  if (current.companion != nullptr) {
    SymbolSums& sums =
        SumsOf(record, symbol ? *symbol : SymbolKey(ValueAt(*current.companion, row)));
    sums.all.Add(value, record.units, sign);
    if (selected) {
      sums.selected.Add(value, record.units, sign);
    }
  }
}

void Publish(ClsFields& field, const ColumnTotalRecord& record) {
  field.SumValue = record.all.Total(record.units);
}

// Calls visit(index, current) for every summed field whose totals were not
// recounted just now.
template <class Visit>
void ForEachSummed(RecordsetState& rs, Visit visit, bool include_fresh = false) {
  for (size_t i = 0; i < rs.fields.size(); ++i) {
    if (!rs.fields[i]->IsSum) {
      continue;
    }
    const CurrentRecord current = Current(rs, i);
    if (!current.fresh || include_fresh) {
      visit(i, current);
    }
  }
}

void RowContributes(RecordsetState& rs, int32_t row, int sign) {
  if (row < 1) {
    return;
  }
  // A row that leaves is still counted by a recount made here.
  ForEachSummed(
      rs,
      [&](size_t i, const CurrentRecord& current) {
        Contribute(rs, current, ValueAt(*rs.fields[i], row), nullptr, row, sign);
        Publish(*rs.fields[i], *current.record);
      },
      sign < 0);
}

}  // namespace

void RecountTotal(RecordsetState& rs, size_t field_index) {
  ClsFields& field = FieldAt(rs, field_index);
  if (!field.IsSum) {
    field.SumValue = Variant::Null();
    rs.column_totals.erase(&field);
    return;
  }
  ColumnTotalRecord& record = rs.column_totals[&field];
  const std::shared_ptr<ClsFields> companion = FindCompanion(field);
  record = ColumnTotalRecord{
      rs.fields[field_index], companion, companion != nullptr, UnitsOf(field), {}, {}, {},
      record.recounts + 1};
  const CurrentRecord current{&record, companion.get(), true};
  const std::vector<Variant>& values = FieldAccess::Values(field);
  for (size_t row = 1; row < values.size(); ++row) {
    Contribute(rs, current, values[row], nullptr, static_cast<int32_t>(row), 1);
  }
  Publish(field, record);
}

void EnsureTotal(RecordsetState& rs, size_t field_index) {
  ClsFields& field = FieldAt(rs, field_index);
  if (!field.IsSum) {
    field.SumValue = Variant::Null();
    return;
  }
  Publish(field, *Current(rs, field_index).record);
}

void FollowStoredValue(RecordsetState& rs, const ClsFields& field, int32_t row,
                       const Variant& old_value, const Variant& new_value) {
  if (row < 1) {
    return;  // element 0 holds no row
  }
  ForEachSummed(rs, [&](size_t i, const CurrentRecord& current) {
    ClsFields& summed = *rs.fields[i];
    if (&summed == &field) {
      Contribute(rs, current, old_value, nullptr, row, -1);
      Contribute(rs, current, new_value, nullptr, row, 1);
      Publish(summed, *current.record);
    } else if (current.companion == &field) {
      // The row's symbol changed: its value moves to the other symbol's sums.
      const Variant& value = ValueAt(summed, row);
      const std::string before = SymbolKey(old_value);
      const std::string after = SymbolKey(new_value);
      Contribute(rs, current, value, &before, row, -1);
      Contribute(rs, current, value, &after, row, 1);
    }
  });
}

void RowLeavesTotals(RecordsetState& rs, int32_t row) { RowContributes(rs, row, -1); }

void RowJoinsTotals(RecordsetState& rs, int32_t row) { RowContributes(rs, row, 1); }

void FollowSelectMark(RecordsetState& rs, int32_t row, bool selected) {
  if (row < 1) {
    return;
  }
  const int sign = selected ? 1 : -1;
  ForEachSummed(rs, [&](size_t i, const CurrentRecord& current) {
    ColumnTotalRecord& record = *current.record;
    const Variant& value = ValueAt(*rs.fields[i], row);
    record.selected.Add(value, record.units, sign);
    if (current.companion != nullptr) {
      SumsOf(record, SymbolKey(ValueAt(*current.companion, row)))
          .selected.Add(value, record.units, sign);
    }
  });
}

void FollowWholeSelection(RecordsetState& rs, WholeSelection change) {
  const auto follow = [change](ExactSum& selected, const ExactSum& all) {
    if (change == WholeSelection::All) {
      selected = all;
    } else if (change == WholeSelection::None) {
      selected = ExactSum();
    } else {
      ExactSum rest = all;
      rest.Merge(selected, -1);
      selected = std::move(rest);
    }
  };
  ForEachSummed(rs, [&](size_t, const CurrentRecord& current) {
    follow(current.record->selected, current.record->all);
    for (SymbolSums& sums : current.record->by_symbol) {
      follow(sums.selected, sums.all);
    }
  });
}

void RecountRenumberedTotals(RecordsetState& rs) {
  for (size_t i = 0; i < rs.fields.size(); ++i) {
    if (rs.fields[i]->IsSum && rs.fields[i]->FieldType == F_AutoCoding) {
      RecountTotal(rs, i);
    }
  }
}

Variant SelectedTotal(RecordsetState& rs, size_t field_index) {
  const ClsFields& field = FieldAt(rs, field_index);
  if (!field.IsSum) {
    return Variant::Null();
  }
  if (rs.select_state == S_None) {
    ExactSum current_row;
    const int32_t row = rs.Rows() > 0 ? ClampedCurrentRow(rs) : 0;
    current_row.Add(ValueAt(field, row), UnitsOf(field), row > 0 ? 1 : 0);
    return current_row.Total(UnitsOf(field));
  }
  const ColumnTotalRecord& record = *Current(rs, field_index).record;
  return record.selected.Total(record.units);
}

std::vector<SymbolTotalEntry> TotalsBySymbol(RecordsetState& rs, size_t field_index,
                                             bool selected_only) {
  const ClsFields& field = FieldAt(rs, field_index);
  std::vector<SymbolTotalEntry> totals;
  if (!field.IsSum) {
    return totals;
  }
  const CurrentRecord current = Current(rs, field_index);
  const ColumnTotalRecord& record = *current.record;
  const bool current_row_only = selected_only && rs.select_state == S_None;
  if (current.companion == nullptr || current_row_only) {
    const int32_t row = rs.Rows() > 0 ? ClampedCurrentRow(rs) : 0;
    const std::string symbol =
        current.companion != nullptr && row > 0 ? SymbolKey(ValueAt(*current.companion, row)) : "";
    totals.push_back({symbol, current_row_only ? SelectedTotal(rs, field_index)
                              : selected_only  ? record.selected.Total(record.units)
                                               : record.all.Total(record.units)});
    return totals;
  }
  for (const SymbolSums& sums : record.by_symbol) {
    const ExactSum& sum = selected_only ? sums.selected : sums.all;
    if (sum.Count() != 0) {
      totals.push_back({sums.symbol, sum.Total(record.units)});
    }
  }
  std::sort(totals.begin(), totals.end(), [](const SymbolTotalEntry& a, const SymbolTotalEntry& b) {
    return a.symbol < b.symbol;
  });
  return totals;
}

}  // namespace varnel::internal
