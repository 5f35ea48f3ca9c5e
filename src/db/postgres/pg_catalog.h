// The names of the tables and columns a PostgreSQL connection sees (those of
// its search path), read from the server's catalog once and read again when
// a name is not found (tables may be created after it was read), after this
// connection changed the schema, and after it reconnected.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "db/dialect.h"
#include "db/postgres/pg_session.h"
#include "db/postgres/pg_translator.h"

namespace varnel::db::internal {

class PgCatalog final : public NameLookup {
 public:
  explicit PgCatalog(PgSession& session) : session_(session) {}

  const CatalogName* Find(std::string_view name) override;

  // A new translation begins: a name it misses may read the catalog again
  // (once per translation).
  void BeginTranslation() { may_reload_ = true; }
  // The schema changed: read the catalog before the next lookup.
  void Invalidate() { loaded_ = false; }

 private:
  void Load();
  const CatalogName* Lookup(std::string_view name) const;
  void Add(const std::string& name, bool is_column, int64_t base_type, char category);

  PgSession& session_;
  bool loaded_ = false;
  bool may_reload_ = true;
  uint64_t generation_ = 0;  // the session's generation when loaded
  std::unordered_map<std::string, CatalogName> exact_;
  std::unordered_map<std::string, std::string> folded_;  // lower case -> a key of exact_
};

// The PostgreSQL translation hook: the catalog and the rewriting together.
class PgTranslator final : public SqlTranslator {
 public:
  explicit PgTranslator(PgSession& session) : catalog_(session) {}
  std::string ToDatabaseSql(std::string_view sql) override;
  void SchemaChanged() { catalog_.Invalidate(); }

 private:
  PgCatalog catalog_;
};

}  // namespace varnel::db::internal
