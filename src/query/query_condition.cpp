// MdlQuery: the query-by-form entry point and its dispatch on the field kind,
// the two small translators (raw values, Booleans) and the quoting of text.
#include <optional>
#include <string>

#include "db/sql_quote.h"
#include "query/query_engine.h"
#include "query/query_trap.h"
#include "query/term_grammar.h"
#include "varnel/fields.h"
#include "varnel/modules.h"

namespace varnel::MdlQuery {
namespace {

using Translator = std::optional<std::string> (*)(const ClsFields&, internal::QueryParse&);

// Runs a translator under the module's trap: its text, or Empty when the
// field adds no condition.
Variant Translate(ClsFields& field, const char* procedure, Translator translate) {
  return internal::ModuleTrapped(procedure, Variant(), [&] {
    internal::QueryParse parse(field.QueryValue);
    std::optional<std::string> sql = translate(field, parse);
    return sql ? Variant(*sql) : Variant();
  });
}

}  // namespace

Variant QueryCondition(ClsFields& Field) {
  return internal::ModuleTrapped("QueryCondition", Variant(""), [&] {
    if (internal::TrimRightBlanks(Field.QueryValue).empty()) {
      return Variant("");
    }
    Variant sql;
    switch (Field.FieldType) {
      case F_Boolean:
      case F_Locked:
        return Variant(QueryBoolean(Field));
      case F_Date:
        sql = QueryDate(Field);
        break;
      case F_Currency:
        sql = QueryCurrency(Field);
        break;
      case F_Numeral:
        sql = QueryNumber(Field);
        break;
      case F_Text:
        sql = QueryText(Field);
        break;
      case F_Other:
        return Variant(QueryOther(Field));
      default:  // F_AutoCoding and F_MultiMode are never queried
        return Variant("");
    }
    return sql.IsString() ? sql : Variant("");
  });
}

std::string QueryOther(ClsFields& Field) {
  // Raw values: the query text goes in as typed, not trimmed and not quoted.
  return internal::Column(Field.Name) + "='" + Field.QueryValue + "'";
}

std::string QueryBoolean(ClsFields& Field) {
  if (Field.QueryValue == "0") {
    return internal::Column(Field.Name) + "=0";
  }
  if (Field.QueryValue == "1") {
    return internal::Column(Field.Name) + "<>0";  // any true value, -1 as well as 1
  }
  return "";
}

Variant QueryDate(ClsFields& Field) {
  return Translate(Field, "QueryDate", internal::TranslateDate);
}

Variant QueryNumber(ClsFields& Field) {
  return Translate(Field, "QueryNumber", internal::TranslateNumber);
}

Variant QueryCurrency(ClsFields& Field) {
  return Translate(Field, "QueryCurrency", internal::TranslateCurrency);
}

Variant QueryText(ClsFields& Field) {
  return Translate(Field, "QueryText", internal::TranslateText);
}

std::string QuoteText(const Variant& Value) {
  return internal::ModuleTrapped("QuoteText", std::string(), [&] {
    if (Value.IsBlank()) {
      return std::string();
    }
    const std::string text =
        Value.IsString() ? std::string(internal::TrimBlanks(Value.StringView())) : CStr(Value);
    return db::internal::EscapeText(text);
  });
}

}  // namespace varnel::MdlQuery
