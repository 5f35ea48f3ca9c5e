// Column names for the library's SQL, quoted by the one quoting module.
#include "db/sql_quote.h"
#include "varnel/modules.h"

namespace varnel::MdlQuery {

std::string QuoteName(const std::string& Name) { return db::internal::BracketName(Name); }

}  // namespace varnel::MdlQuery
