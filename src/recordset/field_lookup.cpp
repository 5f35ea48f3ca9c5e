#include "recordset/field_lookup.h"

#include "fields/field_names.h"

namespace varnel::internal {

std::optional<size_t> FindFieldByName(const RecordsetState& rs, std::string_view name) {
  if (name.empty()) {
    return std::nullopt;
  }
  for (size_t i = 0; i < rs.fields.size(); ++i) {
    if (NamesEqual(rs.fields[i]->Name, name)) {
      return i;
    }
  }
  return std::nullopt;
}

std::optional<size_t> FindFieldByKey(const RecordsetState& rs, std::string_view key) {
  if (key.empty()) {
    return std::nullopt;
  }
  for (size_t i = 0; i < rs.keys.size(); ++i) {
    if (NamesEqual(rs.keys[i], key)) {
      return i;
    }
  }
  return std::nullopt;
}

std::optional<size_t> FindField(const RecordsetState& rs, const Variant& key) {
  if (key.IsString()) {
    return FindFieldByKey(rs, key.StringView());
  }
  if (key.IsBlank()) {
    return std::nullopt;
  }
  int32_t position = 0;
  try {
    position = key.ToLong();
  } catch (const VbError&) {
    return std::nullopt;  // a number too large for a position
  }
  if (position < 1 || static_cast<size_t>(position) > rs.fields.size()) {
    return std::nullopt;
  }
  return static_cast<size_t>(position) - 1;
}

}  // namespace varnel::internal
