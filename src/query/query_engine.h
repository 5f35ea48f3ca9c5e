// The query translators behind MdlQuery, in engine terms: each turns one
// field's QueryValue into its SQL predicate, or nullopt when the field adds no
// condition, and records in the parse context why a term failed.
#pragma once

#include <optional>
#include <string>

#include "query/query_parse.h"

namespace varnel {
class ClsFields;
}

namespace varnel::internal {

std::optional<std::string> TranslateText(const ClsFields& field, QueryParse& parse);
std::optional<std::string> TranslateNumber(const ClsFields& field, QueryParse& parse);
std::optional<std::string> TranslateCurrency(const ClsFields& field, QueryParse& parse);
std::optional<std::string> TranslateDate(const ClsFields& field, QueryParse& parse);

}  // namespace varnel::internal
