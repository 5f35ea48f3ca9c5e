// Small questions a client asks while a row is edited, deleted or saved: the
// row with the main mark, a field's value before the modification or the
// deletion, the time as the recordset sees it; and the client-to-client event.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>

#include "automation/calendar.h"
#include "fields/field_access.h"
#include "messages/error_trap.h"
#include "recordset/row_store.h"
#include "varnel/modules.h"
#include "varnel/recordset.h"

namespace varnel::internal {
namespace {

// The local clock's date and time, to the second.
Date LocalNow() {
  const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
  std::tm local{};
  localtime_r(&now, &local);
  const int second = std::min(local.tm_sec, 59);  // a leap second reads as :59
  return MakeDate(DateParts{local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                            local.tm_min, second});
}

// The time without its fraction of a second: cut, not rounded, so that the
// text round trip below never moves it to the next second.
Date DropFraction(Date time) {
  if (!InDateRange(time.Value)) {
    return time;  // the conversion below reports it
  }
  const double day = std::trunc(time.Value);
  const double seconds = std::floor(std::fabs(time.Value - day) * 86400.0 + 1e-6);
  return ComposeSerial(static_cast<int64_t>(day), seconds);
}

// The element of a snapshot that belongs to the field: the one at the
// field's Col, when Col is a position of the collection; Empty for a field
// added after the snapshot, which has no value in it.
Variant SnapshotValue(const RecordsetState& rs, const std::optional<RowSnapshot>& kept,
                      const Variant& key) {
  const size_t index = FieldIndex(rs, key);
  const int32_t col = rs.fields[index]->Col;
  const int32_t count = static_cast<int32_t>(rs.fields.size());
  if (!kept || col < 1 || col > count || static_cast<size_t>(col) > kept->values.size() ||
      !kept->ValueOf(*rs.fields[index], index)) {
    return Variant();
  }
  return kept->values[col - 1];
}

int32_t FirstMainRow(RecordsetState& rs, const Variant& key) {
  const int32_t rows = rs.Rows();
  if (rows == 0) {
    return 0;
  }
  const auto& values = FieldAccess::Values(*rs.fields[FieldIndex(rs, key)]);
  const Variant zero(int16_t{0});
  const int32_t last = std::min<int32_t>(rows, static_cast<int32_t>(values.size()) - 1);
  for (int32_t row = 1; row <= last; ++row) {
    if (!values[row].IsBlank() && !ValuesEqual(values[row], zero)) {
      return row;
    }
  }
  return 0;
}

}  // namespace
}  // namespace varnel::internal

namespace varnel {

int32_t ClsRecordset::GetIsMainRow(const Variant& FieldName) {
  internal::RecordsetState& rs = internal::RecordsetAccess::State(*this);
  return internal::Trapped(SysErrState, int32_t{0},
                           [&] { return internal::FirstMainRow(rs, FieldName); });
}

// Both answer Empty, without a message, for an unknown field or an erased snapshot.
Variant ClsRecordset::GetDeleteValue(const Variant& FieldName) {
  const internal::RecordsetState& rs = internal::RecordsetAccess::State(*this);
  return internal::Quiet(Variant(),
                         [&] { return internal::SnapshotValue(rs, rs.deleted_values, FieldName); });
}

Variant ClsRecordset::GetModifyValue(const Variant& FieldName) {
  const internal::RecordsetState& rs = internal::RecordsetAccess::State(*this);
  return internal::Quiet(Variant(),
                         [&] { return internal::SnapshotValue(rs, rs.saved_values, FieldName); });
}

void ClsRecordset::CallUserEvent() {
  internal::RecordsetState& rs = internal::RecordsetAccess::State(*this);
  internal::Trapped(SysErrState, 0, [&] {
    rs.Raise(Ev_UserEvent, &ClsRecordsetEvents::UserEvent);
    return 0;
  });
}

// The client may replace the time (with its database server's, say); the
// result is always cut to whole seconds (the fraction dropped, not rounded)
// and goes through the text round trip of the time's format.
Date ClsRecordset::GetSysTime() {
  internal::RecordsetState& rs = internal::RecordsetAccess::State(*this);
  return internal::Trapped(SysErrState, Date{}, [&] {
    Date time = internal::LocalNow();
    rs.Raise(Ev_SystemTime, &ClsRecordsetEvents::SystemTime, time);
    return CDate(Variant(Format(Variant(internal::DropFraction(time)), "mm/dd/yyyy hh:nn:ss")));
  });
}

namespace MdlDataInterface {

Date CurrentDateValue(ClsRecordset& Recordset, Enum_DateType DateType) {
  const Date now = Recordset.GetSysTime();
  if (DateType <= D_YMDHNS || DateType > D_HN) {  // taken as read
    return now;
  }
  return internal::CutDate(now, DateType);
}

}  // namespace MdlDataInterface
}  // namespace varnel
