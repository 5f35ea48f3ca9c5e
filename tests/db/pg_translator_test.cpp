// The library's SQL made PostgreSQL's own: rows of SQL as the library writes
// it and the SQL sent, over a fixed catalog of names.
#include "db/postgres/pg_translator.h"

#include <gtest/gtest.h>

#include <cctype>
#include <vector>

#include "db/sql_scanner.h"

namespace varnel::testing {
namespace {

using db::internal::CatalogName;

// Names as a database created them: Items(Id, "Name", Paid boolean, Price
// money, Qty integer, "Made" timestamp) and Other("NAME", "name").
class FixedNames : public db::internal::NameLookup {
 public:
  const CatalogName* Find(std::string_view name) override {
    ++lookups;
    std::string folded(name);
    for (char& c : folded) {
      c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    for (const std::string& key : {std::string(name), folded}) {
      for (const CatalogName& entry : names_) {
        if (entry.name == key) {
          return &entry;
        }
      }
    }
    return nullptr;
  }
  int lookups = 0;

 private:
  const std::vector<CatalogName> names_{{"items"},
                                        {"Name"},
                                        {"NAME"},
                                        {"name"},
                                        {"id", false, false, true},
                                        {"paid", true, false, true},
                                        {"price", false, true, true},
                                        {"qty", false, false, true},
                                        {"Made", false, false, true}};
};

struct TranslationCase {
  const char* library;
  const char* sent;
};

TEST(PostgresTranslation, RewritesNamesLikeAndBooleanComparisonsOutsideQuotedText) {
  const TranslationCase cases[] = {
      {"Select * From [Items]", "Select * From \"items\""},
      {"Select [Id],[Name] From Items", "Select \"id\",\"Name\" From Items"},
      {"[NAME]", "\"NAME\""},
      {"[nAmE]", "\"name\""},
      {"[Made]>='2003-05-06 00:00:00'", "\"Made\">='2003-05-06 00:00:00'"},
      {"[Missing]=1", "\"missing\"=1"},
      {"[Order Date] is null", "\"Order Date\" is null"},
      {"[a\"b]", "\"a\"\"b\""},
      {"[x]]y]", "\"x]y\""},
      {"[Name]='a\\' or [Id]=1", "\"Name\"='a\\' or \"id\"=1"},
      {"([Name] LIKE '%smith%')", "(\"Name\" ILIKE '%smith%' ESCAPE '')"},
      {"([Name] NOT  LIKE '%smith%')", "(\"Name\" NOT  ILIKE '%smith%' ESCAPE '')"},
      {"[Name] like 'a' escape '!'", "\"Name\" ilike 'a' escape '!'"},
      {"[Name] LIKE ?", "\"Name\" ILIKE ? ESCAPE ''"},
      {"[Name] LIKE 'open", "\"Name\" ILIKE 'open"},
      {"[Name] LIKE?'x'", "\"Name\" ILIKE? ESCAPE '' 'x'"},
      {"[Name] LIKE $q$open", "\"Name\" ILIKE $q$open"},
      {"[Qty] LIKE '%1%'", "\"qty\"::text ILIKE '%1%' ESCAPE ''"},
      {"[Qty] NOT LIKE '%1%'", "\"qty\"::text NOT ILIKE '%1%' ESCAPE ''"},
      {"[Paid]=0", "\"paid\"::int=0"},
      {"[Paid]<>0", "\"paid\"::int<>0"},
      {"[Paid] <> -1", "\"paid\"::int <> -1"},
      {"[Paid]=-1", "\"paid\"::int=-1"},
      {"[Paid]=True", "\"paid\"=True"},
      {"[Paid]=?", "\"paid\"=?"},
      {"[Price]>=1.5", "\"price\"::numeric>=1.5"},
      {"[Qty]>=100", "\"qty\">=100"},
      {"[Qty] is NULL or [Qty]=''", "\"qty\" is NULL or \"qty\"::text=''"},
      {"[Name]=''", "\"Name\"=''"},
      {"Name = '[Name] LIKE x'", "Name = '[Name] LIKE x'"},
      {"\"[Id]\" -- [Id] like\n/* [Id] */", "\"[Id]\" -- [Id] like\n/* [Id] */"},
      {"E'it\\'s [Id]' || $q$[Id] like$q$", "E'it\\'s [Id]' || $q$[Id] like$q$"},
      {"a[1] + f(x)[2] + ARRAY [3]", "a[1] + f(x)[2] + ARRAY [3]"},
      {"Where[Id]=1", "Where\"id\"=1"},
      {"Select 1 unlike x", "Select 1 unlike x"},
  };
  FixedNames names;
  for (const TranslationCase& c : cases) {
    EXPECT_EQ(db::internal::TranslateForPostgres(c.library, names), c.sent) << c.library;
  }
  names.lookups = 0;
  EXPECT_EQ(db::internal::TranslateForPostgres("SELECT a FROM t WHERE b = '[x]'", names),
            "SELECT a FROM t WHERE b = '[x]'");
  EXPECT_EQ(names.lookups, 0) << "text without brackets asks for no names";
}

struct SplitCase {
  const char* script;
  std::vector<std::string_view> statements;
};

TEST(SqlScanner, SplitsScriptsAtSemicolonsOutsideQuotedText) {
  const SplitCase cases[] = {
      {"a; b;", {"a", " b"}},
      {"a;;  ; -- only a comment\n", {"a"}},
      {"x = ';'; y = \"a;b\"; $$;$$; /* ; */ z",
       {"x = ';'", " y = \"a;b\"", " $$;$$", " /* ; */ z"}},
      {"", {}},
  };
  for (const SplitCase& c : cases) {
    EXPECT_EQ(db::internal::SplitStatements(c.script), c.statements) << c.script;
  }
}

}  // namespace
}  // namespace varnel::testing
