// varnel::db: the database access layer, modelled on ADO's objects. Clients
// open connections with it, pass recordsets to ReadFieldsInformation and write
// rows from their UserUpdateRecord handlers.
//
//   auto cn = std::make_shared<varnel::db::Connection>();
//   cn->Open("Provider=SQLite;Data Source=shop.db");
//   cn->BeginTrans();
//   cn->Execute("UPDATE Orders SET Qty=? WHERE Id=?", {varnel::Variant(int32_t{4}),
//                                                       varnel::Variant(int32_t{17})});
//   cn->CommitTrans();
//
// Connection strings are Key=Value pairs separated by ';' (keys in any case).
// Failures raise VbError: -2147467259 with the database's message, or 3706
// for an unknown provider.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "varnel/variant.h"

namespace varnel::db {

namespace internal {
class Driver;
struct RecordsetData;
struct RecordsetAccess;
}  // namespace internal

class Recordset;

// One column of a recordset's current row.
class Field {
 public:
  Field(const Recordset* Owner, int32_t Index) : owner_(Owner), index_(Index) {}
  const std::string& Name() const;
  int32_t DefinedSize() const;  // declared length of a text column, else 0
  Variant Value() const;        // REQUIRES: a current row (neither Bof nor Eof)

 private:
  const Recordset* owner_;
  int32_t index_;
};

class Fields {
 public:
  explicit Fields(const Recordset* Owner) : owner_(Owner) {}
  int32_t Count() const;
  Field Item(int32_t Index) const;  // from 0; VbError 3265 when out of range
  Field Item(const std::string& Name) const;  // exact name; VbError 3265 when absent
  Field operator[](int32_t Index) const { return Item(Index); }
  Field operator[](const std::string& Name) const { return Item(Name); }

 private:
  const Recordset* owner_;
};

class Connection {
 public:
  Connection();
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  /// Opens the database ConnectionString names. "Provider=SQLite;Data Source=<file>" opens an
  /// existing file; add "Create=True" to make a new, empty database when the file is missing
  /// (without it a missing file fails, saying so). Raises VbError when the database cannot open.
  void Open(const std::string& ConnectionString, const std::string& UserID = "",
            const std::string& Password = "", int32_t Options = -1);
  void Close();
  int32_t State() const;  // 0 closed, 1 open
  const std::string& ConnectionString() const { return connection_string_; }
  // Runs one statement with '?' placeholders bound to Params; returns the rows affected.
  int32_t Execute(const std::string& Sql, const std::vector<Variant>& Params = {});
  void BeginTrans();
  void CommitTrans();
  void RollbackTrans();

  // Progress of loads: Callback gets the rows read so far every Every rows of
  // each read of a recordset on this connection, and the read's total when it
  // ends (Every < 1: the total only). An empty Callback stops the calls.
  void OnRowsRead(std::function<void(int64_t Rows)> Callback, int64_t Every = 10000);

  // The open driver; REQUIRES State() == 1. For the library's own use.
  internal::Driver& Driver() const;

 private:
  friend struct internal::RecordsetAccess;
  std::string connection_string_;
  std::unique_ptr<internal::Driver> driver_;
  std::function<void(int64_t)> on_rows_read_;
  int64_t rows_read_every_ = 10000;
};

// A client-side static read-only cursor over the rows of a SELECT or a table.
class Recordset {
 public:
  Recordset();
  ~Recordset();
  Recordset(const Recordset&) = delete;
  Recordset& operator=(const Recordset&) = delete;

  int32_t CursorLocation = 3;  // 3 client side
  int32_t CursorType = 3;      // 3 static
  int32_t LockType = 1;        // 1 read-only

  // Source is a SELECT or a bare table name.
  void Open(const std::string& Source, std::shared_ptr<Connection> ActiveConnection,
            int32_t CursorType = -1, int32_t LockType = -1, int32_t Options = -1);
  void Close();
  int32_t State() const;  // 0 closed, 1 open
  bool Bof() const;
  bool Eof() const;
  void MoveFirst();
  void MoveLast();
  void MoveNext();
  void MovePrevious();
  int32_t RecordCount() const;
  int32_t AbsolutePosition() const;  // 1-based; 0 at Bof or Eof
  varnel::db::Fields Fields() const { return varnel::db::Fields(this); }

  // ADO's filter grammar: Field op Value terms joined by AND/OR, with < > <= >=
  // <> = LIKE, text in '...', dates in #...#. "" removes the filter. A filter that
  // does not parse raises VbError and leaves the rows as they were.
  const std::string& Filter() const;
  void Filter(const std::string& Criteria);

  // Up to Rows rows (-1: all) from the current row on, as [column][row]; moves
  // past them. FieldNames picks and orders the columns (empty: all).
  std::vector<std::vector<Variant>> GetRows(int32_t Rows = -1,
                                            const std::vector<std::string>& FieldNames = {});

  // The connection the recordset was opened on.
  std::shared_ptr<Connection> ActiveConnection() const;

 private:
  friend class Field;
  friend class varnel::db::Fields;
  friend struct internal::RecordsetAccess;
  std::unique_ptr<internal::RecordsetData> d_;
};

}  // namespace varnel::db
