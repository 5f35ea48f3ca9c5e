#include "compute/token_cache.h"

#include <functional>
#include <unordered_map>
#include <utility>
#include <vector>

namespace varnel::internal {
namespace {

// Enough for every computed field of the screens of one thread; beyond it the
// cache starts afresh rather than grow without bound.
constexpr size_t kMaxEntries = 512;

struct Key {
  const ClsRecordset* recordset;
  std::string source;
};

// Looked up without copying the expression text.
struct KeyView {
  const ClsRecordset* recordset;
  std::string_view source;
};

struct KeyHash {
  using is_transparent = void;
  size_t operator()(const KeyView& key) const {
    return std::hash<std::string_view>{}(key.source) ^ std::hash<const void*>{}(key.recordset);
  }
  size_t operator()(const Key& key) const { return (*this)(KeyView{key.recordset, key.source}); }
};

struct KeyEqual {
  using is_transparent = void;
  static KeyView View(const Key& key) { return {key.recordset, key.source}; }
  static KeyView View(const KeyView& key) { return key; }
  template <class A, class B>
  bool operator()(const A& a, const B& b) const {
    return View(a).recordset == View(b).recordset && View(a).source == View(b).source;
  }
};

}  // namespace

struct TokenCache {
  std::unordered_map<Key, std::unique_ptr<CompiledExpression>, KeyHash, KeyEqual> entries;
  // The entry used last, tried before the map: a load evaluates the same
  // expression row after row.
  const ClsRecordset* last_recordset = nullptr;
  CompiledExpression* last = nullptr;
  // Entries replaced while an evaluation may still be reading them.
  std::vector<std::unique_ptr<CompiledExpression>> retired;
  int uses = 0;
};

namespace {

thread_local TokenCache thread_cache;

CompiledExpression& Remember(TokenCache& cache, const ClsRecordset* recordset,
                             std::unique_ptr<CompiledExpression> code) {
  if (cache.entries.size() >= kMaxEntries) {
    for (auto& [key, entry] : cache.entries) {
      cache.retired.push_back(std::move(entry));
    }
    cache.entries.clear();
  }
  const auto found = cache.entries.find(KeyView{recordset, code->source});
  if (found != cache.entries.end()) {
    cache.retired.push_back(std::move(found->second));
    found->second = std::move(code);
    return *found->second;
  }
  std::string source = code->source;
  auto& slot = cache.entries[Key{recordset, std::move(source)}];
  slot = std::move(code);
  return *slot;
}

}  // namespace

CacheUse::CacheUse() : cache_(thread_cache) { ++cache_.uses; }

CacheUse::~CacheUse() {
  if (--cache_.uses == 0) {
    cache_.retired.clear();
  }
}

const CompiledExpression& CacheUse::Get(const ClsRecordset* recordset, const std::string& source,
                                        const FieldList& fields) {
  TokenCache& cache = cache_;
  CompiledExpression* code = nullptr;
  if (cache.last != nullptr && cache.last_recordset == recordset && cache.last->source == source) {
    code = cache.last;
  } else {
    const auto found = cache.entries.find(KeyView{recordset, source});
    code = found == cache.entries.end() ? nullptr : found->second.get();
  }
  if (code == nullptr || !code->names.Matches(fields)) {
    code = &Remember(cache, recordset, CompileExpression(source, fields));
  }
  cache.last_recordset = recordset;
  cache.last = code;
  return *code;
}

}  // namespace varnel::internal
