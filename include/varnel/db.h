/// \file
/// varnel::db: the database access layer, modelled on ADO's objects. Clients
/// open connections with it, pass recordsets to ReadFieldsInformation and write
/// rows from their UserUpdateRecord handlers.
///
///     auto cn = std::make_shared<varnel::db::Connection>();
///     cn->Open("Provider=SQLite;Data Source=shop.db");
///     cn->BeginTrans();
///     cn->Execute("UPDATE Orders SET Qty=? WHERE Id=?", {varnel::Variant(int32_t{4}),
///                                                         varnel::Variant(int32_t{17})});
///     cn->CommitTrans();
///
/// Connection strings are Key=Value pairs separated by ';' (keys in any case):
/// `Provider=SQLite;Data Source=<file>` or `Provider=PostgreSQL;Host=...;Port=...;
/// Database=...;User ID=...;Password=...`.
///
/// Errors: unlike ClsRecordset, these objects do not report to the user. Every
/// member that fails throws VbError (Enum_ErrorNumber): Err_Provider
/// (-2147467259) with the database's own message, Err_ProviderNotFound (3706)
/// for an unknown provider, 3001, 3021, 3265, 3704, 3705 as ADO numbers them.
/// Catch it where you call them, for example in a UserUpdateRecord handler.
#pragma once

#include <cassert>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "varnel/export.h"
#include "varnel/variant.h"

VARNEL_API_BEGIN

namespace varnel::db {

VARNEL_API_END  // engine types: declared here, never exported
namespace internal {
class Driver;
struct RecordsetData;
struct RecordsetAccess;
}  // namespace internal
VARNEL_API_BEGIN

class Recordset;

/// One column of a recordset's current row.
class Field {
 public:
  /// Column Index (from 0) of Owner; made by Fields::Item. REQUIRES Owner != nullptr
  /// (an Index out of range is checked when the field is read: VbError 3265).
  Field(const Recordset* Owner, int32_t Index) : owner_(Owner), index_(Index) {
    assert(Owner != nullptr);
  }
  /// The column's name as the database gives it.
  const std::string& Name() const;
  /// The declared length of a text column (VARCHAR(n)), else 0.
  int32_t DefinedSize() const;
  /// The value in the current row; VbError 3021 when there is none (at Bof or Eof).
  Variant Value() const;

 private:
  const Recordset* owner_;
  int32_t index_;
};

/// The columns of a recordset (Recordset::Fields()).
class Fields {
 public:
  /// The columns of Owner. REQUIRES Owner != nullptr.
  explicit Fields(const Recordset* Owner) : owner_(Owner) { assert(Owner != nullptr); }
  /// The number of columns.
  int32_t Count() const;
  /// Column Index, from 0; VbError 3265 when out of range.
  Field Item(int32_t Index) const;
  /// The column of that exact name; VbError 3265 when absent.
  Field Item(const std::string& Name) const;
  /// Item(Index).
  Field operator[](int32_t Index) const { return Item(Index); }
  /// Item(Name).
  Field operator[](const std::string& Name) const { return Item(Name); }

 private:
  const Recordset* owner_;
};

/// A connection to one database. Share it as std::shared_ptr<Connection>.
class Connection {
 public:
  /// A closed connection.
  Connection();
  /// Closes the connection (a transaction still open is rolled back).
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  /// Opens the database ConnectionString names; UserID/Password add to it.
  /// "Provider=SQLite;Data Source=<file>" opens an existing file; add "Create=True" to make a
  /// new, empty database when the file is missing (without it a missing file fails, saying so).
  /// Throws VbError 3706 for an unknown provider, -2147467259 when the database refuses.
  void Open(const std::string& ConnectionString, const std::string& UserID = "",
            const std::string& Password = "", int32_t Options = -1);
  /// Closes the connection; nothing happens when it is closed.
  void Close();
  /// 0 closed, 1 open.
  int32_t State() const;
  /// The connection string given to Open.
  const std::string& ConnectionString() const { return connection_string_; }
  /// Runs one statement with '?' placeholders bound to Params (never pasted into
  /// the text); returns the rows affected. Throws VbError when the database refuses it.
  int32_t Execute(const std::string& Sql, const std::vector<Variant>& Params = {});
  /// Starts a transaction.
  void BeginTrans();
  /// Commits the open transaction.
  void CommitTrans();
  /// Rolls back the open transaction.
  void RollbackTrans();

  /// Progress of loads: Callback gets the rows read so far every Every rows of
  /// each read of a recordset on this connection, and the read's total when it
  /// ends (Every < 1: the total only). An empty Callback stops the calls.
  void OnRowsRead(std::function<void(int64_t Rows)> Callback, int64_t Every = 10000);

  /// The open driver; VbError 3704 when the connection is closed. For the library's own use.
  internal::Driver& Driver() const;

 private:
  friend struct internal::RecordsetAccess;
  std::string connection_string_;
  std::unique_ptr<internal::Driver> driver_;
  std::function<void(int64_t)> on_rows_read_;
  int64_t rows_read_every_ = 10000;
};

/// A client-side static read-only cursor over the rows of a SELECT or a table:
/// Open reads every row at once; moving and filtering never touch the database.
class Recordset {
 public:
  /// A closed recordset.
  Recordset();
  /// Closes the recordset.
  ~Recordset();
  Recordset(const Recordset&) = delete;
  Recordset& operator=(const Recordset&) = delete;

  int32_t CursorLocation = 3;  ///< 3: client side (the only kind)
  int32_t CursorType = 3;      ///< 3: static (the only kind)
  int32_t LockType = 1;        ///< 1: read-only (the only kind)

  /// Reads every row of Source (a SELECT or a bare table name) on ActiveConnection
  /// and stands on the first. Throws VbError when the database refuses it.
  void Open(const std::string& Source, std::shared_ptr<Connection> ActiveConnection,
            int32_t CursorType = -1, int32_t LockType = -1, int32_t Options = -1);
  /// Closes the recordset and drops its rows.
  void Close();
  /// 0 closed, 1 open.
  int32_t State() const;
  /// True before the first row (and on no rows).
  bool Bof() const;
  /// True after the last row (and on no rows).
  bool Eof() const;
  /// Stands on the first row (Bof and Eof when there are none).
  void MoveFirst();
  /// Stands on the last row.
  void MoveLast();
  /// Moves one row on; past the last, Eof. VbError 3021 when already at Eof.
  void MoveNext();
  /// Moves one row back; before the first, Bof. VbError 3021 when already at Bof.
  void MovePrevious();
  /// The number of rows (those passing the Filter).
  int32_t RecordCount() const;
  /// The current row from 1; 0 at Bof or Eof.
  int32_t AbsolutePosition() const;
  /// The columns, with the current row's values.
  varnel::db::Fields Fields() const { return varnel::db::Fields(this); }

  /// The filter in force; "" for none.
  const std::string& Filter() const;
  /// Shows only the rows matching Criteria: Field op Value terms joined by AND/OR,
  /// with < > <= >= <> = LIKE, text in '...', dates in #...#; "" removes the filter.
  /// A filter that does not parse raises VbError 3001 and leaves the rows as they were.
  void Filter(const std::string& Criteria);

  /// Up to Rows rows (-1: all) from the current row on, as [column][row]; moves
  /// past them. FieldNames picks and orders the columns (empty: all).
  std::vector<std::vector<Variant>> GetRows(int32_t Rows = -1,
                                            const std::vector<std::string>& FieldNames = {});

  /// The connection the recordset was opened on.
  std::shared_ptr<Connection> ActiveConnection() const;

 private:
  friend class Field;
  friend class varnel::db::Fields;
  friend struct internal::RecordsetAccess;
  std::unique_ptr<internal::RecordsetData> d_;
};

}  // namespace varnel::db

VARNEL_API_END
