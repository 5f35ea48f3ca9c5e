// The console's query-by-form commands. A criterion is checked when it is
// typed: one that the library cannot translate is not kept, and the person
// sees the library's message and then the criteria the field accepts.
#include "command_words.h"
#include "console.h"
#include "field_hints.h"
#include "form_view.h"
#include "texts.h"

namespace varnel::app {
namespace {

// The engine reads "1" and "0" for a yes/no field; people type words.
std::string CriterionText(const ClsFields& field, const std::string& text) {
  if (field.FieldType == F_Boolean || field.FieldType == F_Locked) {
    if (const std::optional<bool> yes = YesNo(text)) {
      return *yes ? "1" : "0";
    }
  }
  return text;
}

// The field of the recordset called Name; Fallback when none is.
const ClsFields& NamedOr(const ClsRecordset& rs, const std::string& name,
                         const ClsFields& fallback) {
  for (const auto& field : rs) {
    if (field->Name == name) {
      return *field;
    }
  }
  return fallback;
}

}  // namespace

void Console::SetCriterion(ClsFields& field, const std::string& text) {
  const std::string previous = field.QueryValue;
  const bool refused = rs_.Modify(Variant(field.Name), Variant(CriterionText(field, text))) ||
                       LastError().Kind != K_None;
  // The criteria held before this one translated (each was checked when
  // typed), so a failure now is this field's, as the library says.
  std::string condition;
  if (!refused && rs_.GetCondition(condition)) {
    field.QueryValue = previous;
    failed_ = true;
    if (const std::string hint = CriteriaHint(NamedOr(rs_, LastError().Field, field));
        !hint.empty()) {
      Say(hint);
    }
  }
  failed_ = failed_ || refused;
  Form();
}

void Console::Query(const std::string&) {
  rs_.NewQuery();
  if (rs_.EditStatus() == E_Query) {
    Say(Tr(Text::QueryHint));
  }
  Form();
}

void Console::Refine(const std::string&) {
  rs_.RefineQuery();
  if (rs_.EditStatus() == E_Query) {
    Say(Tr(Text::QueryHint));
  }
  Form();
}

// A query that fails (its condition, or the database refusing it) stays in
// query mode with its criteria, so that they can be corrected or cancelled.
void Console::Run(const std::string&) {
  if (rs_.EditStatus() != E_Query) {
    Fail(Tr(Text::NoQueryMode));
    return;
  }
  if (rs_.ExecuteQuery() || LastError().Kind == K_Error) {
    if (rs_.EditStatus() != E_Query) {
      rs_.RefineQuery();  // back to the criteria just run
    }
    Fail(Tr(Text::QueryFailed));
  } else if (rs_.EditStatus() != E_Query) {
    Say(app::Say(Text::RowsFound, fmt::arg("rows", rs_.Rows())));
  }
  Form();
}

void Console::Cancel(const std::string&) {
  if (rs_.EditStatus() != E_Query) {
    Fail(Tr(Text::NoQueryMode));
    return;
  }
  rs_.CancelQuery();
  Form();
}

void Console::Clear(const std::string&) {
  rs_.ClearQuery();
  Form();
}

}  // namespace varnel::app
