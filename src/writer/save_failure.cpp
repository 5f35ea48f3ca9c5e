#include "writer/save_failure.h"

#include <strings.h>

#include "db/db_errors.h"
#include "messages/error_trap.h"
#include "writer/writer_texts.h"

namespace varnel::internal {
namespace {

using db::internal::DbError;
using db::internal::DbFailure;

struct KindText {
  DbFailure kind;
  WriterText text;
};

constexpr KindText kKindTexts[] = {
    {DbFailure::kNotNull, WriterText::NotNull},
    {DbFailure::kUnique, WriterText::Unique},
    {DbFailure::kCheck, WriterText::Check},
    {DbFailure::kForeignKey, WriterText::ForeignKey},
    {DbFailure::kBusy, WriterText::Busy},
    {DbFailure::kReadOnly, WriterText::ReadOnly},
    {DbFailure::kDiskFull, WriterText::DiskFull},
    {DbFailure::kConnectionLost, WriterText::ConnectionLost},
    {DbFailure::kCommitUnknown, WriterText::CommitUnknown},
};

bool NamesAField(DbFailure kind) {
  return kind == DbFailure::kNotNull || kind == DbFailure::kUnique || kind == DbFailure::kCheck ||
         kind == DbFailure::kForeignKey;
}

// The database's failure in plain words, then its own words for the record.
SaveFailure DescribeDbError(const RecordsetState& rs, const DbError& error, SaveStage stage) {
  DbFailure kind = error.kind();
  if (kind == DbFailure::kConnectionLost && stage == SaveStage::kCommitting) {
    kind = DbFailure::kCommitUnknown;
  }
  WriterText text = WriterText::Refused;
  for (const KindText& row : kKindTexts) {
    if (row.kind == kind) {
      text = row.text;
    }
  }
  if (NamesAField(kind) && error.column().empty()) {
    text = WriterText::Refused;  // the database did not say which field
  }
  const std::string label =
      kind == DbFailure::kCheck ? error.column() : FieldLabel(rs, error.column());
  SaveFailure failure{error.Number(), WriterMessage(text, label) + "\n" + error.Description()};
  failure.outcome_unknown = kind == DbFailure::kCommitUnknown;
  return failure;
}

}  // namespace

RowConflictError::RowConflictError()
    : VbError(kRowNotLocatedError, WriterMessage(WriterText::RowChanged)) {}

std::string FieldLabel(const RecordsetState& rs, const std::string& column) {
  for (const auto& field : rs.fields) {
    if (field->IsData && strcasecmp(field->Name.c_str(), column.c_str()) == 0) {
      return field->DisplayName.empty() ? field->Name : field->DisplayName;
    }
  }
  return column;
}

SaveFailure DescribeSaveFailure(const RecordsetState& rs, SaveStage stage) {
  try {
    throw;
  } catch (const RowConflictError& error) {
    SaveFailure failure{error.Number(), error.Description()};
    failure.conflict = true;
    return failure;
  } catch (const DbError& error) {
    return DescribeDbError(rs, error, stage);
  } catch (const VbError& error) {
    if (error.Number() == db::internal::kErrProvider) {
      return SaveFailure{error.Number(),
                         WriterMessage(WriterText::Refused) + "\n" + error.Description()};
    }
    return SaveFailure{error.Number(), error.Description()};  // the writer's own words
  } catch (...) {
    const CaughtError caught = DescribeCurrentException();
    return SaveFailure{caught.number,
                       WriterMessage(WriterText::Unexpected) + "\n" + caught.description};
  }
}

}  // namespace varnel::internal
