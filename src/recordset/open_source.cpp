// Opening the database objects of a data source. A recordset that is already
// open is reused as it is, which is how U_User mode keeps one query for the
// life of the screen.
#include "recordset/data_source.h"

namespace varnel::internal {
namespace {

constexpr int32_t kClientCursor = 3;
constexpr int32_t kStaticCursor = 3;
constexpr int32_t kReadOnly = 1;

bool IsRecordsetOpen(const ClsRecordset& rs) {
  return rs.SFRecordset != nullptr && rs.SFRecordset->State() > 0;
}

bool IsConnectionOpen(const ClsRecordset& rs) {
  return rs.SFConnection != nullptr && rs.SFConnection->State() > 0;
}

void OpenRecordset(RecordsetState& rs) {
  ClsRecordset& self = rs.self;
  if (self.SFRecordset == nullptr) {
    self.SFRecordset = std::make_shared<db::Recordset>();
  }
  self.SFRecordset->CursorLocation = kClientCursor;
  self.SFRecordset->CursorType = kStaticCursor;
  self.SFRecordset->LockType = kReadOnly;
  self.SFRecordset->Open(rs.sql_text, self.SFConnection, -1, -1, -1);
}

}  // namespace

bool OpenSource(RecordsetState& rs) {
  ClsRecordset& self = rs.self;
  if (IsRecordsetOpen(self)) {
    return true;
  }
  if (!IsConnectionOpen(self)) {
    if (rs.sql_text.empty() || self.ConnectString.empty()) {
      return false;
    }
    if (self.SFConnection == nullptr) {
      self.SFConnection = std::make_shared<db::Connection>();
    }
    self.SFConnection->Open(self.ConnectString, "", "", -1);
  } else if (rs.sql_text.empty()) {
    return false;
  }
  OpenRecordset(rs);
  return true;
}

void ReleaseSource(RecordsetState& rs) {
  ClsRecordset& self = rs.self;
  if (self.SFRecordset != nullptr) {
    if (self.SFRecordset->State() != 0) {
      self.SFRecordset->Close();
    }
    self.SFRecordset.reset();
  }
  if (self.SFConnection != nullptr) {
    if (self.SFConnection->State() != 0) {
      self.SFConnection->Close();
    }
    self.SFConnection.reset();
  }
}

}  // namespace varnel::internal
