// A recordset with one field per test, for the query translators and
// FormatValue; its clock can be fixed so that TODAY() is known.
#pragma once

#include <memory>
#include <string>

#include "varnel/varnel.h"

namespace varnel::testing {

// Fixes the recordset's clock (the SystemTime event) at a given date.
class FixedClock : public ClsRecordsetEvents {
 public:
  explicit FixedClock(Date now) : now_(now) {}
  void SystemTime(Date& SysTime) override { SysTime = now_; }

 private:
  Date now_;
};

// The text of a translator's result: its text, "<Empty>" for Empty.
inline std::string Shown(const Variant& result) {
  return result.IsEmpty() ? "<Empty>" : result.ToString();
}

struct QueryField {
  explicit QueryField(Enum_FieldType type, const std::string& name = "F") {
    field = rs.Add(name);
    field->FieldType = type;
  }
  // QueryCondition of the field with the given query text.
  std::string Condition(const std::string& query) {
    field->QueryValue = query;
    return Shown(MdlQuery::QueryCondition(*field));
  }

  ClsRecordset rs;
  std::shared_ptr<ClsFields> field;
};

}  // namespace varnel::testing
