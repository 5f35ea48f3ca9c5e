// Building the field collection from the table's own schema: one field per
// column, as the database's catalog describes the column.
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "db/db_errors.h"
#include "db/driver.h"
#include "db/sql_quote.h"
#include "db/table_catalog.h"
#include "messages/error_trap.h"
#include "recordset/field_default.h"
#include "varnel/recordset.h"

namespace varnel::internal {
namespace {

using db::internal::ColumnKind;
using db::internal::TableColumn;

struct FieldShape {
  Enum_FieldType type;
  Enum_DateType date_type = D_YMDHNS;
  Enum_NumType num_type = N_Integer;
};

// Money becomes a plain number: a currency field needs a sign column, which a
// bare table does not name.
FieldShape ShapeOf(ColumnKind kind) {
  switch (kind) {
    case ColumnKind::kInteger:
      return {F_Numeral};
    case ColumnKind::kReal:
    case ColumnKind::kMoney:
      return {F_Numeral, D_YMDHNS, N_Float};
    case ColumnKind::kDate:
      return {F_Date, D_YMD};
    case ColumnKind::kDateTime:
      return {F_Date, D_YMDHNS};
    case ColumnKind::kTime:
      return {F_Date, D_HNS};
    case ColumnKind::kBoolean:
      return {F_Boolean};
    case ColumnKind::kText:
    case ColumnKind::kUntyped:
      break;
  }
  return {F_Text};
}

bool SameWord(std::string_view text, std::string_view word) {
  if (text.size() != word.size()) {
    return false;
  }
  for (size_t i = 0; i < text.size(); ++i) {
    const char c = text[i] >= 'a' && text[i] <= 'z' ? static_cast<char>(text[i] - 32) : text[i];
    if (c != word[i]) {
      return false;
    }
  }
  return true;
}

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '(')) {
    text.remove_prefix(1);
  }
  while (!text.empty() && (text.back() == ' ' || text.back() == ')')) {
    text.remove_suffix(1);
  }
  return text;
}

// The value of a DEFAULT that is a constant ('text', a number, TRUE/FALSE,
// with PostgreSQL's "::type" casts and parentheses around it), or the engine's
// "Today"/"Now" for the current date or time; nullopt for any other expression.
std::optional<Variant> ConstantDefault(std::string_view sql, ColumnKind kind) {
  sql = Trimmed(sql);
  if (const auto literal = db::internal::ReadTextLiteral(sql)) {
    if (!literal->rest.empty() && !literal->rest.starts_with("::")) {
      return std::nullopt;
    }
    return Variant(literal->text);
  }
  sql = Trimmed(sql.substr(0, sql.find("::")));
  if (SameWord(sql, "TRUE") || SameWord(sql, "FALSE")) {
    return Variant(SameWord(sql, "TRUE"));
  }
  const bool is_date = kind == ColumnKind::kDate || kind == ColumnKind::kDateTime;
  if (is_date && SameWord(sql, "CURRENT_DATE")) {
    return Variant("Today");
  }
  if (is_date && (SameWord(sql, "CURRENT_TIMESTAMP") || SameWord(sql, "NOW()"))) {
    return Variant("Now");
  }
  if (!sql.empty() && IsNumeric(sql)) {
    return Variant(std::string(sql));
  }
  return std::nullopt;
}

void DefineField(ClsRecordset& rs, const TableColumn& column) {
  const std::shared_ptr<ClsFields> field = rs.Add(column.name);
  const FieldShape shape = ShapeOf(column.kind);
  field->FieldType = shape.type;
  field->DateType = shape.date_type;
  field->NumType = shape.num_type;
  field->DisplayName = column.name;
  field->DefinedSize = column.defined_size;
  field->IsData = field->SaveToDB = field->Edit = true;
  // A key the database fills may be left blank; a key is never copied.
  field->EnableNull = !column.not_null || column.generated;
  field->Copy = column.key_position == 0;
  if (column.default_sql) {
    if (const std::optional<Variant> value = ConstantDefault(*column.default_sql, column.kind)) {
      SetDefaultValue(*field, *value);
    }
  }
}

// The connection to read the catalog through, opened for the call when needed.
std::shared_ptr<db::Connection> CatalogConnection(const ClsRecordset& rs,
                                                  const std::shared_ptr<db::Connection>& given) {
  if (given) {
    return given;
  }
  if (rs.SFConnection && rs.SFConnection->State() == 1) {
    return rs.SFConnection;
  }
  auto connection = std::make_shared<db::Connection>();
  connection->Open(rs.ConnectString);
  return connection;
}

}  // namespace
}  // namespace varnel::internal

namespace varnel {

bool ClsRecordset::ReadTableFields(const std::string& Table,
                                   const std::shared_ptr<db::Connection>& Connection) {
  return internal::Trapped(SysErrState, true, [&] {
    const std::shared_ptr<db::Connection> connection =
        internal::CatalogConnection(*this, Connection);
    if (connection->State() != 1) {
      db::internal::RaiseDbError(db::internal::kErrObjectClosed);
    }
    const std::vector<db::internal::TableColumn> columns =
        connection->Driver().Catalog().Columns(Table);
    if (columns.empty()) {
      db::internal::RaiseDbError(db::internal::kErrItemNotFound,
                                 "(The table '" + Table + "' does not exist or has no columns.)");
    }
    Clear();
    for (const db::internal::TableColumn& column : columns) {
      internal::DefineField(*this, column);
    }
    TableName = Table;
    return false;
  });
}

}  // namespace varnel
