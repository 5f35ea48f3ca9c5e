// Fuzzes the SQL scanner and the PostgreSQL translation. The first byte picks
// what the rest is:
//   0  any SQL: the tokens give the text back in both lexicons, the
//      statements of a script are pieces of it, and the translation leaves
//      every quoted text as it was (it only adds ESCAPE '' after patterns);
//   1  text a user typed, quoted the library's way inside a predicate: the
//      scanner sees it as one literal, and so does the translation.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "db/postgres/pg_translator.h"
#include "db/sql_quote.h"
#include "db/sql_scanner.h"
#include "fuzz_input.h"

namespace {

using varnel::db::internal::IsKeyword;
using varnel::db::internal::ScanSql;
using varnel::db::internal::SqlLexicon;
using varnel::db::internal::SqlToken;
using varnel::db::internal::SqlTokenKind;

// Knows a few names in the ways the translation cares about.
class SomeNames : public varnel::db::internal::NameLookup {
 public:
  const varnel::db::internal::CatalogName* Find(std::string_view name) override {
    for (const auto& entry : names_) {
      if (entry.name == name) {
        return &entry;
      }
    }
    return nullptr;
  }

 private:
  const std::vector<varnel::db::internal::CatalogName> names_{{"Name"},
                                                              {"paid", true, false, true},
                                                              {"price", false, true, true},
                                                              {"qty", false, false, true}};
};

// The quoted texts of Sql, leaving out the '' that follows an ESCAPE.
std::vector<std::string> QuotedTexts(const std::string& sql) {
  std::vector<std::string> texts;
  bool after_escape = false;
  for (const SqlToken& token : ScanSql(sql)) {
    if (token.kind == SqlTokenKind::kText && !(after_escape && token.text == "''")) {
      texts.emplace_back(token.text);
    }
    if (token.kind != SqlTokenKind::kBlank && token.kind != SqlTokenKind::kComment) {
      after_escape = token.kind == SqlTokenKind::kWord && IsKeyword(token.text, "ESCAPE");
    }
  }
  return texts;
}

void CheckAnySql(const std::string& sql) {
  for (SqlLexicon lexicon : {SqlLexicon::kPostgres, SqlLexicon::kSqlite}) {
    std::string again;
    for (const SqlToken& token : ScanSql(sql, lexicon)) {
      again += token.text;
    }
    if (again != sql) {
      varnel::fuzzing::Violated("tokens do not give the text back", sql);
    }
  }
  for (std::string_view statement : varnel::db::internal::SplitStatements(sql)) {
    if (statement.data() < sql.data() ||
        statement.data() + statement.size() > sql.data() + sql.size()) {
      varnel::fuzzing::Violated("a statement is not a piece of the script", sql);
    }
  }
  SomeNames names;
  const std::string translated = varnel::db::internal::TranslateForPostgres(sql, names);
  if (QuotedTexts(translated) != QuotedTexts(sql)) {
    varnel::fuzzing::Violated("the translation changed quoted text", sql + "\n  " + translated);
  }
}

void CheckTypedText(const std::string& typed) {
  const std::string literal = "'%" + varnel::db::internal::EscapeText(typed) + "%'";
  const std::string sql = "Select * From [Items] Where ([Name] LIKE " + literal + ")";
  SomeNames names;
  const std::string translated = varnel::db::internal::TranslateForPostgres(sql, names);
  const std::string expected =
      "Select * From \"items\" Where (\"Name\" ILIKE " + literal + " ESCAPE '')";
  if (translated != expected) {
    varnel::fuzzing::Violated("typed text left its literal", translated);
  }
  for (SqlLexicon lexicon : {SqlLexicon::kPostgres, SqlLexicon::kSqlite}) {
    size_t texts = 0;
    for (const SqlToken& token : ScanSql(sql, lexicon)) {
      texts += token.kind == SqlTokenKind::kText ? 1 : 0;
      if (token.kind == SqlTokenKind::kText && token.text != literal) {
        varnel::fuzzing::Violated("typed text was cut", sql);
      }
    }
    if (texts != 1) {
      varnel::fuzzing::Violated("typed text was not one literal", sql);
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  varnel::fuzzing::FuzzInput input(data, size);
  const unsigned mode = input.Choice(2);
  const std::string text = input.Rest();
  if (mode == 0) {
    CheckAnySql(text);
  } else {
    CheckTypedText(text);
  }
  return 0;
}
