// Fuzzes MdlQuery::QueryCondition for every field kind. The first bytes pick
// the kind and its options (NumType, DateType, the database's dialect); the
// rest is the query text. Besides the sanitizers' checks, every predicate of
// a numeric, currency, date or Boolean field must hold no user text other
// than validated numbers and dates, and a text predicate must keep every
// quote of the user's text doubled inside its literals.
#include <cstddef>
#include <cstdint>
#include <memory>

#include "fuzz_input.h"
#include "sql_shape.h"
#include "varnel/varnel.h"

namespace {

using varnel::fuzzing::Literals;

constexpr varnel::Enum_FieldType kKinds[] = {
    varnel::F_Other,      varnel::F_Boolean,  varnel::F_Date,
    varnel::F_Text,       varnel::F_Currency, varnel::F_Numeral,
    varnel::F_AutoCoding, varnel::F_Locked,   varnel::F_MultiMode};

// A fixed clock, so that TODAY() is reproducible.
struct FixedClock : varnel::ClsRecordsetEvents {
  void SystemTime(varnel::Date& SysTime) override { SysTime = varnel::Date{37747.625}; }
};

struct Subject {
  Subject() {
    field = rs.Add("F");
    rs.Advise(&clock);
  }
  varnel::ClsRecordset rs;
  FixedClock clock;
  std::shared_ptr<varnel::ClsFields> field;
};

void CheckShape(varnel::Enum_FieldType kind, const std::string& sql, const std::string& query) {
  Literals literals = Literals::kNumbers;
  switch (kind) {
    case varnel::F_Date:
      literals = Literals::kDates;
      break;
    case varnel::F_Text:
      literals = Literals::kQuotedText;
      break;
    case varnel::F_Other:
      if (sql != "[F]='" + query + "'") {  // raw values go in as typed, by design
        varnel::fuzzing::Violated("F_Other predicate", sql);
      }
      return;
    default:
      break;
  }
  if (!varnel::fuzzing::SqlShapeOk(sql, "[F]", literals)) {
    varnel::fuzzing::Violated("user text in SQL", sql);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  varnel::fuzzing::InstallSilentUi();
  static Subject subject;
  varnel::fuzzing::FuzzInput input(data, size);
  const varnel::Enum_FieldType kind = kKinds[input.Choice(std::size(kKinds))];
  subject.field->FieldType = kind;
  subject.field->NumType = static_cast<varnel::Enum_NumType>(input.Choice(3));
  subject.field->DateType = static_cast<varnel::Enum_DateType>(input.Choice(5));
  subject.rs.ConnectString = input.Choice(2) ? "Provider=SQLite;Data Source=f.db" : "";
  subject.field->QueryValue = input.Rest();

  const varnel::Variant result = varnel::MdlQuery::QueryCondition(*subject.field);
  if (!result.IsString()) {
    varnel::fuzzing::Violated("QueryCondition did not return text", result.TypeName());
  }
  const std::string sql(result.StringView());
  if (!sql.empty()) {
    CheckShape(kind, sql, subject.field->QueryValue);
  }
  return 0;
}
