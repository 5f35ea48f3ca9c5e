#include "db/sql_scanner.h"

#include <cstring>

namespace varnel::db::internal {
namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsNameStart(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
         static_cast<unsigned char>(c) >= 0x80;
}
bool IsNameChar(char c) { return IsNameStart(c) || IsDigit(c) || c == '$'; }
bool IsOperatorChar(char c) { return c != '\0' && std::strchr("+-*/<>=~!@#%^&|`", c) != nullptr; }

// Words after which a '[' can only open a name ("Where[Id]=1").
bool IsClauseWord(std::string_view word) {
  static constexpr std::string_view kWords[] = {
      "SELECT", "FROM", "WHERE", "AND",   "OR",     "NOT",    "ON",       "BY",        "SET",
      "WHEN",   "THEN", "ELSE",  "AS",    "IN",     "IS",     "LIKE",     "ILIKE",     "JOIN",
      "HAVING", "CASE", "INTO",  "TABLE", "VALUES", "UPDATE", "DISTINCT", "RETURNING", "USING"};
  for (std::string_view keyword : kWords) {
    if (IsKeyword(word, keyword)) {
      return true;
    }
  }
  return false;
}

class Scanner {
 public:
  Scanner(std::string_view sql, SqlLexicon lexicon) : sql_(sql), lexicon_(lexicon) {}

  std::vector<SqlToken> Run() {
    std::vector<SqlToken> tokens;
    while (at_ < sql_.size()) {
      const size_t start = at_;
      unterminated_ = false;
      const SqlTokenKind kind = Next(tokens);
      tokens.push_back({kind, sql_.substr(start, at_ - start), !unterminated_});
    }
    return tokens;
  }

 private:
  char Peek(size_t ahead = 0) const { return at_ + ahead < sql_.size() ? sql_[at_ + ahead] : '\0'; }

  SqlTokenKind Next(const std::vector<SqlToken>& before) {
    const char c = Peek();
    if (IsBlank(c)) {
      while (IsBlank(Peek())) {
        ++at_;
      }
      return SqlTokenKind::kBlank;
    }
    if ((c == '-' && Peek(1) == '-') || (c == '/' && Peek(1) == '*')) {
      return Comment();
    }
    if (c == '\'') {
      return Quoted('\'', false);
    }
    if (c == '"' || (c == '`' && lexicon_ == SqlLexicon::kSqlite)) {
      Quoted(c, false);
      return SqlTokenKind::kQuotedName;
    }
    if (c == '$' && lexicon_ == SqlLexicon::kPostgres && DollarQuote()) {
      return SqlTokenKind::kText;
    }
    if (IsNameStart(c)) {
      return Word();
    }
    if (IsDigit(c) || (c == '.' && IsDigit(Peek(1)))) {
      return Number();
    }
    ++at_;
    switch (c) {
      case '?':
        return SqlTokenKind::kPlaceholder;
      case ';':
        return SqlTokenKind::kSemicolon;
      case '[':
        return lexicon_ == SqlLexicon::kPostgres && OpensSubscript(before)
                   ? SqlTokenKind::kPunctuation
                   : BracketName();
      default:
        break;
    }
    if (IsOperatorChar(c)) {
      while (IsOperatorChar(Peek()) && !(Peek() == '-' && Peek(1) == '-') &&
             !(Peek() == '/' && Peek(1) == '*')) {
        ++at_;
      }
      return SqlTokenKind::kOperator;
    }
    return SqlTokenKind::kPunctuation;
  }

  SqlTokenKind Comment() {
    if (Peek() == '-') {
      while (at_ < sql_.size() && Peek() != '\n') {
        ++at_;
      }
      return SqlTokenKind::kComment;
    }
    at_ += 2;
    int depth = 1;
    while (at_ < sql_.size() && depth > 0) {
      if (Peek() == '/' && Peek(1) == '*' && lexicon_ == SqlLexicon::kPostgres) {
        ++depth;
        at_ += 2;
      } else if (Peek() == '*' && Peek(1) == '/') {
        --depth;
        at_ += 2;
      } else {
        ++at_;
      }
    }
    return SqlTokenKind::kComment;
  }

  // From the opening quote at at_ to the closing one; a doubled quote stays
  // inside, and with Backslashes a backslash keeps the next character inside.
  SqlTokenKind Quoted(char quote, bool backslashes) {
    ++at_;
    unterminated_ = true;
    while (at_ < sql_.size()) {
      const char c = Peek();
      if (backslashes && c == '\\') {
        at_ += 2;
      } else if (c == quote && Peek(1) == quote) {
        at_ += 2;
      } else if (c == quote) {
        ++at_;
        unterminated_ = false;
        break;
      } else {
        ++at_;
      }
    }
    at_ = std::min(at_, sql_.size());
    return SqlTokenKind::kText;
  }

  // $tag$ ... $tag$ where the tag is empty or a name; false (nothing read)
  // when the '$' does not open one ($1 is a parameter of the database).
  bool DollarQuote() {
    size_t end = at_ + 1;
    if (end < sql_.size() && IsNameStart(sql_[end])) {
      while (end < sql_.size() && IsNameChar(sql_[end]) && sql_[end] != '$') {
        ++end;
      }
    }
    if (end >= sql_.size() || sql_[end] != '$') {
      return false;
    }
    const std::string_view tag = sql_.substr(at_, end + 1 - at_);
    const size_t close = sql_.find(tag, end + 1);
    unterminated_ = close == std::string_view::npos;
    at_ = unterminated_ ? sql_.size() : close + tag.size();
    return true;
  }

  SqlTokenKind Word() {
    const size_t start = at_;
    while (IsNameChar(Peek())) {
      ++at_;
    }
    if (at_ - start == 1 && (sql_[start] == 'E' || sql_[start] == 'e') && Peek() == '\'' &&
        lexicon_ == SqlLexicon::kPostgres) {
      return Quoted('\'', true);
    }
    return SqlTokenKind::kWord;
  }

  SqlTokenKind Number() {
    while (IsDigit(Peek()) || Peek() == '.') {
      ++at_;
    }
    if ((Peek() == 'e' || Peek() == 'E') &&
        (IsDigit(Peek(1)) || ((Peek(1) == '+' || Peek(1) == '-') && IsDigit(Peek(2))))) {
      at_ += 2;
      while (IsDigit(Peek())) {
        ++at_;
      }
    }
    return SqlTokenKind::kNumber;
  }

  SqlTokenKind BracketName() {
    while (at_ < sql_.size()) {
      if (Peek() == ']' && Peek(1) == ']') {
        at_ += 2;
      } else if (Peek() == ']') {
        ++at_;
        return SqlTokenKind::kBracketName;
      } else {
        ++at_;
      }
    }
    return SqlTokenKind::kBracketName;
  }

  // A '[' right after a value (a[1], f(x)[2], "a"[1]) or after ARRAY.
  static bool OpensSubscript(const std::vector<SqlToken>& before) {
    if (before.empty()) {
      return false;
    }
    const SqlToken& last = before.back();
    switch (last.kind) {
      case SqlTokenKind::kWord:
        return !IsClauseWord(last.text);
      case SqlTokenKind::kQuotedName:
      case SqlTokenKind::kBracketName:
        return true;
      case SqlTokenKind::kPunctuation:
        return last.text == ")" || last.text == "]";
      case SqlTokenKind::kBlank:
        return before.size() >= 2 && before[before.size() - 2].kind == SqlTokenKind::kWord &&
               IsKeyword(before[before.size() - 2].text, "ARRAY");
      default:
        return false;
    }
  }

  std::string_view sql_;
  SqlLexicon lexicon_;
  size_t at_ = 0;
  bool unterminated_ = false;  // the last quote read runs to the end of the text
};

}  // namespace

std::vector<SqlToken> ScanSql(std::string_view sql, SqlLexicon lexicon) {
  return Scanner(sql, lexicon).Run();
}

bool IsKeyword(std::string_view word, std::string_view keyword) {
  if (word.size() != keyword.size()) {
    return false;
  }
  for (size_t i = 0; i < word.size(); ++i) {
    const char a = word[i] >= 'a' && word[i] <= 'z' ? static_cast<char>(word[i] - 32) : word[i];
    const char b =
        keyword[i] >= 'a' && keyword[i] <= 'z' ? static_cast<char>(keyword[i] - 32) : keyword[i];
    if (a != b) {
      return false;
    }
  }
  return true;
}

std::vector<std::string_view> SplitStatements(std::string_view sql) {
  std::vector<std::string_view> statements;
  size_t start = 0;
  size_t offset = 0;
  bool holds_code = false;
  const auto close = [&](size_t end) {
    if (holds_code) {
      statements.push_back(sql.substr(start, end - start));
    }
    holds_code = false;
  };
  for (const SqlToken& token : ScanSql(sql)) {
    if (token.kind == SqlTokenKind::kSemicolon) {
      close(offset);
      start = offset + 1;
    } else if (token.kind != SqlTokenKind::kBlank && token.kind != SqlTokenKind::kComment) {
      holds_code = true;
    }
    offset += token.text.size();
  }
  close(sql.size());
  return statements;
}

}  // namespace varnel::db::internal
