// Setting a recordset up for the console: its connection, its fields (from
// the field-information table, or one per column of a table) and its writer.
#pragma once

#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <utility>

#include "options.h"
#include "varnel/varnel.h"

namespace varnel::app {

// The connection string the options name; for the sample database, creates
// it first when needed (telling the user on Out).
std::string ResolveConnection(const Options& options, std::ostream& out);

// Configures rs on an open connection: fields from --view (or the sample's
// Orders screen) or from the columns of --table. Raises VbError (or
// std::runtime_error) with a description for the user when that fails.
void DefineScreen(const Options& options, const std::shared_ptr<db::Connection>& connection,
                  ClsRecordset& rs);

// The display names of a screen's fields in English and Chinese, by field
// name; empty for a table opened with a field per column.
struct ScreenNames {
  std::map<std::string, std::pair<std::string, std::string>> by_field;
};

// The names that the field-information table gives the fields of Options'
// screen (none for --table). Never throws: a table without them gives none.
ScreenNames ReadScreenNames(const Options& options,
                            const std::shared_ptr<db::Connection>& connection);

// Gives every field its display name in Language (1033 or 2052).
void ApplyNames(ClsRecordset& rs, const ScreenNames& names, int32_t language);

// After the fields are defined: key columns that a copy must not carry over.
void ProtectKeys(ClsRecordset& rs, const std::vector<std::string>& keys);

}  // namespace varnel::app
