#include "db/postgres/pg_translator.h"

#include <vector>

#include "db/sql_quote.h"
#include "db/sql_scanner.h"

namespace varnel::db::internal {
namespace {

using Tokens = std::vector<SqlToken>;

bool IsPlainName(std::string_view name) {
  if (name.empty() || (name[0] >= '0' && name[0] <= '9') || name[0] == '$') {
    return false;
  }
  for (char c : name) {
    const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
                        static_cast<unsigned char>(c) >= 0x80;
    if (!letter && !(c >= '0' && c <= '9') && c != '$') {
      return false;
    }
  }
  return true;
}

// A name the database does not hold (yet): what the same name written
// unquoted would mean, since the server folds unquoted names to lower case
// (ASCII letters only, as it does in UTF-8).
std::string UnknownName(std::string_view name) {
  if (!IsPlainName(name)) {
    return QuotePgName(name);
  }
  std::string folded(name);
  for (char& c : folded) {
    if (c >= 'A' && c <= 'Z') {
      c = static_cast<char>(c - 'A' + 'a');
    }
  }
  return QuotePgName(folded);
}

// The next token at or after At that is neither blank nor a comment.
size_t Significant(const Tokens& tokens, size_t at) {
  while (at < tokens.size() &&
         (tokens[at].kind == SqlTokenKind::kBlank || tokens[at].kind == SqlTokenKind::kComment)) {
    ++at;
  }
  return at;
}

bool IsWord(const Tokens& tokens, size_t at, std::string_view keyword) {
  return at < tokens.size() && tokens[at].kind == SqlTokenKind::kWord &&
         IsKeyword(tokens[at].text, keyword);
}

bool IsLikeAt(const Tokens& tokens, size_t at) {
  return IsWord(tokens, at, "LIKE") || IsWord(tokens, at, "ILIKE");
}

bool IsComparison(std::string_view op) {
  return op == "=" || op == "<>" || op == "!=" || op == "<" || op == ">" || op == "<=" ||
         op == ">=";
}

// The cast that makes the column Found usable in what follows it at Next.
std::string_view CastFor(const CatalogName& found, const Tokens& tokens, size_t next) {
  size_t at = Significant(tokens, next);
  if (IsWord(tokens, at, "NOT")) {
    return IsLikeAt(tokens, Significant(tokens, at + 1)) && found.not_text ? "::text" : "";
  }
  if (IsLikeAt(tokens, at)) {
    return found.not_text ? "::text" : "";
  }
  if (at >= tokens.size() || tokens[at].kind != SqlTokenKind::kOperator) {
    return "";
  }
  std::string_view op = tokens[at].text;
  bool signed_value = false;  // "<>-1" is read as one run of operator characters
  if (op.size() > 1 && (op.back() == '-' || op.back() == '+')) {
    op.remove_suffix(1);
    signed_value = true;
  }
  if (!IsComparison(op)) {
    return "";
  }
  at = Significant(tokens, at + 1);
  if (!signed_value && at < tokens.size() && tokens[at].kind == SqlTokenKind::kOperator &&
      (tokens[at].text == "-" || tokens[at].text == "+")) {
    at = Significant(tokens, at + 1);
    signed_value = true;
  }
  if (at >= tokens.size()) {
    return "";
  }
  if (tokens[at].kind == SqlTokenKind::kNumber) {
    return found.boolean ? "::int" : found.money ? "::numeric" : "";
  }
  if (!signed_value && tokens[at].text == "''" && found.not_text) {
    return "::text";
  }
  return "";
}

// Writes ILIKE for the LIKE at At, and ESCAPE '' after its pattern when the
// pattern is a literal or a placeholder that has no ESCAPE of its own. Returns
// the last token written.
size_t WriteLike(const Tokens& tokens, size_t at, std::string& out) {
  const std::string_view like = tokens[at].text;
  out += like == "like" ? "ilike" : "ILIKE";
  const size_t pattern = Significant(tokens, at + 1);
  if (pattern >= tokens.size() || !tokens[pattern].closed ||
      (tokens[pattern].kind != SqlTokenKind::kText &&
       tokens[pattern].kind != SqlTokenKind::kPlaceholder)) {
    return at;
  }
  for (size_t i = at + 1; i <= pattern; ++i) {
    out += tokens[i].text;
  }
  if (!IsWord(tokens, Significant(tokens, pattern + 1), "ESCAPE")) {
    out += " ESCAPE ''";
    if (pattern + 1 < tokens.size() && tokens[pattern + 1].text.starts_with('\'')) {
      out += ' ';  // text right after would continue the '' literal
    }
  }
  return pattern;
}

}  // namespace

std::string QuotePgName(std::string_view name) { return QuoteNameWith(name, '"'); }

std::string TranslateForPostgres(std::string_view sql, NameLookup& names) {
  const Tokens tokens = ScanSql(sql);
  std::string out;
  out.reserve(sql.size() + sql.size() / 8);
  for (size_t i = 0; i < tokens.size(); ++i) {
    const SqlToken& token = tokens[i];
    if (token.kind == SqlTokenKind::kBracketName) {
      const std::string name = UnquoteName(token.text);
      if (const CatalogName* found = names.Find(name)) {
        out += QuotePgName(found->name);
        out += CastFor(*found, tokens, i + 1);
      } else {
        out += UnknownName(name);
      }
    } else if (token.kind == SqlTokenKind::kWord && IsKeyword(token.text, "LIKE")) {
      i = WriteLike(tokens, i, out);
    } else {
      out += token.text;
    }
  }
  return out;
}

}  // namespace varnel::db::internal
