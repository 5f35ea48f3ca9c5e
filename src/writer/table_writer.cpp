#include "varnel/table_writer.h"

#include "messages/error_trap.h"
#include "varnel/recordset.h"
#include "writer/table_writer_engine.h"

namespace varnel {

TableWriter::TableWriter(ClsRecordset& Recordset, std::vector<std::string> KeyColumns)
    : recordset_(Recordset),
      engine_(std::make_unique<internal::TableWriterEngine>(Recordset, std::move(KeyColumns))) {
  cookie_ = recordset_.Advise(this);
}

TableWriter::~TableWriter() { recordset_.Unadvise(cookie_); }

std::vector<std::string> TableWriter::KeyColumns() {
  return internal::Quiet(std::vector<std::string>{},
                         [&] { return engine_->KeyColumns(TableName, Connection); });
}

Enum_EditRecord TableWriter::WritePendingRow() { return engine_->Write(TableName, Connection); }

const std::vector<std::string>& TableWriter::LastStatements() const {
  return engine_->last_statements();
}

std::optional<SaveConflict> TableWriter::PendingConflict() const {
  return engine_->PendingConflict();
}

Enum_EditRecord TableWriter::ResolveKeepMine() { return engine_->KeepMine(); }

Enum_EditRecord TableWriter::ResolveTakeTheirs() {
  return engine_->TakeTheirs(TableName, Connection);
}

void TableWriter::UserUpdateRecord(Enum_EditRecord& Update_Succeed) {
  if (Update_Succeed == E_Succeed) {
    Update_Succeed = WritePendingRow();
  }
}

}  // namespace varnel
