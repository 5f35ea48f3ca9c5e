// Finding a field of the collection the way Item does: a string selects by
// key, the name given to Add (any case; "" selects nothing, unnamed fields
// have no key), a number by 1-based position.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "recordset/recordset_state.h"

namespace varnel::internal {

// 0-based index of the first field whose Name is name (any case); nullopt when none.
std::optional<size_t> FindFieldByName(const RecordsetState& rs, std::string_view name);
// 0-based index of the field whose key is key (any case); nullopt when none.
std::optional<size_t> FindFieldByKey(const RecordsetState& rs, std::string_view key);

// 0-based index of the field that Item(key) returns; nullopt when absent.
std::optional<size_t> FindField(const RecordsetState& rs, const Variant& key);

}  // namespace varnel::internal
