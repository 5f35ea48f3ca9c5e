// Conversions between PostgreSQL's values (in libpq's text form) and
// Variants, as the table in pg_driver.h gives them. ReadPgCell is called once
// per cell with the column's kind decided before the loop.
#pragma once

#include <libpq-fe.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "varnel/variant.h"

namespace varnel::db::internal {

// What a column's type makes of its values.
enum class PgCellKind : uint8_t {
  kText,       // text, varchar, char, name, and every type not listed below
  kLong,       // int2, int4, int8, oid, numeric(p,0): Long; LongLong beyond Long's range,
               // Decimal beyond LongLong's, Double beyond Decimal's
  kDouble,     // float4, float8
  kDecimal,    // numeric(p,s) with s > 0: Double, Decimal when a Double cannot hold it
  kNumeric,    // numeric without a declared scale: as kLong when whole, else as kDecimal
  kMoney,      // money: Currency
  kDate,       // date, timestamp, time: Date
  kDateZoned,  // timestamptz, timetz: Date, in the session's time zone (the offset dropped)
  kBoolean,    // boolean
};

struct PgColumnType {
  PgCellKind kind = PgCellKind::kText;
  int32_t defined_size = 0;  // n of varchar(n) and char(n), else 0
};

// The kind and declared length of a result column of type Type with modifier
// Modifier (PQftype, PQfmod).
PgColumnType ClassifyPgType(Oid type, int modifier);

// The Variant of one cell's text. A text that does not read as its kind (a
// date outside years 100-9999, infinity) is given as a String.
Variant ReadPgCell(std::string_view text, PgCellKind kind);

// The text a parameter is sent as (its type left for the server to infer
// from where it stands; a LongLong and a Decimal with every digit); nullopt
// for Empty and Null.
std::optional<std::string> PgParamText(const Variant& value);

}  // namespace varnel::db::internal
