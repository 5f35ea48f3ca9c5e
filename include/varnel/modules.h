/// \file
/// The library's module procedures: query-by-form translation (MdlQuery), the
/// computed-field evaluator (MdlCompute) and the current-date helper
/// (MdlDataInterface). A procedure that fails shows a message box titled with
/// its own name, records it as the thread's LastError(), and returns its
/// neutral result; nothing is thrown.
///
///     field.QueryValue = ">=100 AND <200";
///     varnel::Variant sql = varnel::MdlQuery::QueryCondition(field);  // "([Qty]>=100 and
///     [Qty]<200)"
#pragma once

#include <cstdint>
#include <string>

#include "varnel/enums.h"
#include "varnel/export.h"
#include "varnel/variant.h"

VARNEL_API_BEGIN

namespace varnel {

class ClsFields;
class ClsRecordset;

/// Query by form: a field's QueryValue (the criterion typed in query mode)
/// turned into a SQL predicate. The guide's query page lists the syntax per kind.
namespace MdlQuery {
/// The SQL predicate for Field's QueryValue, chosen by its FieldType; "" when
/// the field adds no condition or the criterion was refused (after a message).
Variant QueryCondition(ClsFields& Field);
/// F_Other: "[Name]='" QueryValue "'" with the query text as typed, neither trimmed nor quoted.
/// The text is raw SQL by design, a feature for trusted screens (an administrator's filter);
/// never give F_Other to a field whose query text comes from an untrusted user.
std::string QueryOther(ClsFields& Field);
/// The predicate of an F_Boolean or F_Locked field: true/false words or numbers.
std::string QueryBoolean(ClsFields& Field);
/// The predicate of an F_Date field; Empty when the field adds no condition.
Variant QueryDate(ClsFields& Field);
/// The predicate of an F_Numeral field; Empty when the field adds no condition.
Variant QueryNumber(ClsFields& Field);
/// The predicate of an F_Currency field; Empty when the field adds no condition.
Variant QueryCurrency(ClsFields& Field);
/// The predicate of an F_Text field (LIKE, NOT, NULL, NOTNULL); Empty when none.
Variant QueryText(ClsFields& Field);
/// Text for use inside '...': trimmed, every ' doubled (the library's one quoting of text,
/// which every session it opens reads with backslashes as ordinary characters).
std::string QuoteText(const Variant& Value);
/// A column name in the form the library's SQL takes it (OrderByField1,
/// DefaultCondition): "[" Name "]" with every "]" inside doubled.
std::string QuoteName(const std::string& Name);
}  // namespace MdlQuery

/// The evaluator of computed fields (ClsFields::ComputeString): an arithmetic
/// expression over the recordset's field names and constants, for one row.
namespace MdlCompute {
/// The expression Exp_Reduced evaluates (this thread's).
extern thread_local std::string Expression;
/// The recordset whose fields the expression names (this thread's).
extern thread_local ClsRecordset* CurRecordset;
/// The row the expression is evaluated for, from 1 (this thread's).
extern thread_local int32_t CurRow;
/// The value of Expression for row CurRow of CurRecordset; Empty when it fails
/// (after a message box titled with the failing step). Not re-entrant.
Variant Exp_Reduced();
}  // namespace MdlCompute

/// Helpers between the recordset and its database.
namespace MdlDataInterface {
/// Recordset.GetSysTime() (the client may supply it through SystemTime) cut to DateType.
Date CurrentDateValue(ClsRecordset& Recordset, Enum_DateType DateType);
}  // namespace MdlDataInterface

}  // namespace varnel

VARNEL_API_END
