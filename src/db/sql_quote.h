// How the library writes names and text into SQL: the one place for quoting.
// The library's SQL writes every table and column name in [brackets] with a
// "]" inside doubled, and text inside single quotes with every "'" doubled;
// each driver's translation (db/dialect.h) turns bracketed names into its
// database's own quoting.
//
//   BracketName("Size [cm]")      // "[Size [cm]]]"
//   UnquoteName("[Size [cm]]]")   // "Size [cm]"
//   TextLiteral("O'Brien")        // "'O''Brien'"
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace varnel::db::internal {

// "[" name "]" with every "]" of name doubled.
std::string BracketName(std::string_view name);

// A name without its quotes: [..] (with "]]" read as "]"), ".." (with "\"\""
// read as "\"") or `..` (with "``" read as "`"); any other text as it is. An
// unterminated "[..." is read to its end.
std::string UnquoteName(std::string_view name);

// Name between Quote characters, every Quote inside doubled: '"' for
// PostgreSQL and standard SQL, '`' for names SQLite must never read as text.
std::string QuoteNameWith(std::string_view name, char quote);

// Text made safe to stand between single quotes: every "'" doubled, nothing
// else changed. Safe only where the database reads backslashes literally
// (every session the library opens ensures that).
std::string EscapeText(std::string_view text);

// "'" EscapeText(text) "'".
std::string TextLiteral(std::string_view text);

// The text of a literal that Sql starts with ('O''Brien' is O'Brien) and the
// rest of Sql after it; nullopt when Sql does not start with a whole literal.
struct ReadLiteral {
  std::string text;
  std::string_view rest;
};
std::optional<ReadLiteral> ReadTextLiteral(std::string_view sql);

}  // namespace varnel::db::internal
