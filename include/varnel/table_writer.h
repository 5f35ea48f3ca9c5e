// TableWriter: writes a recordset's pending row back to its table. Attach one
// to a recordset and every UpdateRecord that reaches the client
// (UserUpdateRecord) becomes an INSERT, UPDATE or DELETE in one transaction.
//
//   varnel::ClsRecordset rs;                    // configured and loaded
//   varnel::TableWriter writer(rs);             // keys: the table's primary key
//   rs.Modify("Qty", int32_t{4});
//   rs.UpdateRecord();  // UPDATE [Orders] SET [Qty]=? WHERE [OrderId]=? AND [Qty]=? ...
//
// What is written: the fields whose IsData and SaveToDB are both true, values
// bound as parameters. An UPDATE or DELETE finds its row by the key columns and
// by every written column's value from before the edit (GetModifyValue,
// GetDeleteValue), so a row that someone else changed or deleted meanwhile
// matches nothing: that is reported and answered E_OtherErr, and the database
// is left as it was. Any database error is reported (through MdlProcess, in the
// thread's language), the transaction rolled back and E_OtherErr answered.
// After an INSERT, key columns that were left blank receive the values the
// database generated.
//
// The writer is an event sink: it must outlive its attachment and is detached
// from the recordset when destroyed. It must be destroyed before the recordset.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "varnel/db.h"
#include "varnel/enums.h"
#include "varnel/events.h"
#include "varnel/export.h"

VARNEL_API_BEGIN

namespace varnel {

class ClsRecordset;
VARNEL_API_END  // engine types: declared here, never exported
namespace internal {
class TableWriterEngine;
}
VARNEL_API_BEGIN

class TableWriter : public ClsRecordsetEvents {
 public:
  // Attaches to Recordset. KeyColumns name the columns that identify a row;
  // empty: the table's primary key when the database reports one, otherwise
  // every written column.
  explicit TableWriter(ClsRecordset& Recordset, std::vector<std::string> KeyColumns = {});
  ~TableWriter() override;
  TableWriter(const TableWriter&) = delete;
  TableWriter& operator=(const TableWriter&) = delete;

  // The table written to; "" means the recordset's TableName.
  std::string TableName;
  // The connection written through; nullptr means the recordset's SFConnection
  // when it is open, else a connection of the writer's own, opened from the
  // recordset's ConnectString on first use and kept.
  std::shared_ptr<db::Connection> Connection;

  // The key columns in use (named, or discovered from the database); empty
  // when rows are identified by all their written columns. Never throws.
  std::vector<std::string> KeyColumns();

  // Writes the recordset's pending change now, as UserUpdateRecord does.
  // Returns E_Succeed, or E_OtherErr after rolling back and reporting.
  Enum_EditRecord WritePendingRow();

  // The statements of the last write, in the order they ran (for display).
  const std::vector<std::string>& LastStatements() const;

  // The recordset's request: writes the pending row unless an earlier sink
  // already answered something other than E_Succeed.
  void UserUpdateRecord(Enum_EditRecord& Update_Succeed) override;

 private:
  ClsRecordset& recordset_;
  int32_t cookie_ = 0;
  std::unique_ptr<internal::TableWriterEngine> engine_;
};

}  // namespace varnel

VARNEL_API_END
