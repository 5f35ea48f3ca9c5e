// Cuts SQL text into tokens so that rewriting it never touches quoted text:
// 'text' (also E'...' with backslash escapes), "names", $tag$ bodies $tag$
// and comments pass through whole, and a [bracketed name] is one token.
// Plain '...' text never takes a backslash as an escape: the sessions that the
// library opens make the database read it so too.
//
//   std::vector<SqlToken> tokens = ScanSql("SELECT [Qty] FROM T WHERE a LIKE 'x?'");
//   // Word SELECT, Blank, BracketName [Qty], ..., Word LIKE, Blank, Text 'x?'
//
// In PostgreSQL, a '[' directly after a name, a ')' or a ']' (a[1], f(x)[2])
// or after the word ARRAY opens a subscript, not a name. A '?' outside quoted text is a
// placeholder. Unterminated quotes and comments run to the end of the text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace varnel::db::internal {

// Whose SQL is read: SQLite knows neither E'...' text, $tag$ quoting nor
// nested comments, and quotes names in `...` too.
enum class SqlLexicon { kPostgres, kSqlite };

enum class SqlTokenKind {
  kBlank,        // spaces, tabs, line ends
  kComment,      // -- to the end of the line, or /* ... */ (nested)
  kWord,         // a keyword or an unquoted name
  kNumber,       // 12, 1.5, .5, 1e-3
  kText,         // '...', E'...', $tag$...$tag$
  kQuotedName,   // "...", or `...` in SQLite
  kBracketName,  // [...]
  kPlaceholder,  // ?
  kSemicolon,    // ;
  kOperator,     // a run of operator characters: = <> <= + - * / ...
  kPunctuation,  // one of ( ) , . : [ ] and anything else
};

struct SqlToken {
  SqlTokenKind kind;
  std::string_view text;  // a view into the scanned SQL
  bool closed = true;     // false for quoted text or a name whose quote runs to the end
};

// The tokens of Sql, in order; their texts put together give Sql back.
std::vector<SqlToken> ScanSql(std::string_view sql, SqlLexicon lexicon = SqlLexicon::kPostgres);

// True when Word is Keyword, compared without regard to ASCII case.
bool IsKeyword(std::string_view word, std::string_view keyword);

// The statements of a script, split at ';' outside quoted text; statements
// holding only blanks and comments are left out.
std::vector<std::string_view> SplitStatements(std::string_view sql);

}  // namespace varnel::db::internal
