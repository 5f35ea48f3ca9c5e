// The library's module procedures: query-by-form translation (MdlQuery), the
// computed-field evaluator (MdlCompute) and the current-date helper
// (MdlDataInterface).
//
//   field.QueryValue = ">=100 AND <200";
//   varnel::Variant sql = varnel::MdlQuery::QueryCondition(field);  // "([Qty]>=100 and [Qty]<200)"
#pragma once

#include <cstdint>
#include <string>

#include "varnel/enums.h"
#include "varnel/variant.h"

namespace varnel {

class ClsFields;
class ClsRecordset;

namespace MdlQuery {
// The SQL predicate for Field's QueryValue; "" when the field adds no condition.
Variant QueryCondition(ClsFields& Field);
/// F_Other: "[Name]='" QueryValue "'" with the query text as typed, neither trimmed nor quoted.
/// The text is raw SQL by design, a feature for trusted screens (an administrator's filter);
/// never give F_Other to a field whose query text comes from an untrusted user.
std::string QueryOther(ClsFields& Field);
std::string QueryBoolean(ClsFields& Field);  // F_Boolean, F_Locked
// Each returns the predicate text, or Empty when the field adds no condition.
Variant QueryDate(ClsFields& Field);
Variant QueryNumber(ClsFields& Field);
Variant QueryCurrency(ClsFields& Field);
Variant QueryText(ClsFields& Field);
/// Text for use inside '...': trimmed, every ' doubled (the library's one quoting of text,
/// which every session it opens reads with backslashes as ordinary characters).
std::string QuoteText(const Variant& Value);
}  // namespace MdlQuery

namespace MdlCompute {
// The evaluator's state, per thread. Set all three before Exp_Reduced.
extern thread_local std::string Expression;
extern thread_local ClsRecordset* CurRecordset;
extern thread_local int32_t CurRow;
// The value of Expression for row CurRow of CurRecordset; Empty when it fails
// (after a message box titled with the failing step).
Variant Exp_Reduced();
}  // namespace MdlCompute

namespace MdlDataInterface {
// Recordset.GetSysTime() cut to DateType.
Date CurrentDateValue(ClsRecordset& Recordset, Enum_DateType DateType);
}  // namespace MdlDataInterface

}  // namespace varnel
