// ClsRecordset: the data source of one screen. It loads the rows of a table or
// view into memory, keeps a current row and a selection, edits rows under an
// explicit edit status and turns query-by-form criteria into SQL.
//
//   varnel::ClsRecordset rs;
//   rs.ConnectString = "Provider=SQLite;Data Source=shop.db";
//   rs.TableName = "Orders";
//   rs.Add("Qty")->FieldType = varnel::F_Numeral;
//   rs.Add("Price")->FieldType = varnel::F_Numeral;
//   rs.Add("Amount")->ComputeString = "Qty*Price";
//   rs.Item("Amount")->IsData = false;
//   if (!rs.InitDataSource()) { rs.MoveLast(); rs.Modify("Qty", int32_t{4}); rs.UpdateRecord(); }
//
// Conventions: functions returning bool return true when the operation failed
// or was refused. No public operation lets an exception escape: each reports
// its error through MdlProcess and returns its failure result. Rows are
// numbered from 1; a Row of 0 means the current row (AbsolutePosition).
// Not copyable or movable: its fields point back at it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "varnel/db.h"
#include "varnel/enums.h"
#include "varnel/events.h"
#include "varnel/fields.h"
#include "varnel/row_observer.h"
#include "varnel/variant.h"
#include "varnel/export.h"

VARNEL_API_BEGIN

namespace varnel {

/// One total of a summed field for one symbol (the value of its SymbolName companion).
struct SymbolTotal {
  std::string Symbol;  ///< the companion's value as text; "" for rows without one
  Variant Total;       ///< the sum of those rows, of the same kinds as SumValue
};

VARNEL_API_END  // engine types: declared here, never exported
namespace internal {
struct RecordsetState;
struct RecordsetAccess;
}  // namespace internal
VARNEL_API_BEGIN

class ClsRecordset {
 public:
  ClsRecordset();
  ~ClsRecordset();
  ClsRecordset(const ClsRecordset&) = delete;
  ClsRecordset& operator=(const ClsRecordset&) = delete;

  // ---- configuration (stored properties) ----
  Enum_UserMode UserOpenMode = U_User;          // U_User keeps the connection open
  std::shared_ptr<db::Connection> SFConnection;  // used when open; else ConnectString
  std::shared_ptr<db::Recordset> SFRecordset;
  std::string ConnectString;
  std::string TableName;  // text placed after From
  std::string FieldsName;  // column list; "" means *
  std::string DefaultOrderBy;
  std::string DefaultCondition;
  std::string SysCondition;  // written by GetCondition
  std::string OrderByField1, OrderByField2, OrderByField3;
  Enum_Ascending OrderByAscending1 = Ascending;
  Enum_Ascending OrderByAscending2 = Ascending;
  Enum_Ascending OrderByAscending3 = Ascending;
  bool SysErrState = false;  // true while a message is on screen
  bool EditAddNew = true, EditCopy = true, EditDelete = true, EditModify = true;
  std::string Tag;
  std::string FieldsInforName;

  // ---- procedure properties ----
  bool Locked() const;
  void Locked(bool Value);  // raises RecordPointerChange when it changes
  Enum_SelectState SelectState() const;
  Enum_EditStatus EditStatus() const;
  void EditStatus(Enum_EditStatus Value);  // raises EditStatusChange when it changes
  int32_t Rows() const;
  void Rows(int32_t Value);  // resizes every field and both mark arrays
  int32_t AbsolutePosition();  // clamps the pointer into 1..Rows and returns it
  void AbsolutePosition(int32_t Value);  // moves with events, saving a pending edit
  std::string RecordsetCondition();  // composes the SQL, then returns its condition
  std::string RecordsetOrderBy();    // composes the SQL, then returns its order

  // ---- data source ----
  bool GetOrderBy(std::string& OrderBy);
  bool GetCondition(std::string& Condition);
  bool InitDataSource();
  bool RefreshDataSource();
  bool CloseDataSource();
  bool ReadFieldsInformation(std::shared_ptr<db::Recordset>& AdoRecordset,
                             const std::string& ViewName, const std::string& OtherCondition = "");
  /// Replaces the field collection with one field per column of table Table, as the database's
  /// catalog describes it (kind, DateType/NumType and DefinedSize from the column's type;
  /// EnableNull false for NOT NULL; DefaultValue from a constant DEFAULT; a key column is not
  /// copied) and sets TableName = Table. Connection nullptr: SFConnection when open, else one
  /// opened from ConnectString for the call. Returns true (after reporting) when the table
  /// cannot be read or has no columns; the collection is then left as it was.
  bool ReadTableFields(const std::string& Table,
                       const std::shared_ptr<db::Connection>& Connection = nullptr);

  // ---- field collection ----
  std::shared_ptr<ClsFields> Add(const std::string& Name = "");
  // A string selects by name (any case), a number by 1-based position; nullptr when absent.
  std::shared_ptr<ClsFields> Item(const Variant& Name) const;
  std::shared_ptr<ClsFields> operator[](const Variant& Name) const { return Item(Name); }
  int32_t Count() const;
  bool Remove(const Variant& Name);
  bool Clear();
  std::vector<std::shared_ptr<ClsFields>>::const_iterator begin() const;
  std::vector<std::shared_ptr<ClsFields>>::const_iterator end() const;

  // ---- navigation and selection ----
  bool MoveFirst();
  bool MovePrevious();
  bool MoveNext();
  bool MoveLast();
  bool SetEdit(bool Value, int32_t Row = 0);
  bool SysSetMutliSelectRows(bool Value, int32_t Row = 0, Enum_SelectRow SelectOption = None);
  bool GetEdit(int32_t Row = 0);
  bool GetSelectRow(int32_t Row = 0);
  bool SelectAllRows();
  bool InvertSelectRows();
  bool ClearSelectRows();

  // ---- totals over the selection and per symbol ----
  /// The total of summed field Field over the selected rows (the marked rows in S_Multi,
  /// the current row in S_None), kept up to date as marks and values change. Null when
  /// the field is not summed; Null, with error 5 reported, when there is no such field.
  Variant SelectedSumValue(const Variant& Field);
  /// The totals of summed field Field per symbol (the value of its SymbolName companion)
  /// over every row, or over the selected rows with SelectedOnly; in the order of the
  /// symbols' text, leaving out symbols whose rows add nothing. Without a companion: one
  /// entry with Symbol "". Empty when the field is not summed or absent (error 5 reported).
  std::vector<SymbolTotal> SumValueBySymbol(const Variant& Field, bool SelectedOnly = false);

  // ---- editing ----
  Enum_EditRecord UpdateRecord();
  bool Modify(const Variant& Field, const Variant& Value, int32_t Row = 0);
  bool DeleteRecord();
  bool CopyRecord();
  bool NewRecord();
  bool NewRecord(const std::string& FieldName, const Variant& Value);
  bool UndoRecord();
  // Checks Value against Field's kind and range and rewrites it into its normal
  // form; true (after telling the user why) when it is not acceptable.
  bool FormatValue(const Variant& Field, Variant& Value, int32_t Row = 0);

  // ---- query mode ----
  bool NewQuery();
  bool RefineQuery();
  bool ExecuteQuery();
  bool CancelQuery();
  bool ClearQuery();

  // ---- auxiliary ----
  int32_t GetIsMainRow(const Variant& FieldName);
  Variant GetDeleteValue(const Variant& FieldName);
  Variant GetModifyValue(const Variant& FieldName);
  void CallUserEvent();
  Date GetSysTime();

  // ---- events ----
  int32_t Advise(ClsRecordsetEvents* Sink);  // returns the cookie
  void Unadvise(int32_t Cookie);
  /// Connects an observer of inserted, removed and replaced rows (row_observer.h); returns its cookie.
  int32_t AddRowObserver(RowObserver* Observer);
  /// Disconnects the observer of Cookie; an unknown cookie is ignored.
  void RemoveRowObserver(int32_t Cookie);

 private:
  friend struct internal::RecordsetAccess;
  std::unique_ptr<internal::RecordsetState> d_;
};

}  // namespace varnel

VARNEL_API_END
