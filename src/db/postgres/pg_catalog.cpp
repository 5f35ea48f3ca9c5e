#include "db/postgres/pg_catalog.h"

#include <cstdlib>

#include "varnel/variant.h"

namespace varnel::db::internal {
namespace {

// Every table, view and column the search path shows, with the column's base
// type (through domains) and its type category ('S' for text types).
constexpr const char* kNamesQuery =
    "SELECT c.relname, a.attname, COALESCE(NULLIF(t.typbasetype, 0::oid), t.oid)::int8, "
    "t.typcategory "
    "FROM pg_catalog.pg_class c "
    "LEFT JOIN pg_catalog.pg_attribute a "
    "ON a.attrelid = c.oid AND a.attnum > 0 AND NOT a.attisdropped "
    "LEFT JOIN pg_catalog.pg_type t ON t.oid = a.atttypid "
    "WHERE c.relkind IN ('r', 'v', 'm', 'f', 'p') AND pg_catalog.pg_table_is_visible(c.oid)";

constexpr int64_t kBooleanType = 16;
constexpr int64_t kMoneyType = 790;

std::string Folded(std::string_view name) {
  std::string folded(name);
  for (char& c : folded) {
    if (c >= 'A' && c <= 'Z') {
      c = static_cast<char>(c - 'A' + 'a');
    }
  }
  return folded;
}

}  // namespace

void PgCatalog::Add(const std::string& name, bool is_column, int64_t base_type, char category) {
  CatalogName& entry = exact_[name];
  entry.name = name;
  if (is_column) {
    entry.boolean = entry.boolean || base_type == kBooleanType;
    entry.money = entry.money || base_type == kMoneyType;
    entry.not_text = entry.not_text || category != 'S';
  }
  // Several names may match without regard to case ("Name", "NAME"): the one
  // an unquoted name would mean wins, else the first in byte order.
  const std::string folded = Folded(name);
  auto [slot, inserted] = folded_.try_emplace(folded, name);
  if (!inserted && slot->second != folded && (name == folded || name < slot->second)) {
    slot->second = name;
  }
}

void PgCatalog::Load() {
  const PgResult result = session_.Run(kNamesQuery, {}, "reading the names of tables and columns");
  exact_.clear();
  folded_.clear();
  for (int row = 0; row < PQntuples(result.get()); ++row) {
    Add(PQgetvalue(result.get(), row, 0), false, 0, 0);
    if (!PQgetisnull(result.get(), row, 1)) {
      Add(PQgetvalue(result.get(), row, 1), true, std::atoll(PQgetvalue(result.get(), row, 2)),
          PQgetvalue(result.get(), row, 3)[0]);
    }
  }
  loaded_ = true;
  may_reload_ = false;
  generation_ = session_.generation();
}

const CatalogName* PgCatalog::Lookup(std::string_view name) const {
  if (auto exact = exact_.find(std::string(name)); exact != exact_.end()) {
    return &exact->second;
  }
  if (auto folded = folded_.find(Folded(name)); folded != folded_.end()) {
    return &exact_.at(folded->second);
  }
  return nullptr;
}

const CatalogName* PgCatalog::Find(std::string_view name) {
  if (!loaded_ || generation_ != session_.generation()) {
    Load();
  }
  const CatalogName* found = Lookup(name);
  if (found == nullptr && may_reload_) {
    Load();
    found = Lookup(name);
  }
  return found;
}

namespace {

// The lookup of a catalog that cannot be read: every name is unknown.
class NoNames final : public NameLookup {
 public:
  const CatalogName* Find(std::string_view) override { return nullptr; }
};

}  // namespace

std::string PgTranslator::ToDatabaseSql(std::string_view sql) {
  catalog_.BeginTranslation();
  try {
    return TranslateForPostgres(sql, catalog_);
  } catch (const VbError&) {
    // The names cannot be read (the server is gone): the statement is sent as
    // its unquoted names would mean it, and its own failure says what happened
    // to it.
    NoNames none;
    return TranslateForPostgres(sql, none);
  }
}

}  // namespace varnel::db::internal
