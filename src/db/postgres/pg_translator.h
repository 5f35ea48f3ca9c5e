// The SQL that the library composes, made PostgreSQL's own. Outside quoted
// text only:
//   [Name]   the table or column as the database holds it, in double quotes:
//            the exact name when it exists, else the one that matches without
//            regard to case, else Name as an unquoted name would fold (to
//            lower case; a name that cannot stand unquoted is kept as written);
//   LIKE     ILIKE, so that it matches without regard to case, with no escape
//            character (ESCAPE '') unless one is given, as the library's
//            patterns are meant;
//   [B]=0    a boolean column compared with a number compares its 0/1 value
//            ("B"::int=0: the library writes [Paid]=0 and [Paid]<>0);
//   [M]>=1.5 a money column compared with a number compares its amount;
//   [N] LIKE a column that is not text is matched as its text, and compared
//            with '' as its text.
// Date literals need nothing: the library writes ISO 8601 text, which the
// server reads for date, time and timestamp columns.
//
//   TranslateForPostgres("Select * From Items Where ([Name] LIKE '%a%')", names)
//   // Select * From Items Where ("Name" ILIKE '%a%' ESCAPE '')
#pragma once

#include <string>
#include <string_view>

namespace varnel::db::internal {

// What the translation needs to know of one table or column name.
struct CatalogName {
  std::string name;       // exactly as the database holds it
  bool boolean = false;   // a boolean column in some table
  bool money = false;     // a money column in some table
  bool not_text = false;  // a column of a type other than text in some table
};

// The names of the database's tables and columns.
class NameLookup {
 public:
  virtual ~NameLookup() = default;
  // The name the database holds for Name: the exact one, else one that
  // matches without regard to case; nullptr when there is none.
  virtual const CatalogName* Find(std::string_view name) = 0;
};

std::string TranslateForPostgres(std::string_view sql, NameLookup& names);

// Name in double quotes, its own double quotes doubled.
std::string QuotePgName(std::string_view name);

}  // namespace varnel::db::internal
