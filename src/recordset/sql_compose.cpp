// The SELECT that loads a recordset: its condition, its order and the text
// sent to the database. The texts are the system's own, byte for byte.
#include "messages/error_trap.h"
#include "query/computed_criterion.h"
#include "recordset/data_source.h"
#include "varnel/messages.h"
#include "varnel/modules.h"

namespace varnel::internal {
namespace {

// ", b Asc" style item of the sort list.
std::string SortItem(const std::string& field, Enum_Ascending ascending) {
  return TrimBlanks(field) + (ascending == Ascending ? " Asc" : " Desc");
}

// Fields whose query text never becomes a predicate: it is passed over silently.
bool TakesNoQuery(const ClsFields& field) {
  return field.FieldType == F_AutoCoding || field.FieldType == F_MultiMode;
}

// Joins a fixed part and a composed part with " and ", each trimmed, either may be empty.
std::string JoinWithAnd(const std::string& fixed, const std::string& composed) {
  const std::string a = TrimBlanks(fixed);
  const std::string b = TrimBlanks(composed);
  if (!a.empty() && !b.empty()) {
    return a + " and " + b;
  }
  return a.empty() ? b : a;
}

// The SQL text for the column list F, table T, condition c and order o.
std::string SelectText(const std::string& f, const std::string& t, const std::string& c,
                       const std::string& o) {
  const std::string select = "Select " + (f.empty() ? std::string("*") : f);
  if (!c.empty() && !o.empty()) {
    return select + " From " + t + " Where " + c + " Order By " + o;
  }
  if (!o.empty()) {
    return select + " From " + t + " Order By " + o;
  }
  if (!c.empty()) {
    return select + " From " + t + " Where " + c;
  }
  if (!f.empty()) {
    return select + "From " + t;  // no blank before From: the caller ends FieldsName with one
  }
  return t;  // the recordset is opened on the bare table name
}

}  // namespace

std::string TrimBlanks(const std::string& text) {
  const size_t first = text.find_first_not_of(' ');
  if (first == std::string::npos) {
    return std::string();
  }
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string ComposeOrderBy(const ClsRecordset& rs) {
  std::string list;
  if (!TrimBlanks(rs.OrderByField1).empty()) {
    list = SortItem(rs.OrderByField1, rs.OrderByAscending1);
    if (!TrimBlanks(rs.OrderByField2).empty()) {
      list += "," + SortItem(rs.OrderByField2, rs.OrderByAscending2);
      if (!TrimBlanks(rs.OrderByField3).empty()) {
        list += "," + SortItem(rs.OrderByField3, rs.OrderByAscending3);
      }
    }
  }
  return JoinWithAnd(rs.DefaultOrderBy, list);
}

std::string ComposeCondition(RecordsetState& rs) {
  std::string condition;
  for (const std::shared_ptr<ClsFields>& field : rs.fields) {
    if (TrimBlanks(field->QueryValue).empty() || TakesNoQuery(*field)) {
      continue;
    }
    const Variant predicate = MdlQuery::QueryCondition(*field);
    std::string text = predicate.IsNull() ? std::string() : CStr(predicate);
    if (IsComputedOnly(*field)) {
      text = PredicateOnComputedField(*field, text);  // the formula in place of a column
    }
    if (TrimBlanks(text).empty()) {
      throw VbError(94, "'" + field->DisplayName + "'" + LoadResString(105));
    }
    condition += condition.empty() ? text : " and (" + text + ")";
  }
  rs.self.SysCondition = condition;
  return JoinWithAnd(rs.self.DefaultCondition, condition);
}

bool ComposeSql(RecordsetState& rs) {
  std::string condition;
  if (rs.self.GetCondition(condition)) {
    return true;
  }
  std::string order_by;
  if (rs.self.GetOrderBy(order_by)) {
    return true;
  }
  rs.recordset_condition = condition;
  rs.recordset_order_by = order_by;
  rs.sql_text = SelectText(TrimBlanks(rs.self.FieldsName), rs.self.TableName, condition, order_by);
  return false;
}

}  // namespace varnel::internal

namespace varnel {

bool ClsRecordset::GetOrderBy(std::string& OrderBy) {
  return internal::Trapped(SysErrState, true, [&] {
    OrderBy = internal::ComposeOrderBy(*this);
    return false;
  });
}

bool ClsRecordset::GetCondition(std::string& Condition) {
  return internal::Trapped(SysErrState, true, [&] {
    Condition = internal::ComposeCondition(*d_);
    return false;
  });
}

std::string ClsRecordset::RecordsetCondition() {
  return internal::Trapped(SysErrState, std::string(), [&] {
    (void)internal::ComposeSql(*d_);
    return d_->recordset_condition;
  });
}

std::string ClsRecordset::RecordsetOrderBy() {
  return internal::Trapped(SysErrState, std::string(), [&] {
    (void)internal::ComposeSql(*d_);
    return d_->recordset_order_by;
  });
}

}  // namespace varnel
