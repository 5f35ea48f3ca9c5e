// Recordset: opening, closing and moving the cursor.
#include <cctype>

#include "db/db_errors.h"
#include "db/recordset_data.h"
#include "varnel/db.h"

namespace varnel::db {
namespace {

// A Source that is not a query is the name of a table or view (or the text
// that follows the word From), read whole.
std::string QueryText(const std::string& source) {
  size_t start = 0;
  while (start < source.size() && std::isspace(static_cast<unsigned char>(source[start]))) {
    ++start;
  }
  if (start < source.size() && source[start] == '(') {
    return source;
  }
  std::string word;
  for (size_t i = start; i < source.size() && std::isalpha(static_cast<unsigned char>(source[i]));
       ++i) {
    word += static_cast<char>(std::toupper(static_cast<unsigned char>(source[i])));
  }
  if (word == "SELECT" || word == "WITH" || word == "VALUES") {
    return source;
  }
  return "SELECT * FROM " + source;
}

}  // namespace

Recordset::Recordset() : d_(std::make_unique<internal::RecordsetData>()) {}

Recordset::~Recordset() = default;

void Recordset::Open(const std::string& Source, std::shared_ptr<Connection> ActiveConnection,
                     int32_t CursorType, int32_t LockType, int32_t /*Options*/) {
  if (d_->statement != nullptr) {
    internal::RaiseDbError(internal::kErrObjectOpen, "(The recordset is already open.)");
  }
  if (ActiveConnection == nullptr || ActiveConnection->State() == 0) {
    internal::RaiseDbError(internal::kErrObjectClosed, "(The recordset's connection is not open.)");
  }
  if (Source.find_first_not_of(" \t\r\n") == std::string::npos) {
    internal::RaiseDbError(internal::kErrBadArguments, "(The recordset's Source is empty.)");
  }
  if (CursorType != -1) {
    this->CursorType = CursorType;
  }
  if (LockType != -1) {
    this->LockType = LockType;
  }
  auto data = std::make_unique<internal::RecordsetData>();
  internal::Driver& driver = ActiveConnection->Driver();
  data->statement = driver.Prepare(driver.DatabaseSql(QueryText(Source)));
  data->connection = std::move(ActiveConnection);
  d_ = std::move(data);
}

void Recordset::Close() {
  d_->RequireOpen();
  d_ = std::make_unique<internal::RecordsetData>();
}

int32_t Recordset::State() const { return d_->statement != nullptr ? 1 : 0; }

bool Recordset::Bof() const {
  d_->EnsureLoaded();
  return d_->Count() == 0 || d_->position < 0;
}

bool Recordset::Eof() const {
  d_->EnsureLoaded();
  return d_->Count() == 0 || d_->position >= d_->Count();
}

void Recordset::MoveFirst() {
  d_->EnsureLoaded();
  if (d_->Count() == 0) {
    internal::RaiseDbError(internal::kErrNoCurrentRecord);
  }
  d_->position = 0;
}

void Recordset::MoveLast() {
  d_->EnsureLoaded();
  if (d_->Count() == 0) {
    internal::RaiseDbError(internal::kErrNoCurrentRecord);
  }
  d_->position = d_->Count() - 1;
}

void Recordset::MoveNext() {
  if (Eof()) {
    internal::RaiseDbError(internal::kErrNoCurrentRecord);
  }
  ++d_->position;
}

void Recordset::MovePrevious() {
  if (Bof()) {
    internal::RaiseDbError(internal::kErrNoCurrentRecord);
  }
  --d_->position;
}

int32_t Recordset::RecordCount() const {
  d_->EnsureLoaded();
  return d_->Count();
}

int32_t Recordset::AbsolutePosition() const {
  d_->EnsureLoaded();
  return d_->HasCurrentRow() ? d_->position + 1 : 0;
}

std::shared_ptr<Connection> Recordset::ActiveConnection() const { return d_->connection; }

}  // namespace varnel::db
