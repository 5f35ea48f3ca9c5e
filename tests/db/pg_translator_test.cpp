// The library's SQL made PostgreSQL's own: rows of SQL as the library writes
// it and the SQL sent, over a fixed catalog of names.
#include "db/postgres/pg_translator.h"

#include <gtest/gtest.h>
#include <strings.h>

#include <cctype>
#include <map>

#include "db/postgres/sql_scanner.h"

namespace varnel::testing {
namespace {

using db::internal::CatalogName;

// Names as a database created them: Items(Id, "Name", Paid boolean, Price
// money, Qty integer, "Made" timestamp) and Other("NAME", "name").
class FixedNames : public db::internal::NameLookup {
 public:
  FixedNames() {
    Add({"items"});
    Add({"Name"});
    Add({"NAME"});
    Add({"name"});
    Add({"id", false, false, true});
    Add({"paid", true, false, true});
    Add({"price", false, true, true});
    Add({"qty", false, false, true});
    Add({"Made", false, false, true});
  }
  const CatalogName* Find(std::string_view name) override {
    ++lookups;
    if (auto exact = names_.find(std::string(name)); exact != names_.end()) {
      return &exact->second;
    }
    if (auto folded = names_.find(Lower(std::string(name))); folded != names_.end()) {
      return &folded->second;
    }
    for (const auto& [key, entry] : names_) {
      if (strcasecmp(key.c_str(), std::string(name).c_str()) == 0) {
        return &entry;
      }
    }
    return nullptr;
  }
  int lookups = 0;

 private:
  void Add(CatalogName entry) { names_[entry.name] = entry; }
  static std::string Lower(std::string text) {
    for (char& c : text) {
      c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return text;
  }
  std::map<std::string, CatalogName> names_;
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
      {"([Name] LIKE '%smith%')", "(\"Name\" ILIKE '%smith%' ESCAPE '')"},
      {"([Name] NOT  LIKE '%smith%')", "(\"Name\" NOT  ILIKE '%smith%' ESCAPE '')"},
      {"[Name] like 'a' escape '!'", "\"Name\" ilike 'a' escape '!'"},
      {"[Name] LIKE ?", "\"Name\" ILIKE ? ESCAPE ''"},
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
}

TEST(PostgresTranslation, TextWithoutBracketsAsksForNoNames) {
  FixedNames names;
  EXPECT_EQ(db::internal::TranslateForPostgres("SELECT a FROM t WHERE b = '[x]'", names),
            "SELECT a FROM t WHERE b = '[x]'");
  EXPECT_EQ(names.lookups, 0);
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
