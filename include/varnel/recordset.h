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
// or was refused, false when it completed, did nothing, or was cancelled by a
// handler; each member below says which. No public operation lets an
// exception escape: each reports its error through MdlProcess and returns its
// failure result. Rows are numbered from 1; a Row of 0 means the current row
// (AbsolutePosition). Not copyable or movable: its fields point back at it.
//
// Choices this library makes on purpose, where a literal reading of the
// engine would lose or misreport work:
// - An edit that UpdateRecord discards because the recordset is Locked or the
//   row is not editable is also taken back in memory, so the screen never
//   shows an unsaved value as if it were saved.
// - Remove and Clear detach the removed fields (their Parent becomes null).
// - Shrinking Rows keeps every SumValue equal to the total of the rows left.
// - SysSetMutliSelectRows with a row outside 1..Rows reports error 9 and
//   changes no mark.
// - CopyRecord on a recordset without rows is refused (error 2103).
// - A new or copied row evaluates its computed fields once all its other
//   values are in place (a copied computed field included).
// - The missing-value message of UpdateRecord names the field by its Name
//   when it has no DisplayName.
// - A load, refresh or query that the database refuses changes nothing: the
//   rows, Rows, the status, the current row and the selection stay as they
//   were, and no load events follow.
// - A load leaves the current row as it was (the Rows setter and the
//   AbsolutePosition getter bring it into range) and keeps the Shift anchor.
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

/// The in-memory data source of one screen: configuration, fields, rows,
/// current row, selection, edit status and query mode.
class ClsRecordset {
 public:
  /// An empty recordset: no fields, no rows, status E_Default.
  ClsRecordset();
  /// Closes the data source (CloseDataSource) and detaches every field.
  ~ClsRecordset();
  ClsRecordset(const ClsRecordset&) = delete;
  ClsRecordset& operator=(const ClsRecordset&) = delete;

  // ---- configuration (stored properties) ----
  /// U_User keeps the connection and recordset open after a load; U_Auto releases them.
  Enum_UserMode UserOpenMode = U_User;
  /// The connection used when open; otherwise one is opened from ConnectString.
  std::shared_ptr<db::Connection> SFConnection;
  /// The recordset rows are read from; an open one is reused as it is.
  std::shared_ptr<db::Recordset> SFRecordset;
  /// Connection string used when SFConnection is not open.
  std::string ConnectString;
  /// The text placed after From: a table, a view or a join.
  std::string TableName;
  /// The column list of the SELECT; "" means *. Ends with a blank when no condition or order follows.
  std::string FieldsName;
  /// A fixed sort text placed before the sort fields (joined by " and ").
  std::string DefaultOrderBy;
  /// A condition always applied (as raw SQL), joined to the criteria by " and ".
  std::string DefaultCondition;
  /// The joined query-by-form predicates, written by GetCondition.
  std::string SysCondition;
  /// The first sort column; a blank one ends the list of three.
  std::string OrderByField1;
  /// The second sort column.
  std::string OrderByField2;
  /// The third sort column.
  std::string OrderByField3;
  /// Direction of OrderByField1.
  Enum_Ascending OrderByAscending1 = Ascending;
  /// Direction of OrderByField2.
  Enum_Ascending OrderByAscending2 = Ascending;
  /// Direction of OrderByField3.
  Enum_Ascending OrderByAscending3 = Ascending;
  /// True while a message of this recordset is on screen.
  bool SysErrState = false;
  /// Permission: NewRecord may add rows.
  bool EditAddNew = true;
  /// Permission: CopyRecord may copy rows.
  bool EditCopy = true;
  /// Permission: DeleteRecord may delete rows.
  bool EditDelete = true;
  /// Permission: Modify may change rows already saved.
  bool EditModify = true;
  /// Client data, untouched by the library except CloseDataSource, which empties it.
  std::string Tag;
  /// Name of the field-information table, for the client's own use.
  std::string FieldsInforName;

  // ---- procedure properties ----
  /// True when the current row may not be edited whatever its edit mark.
  bool Locked() const;
  /// Sets Locked; raises RecordPointerChange when it changes.
  void Locked(bool Value);
  /// S_None: the current row is the selection; S_Multi: the selection marks count.
  Enum_SelectState SelectState() const;
  /// The edit status (what is pending; see the transition table in the library's source).
  Enum_EditStatus EditStatus() const;
  /// Stores a status as the client says; raises EditStatusChange when it changes.
  void EditStatus(Enum_EditStatus Value);
  /// The number of rows in memory.
  int32_t Rows() const;
  /// Resizes every field and both mark arrays to Value rows (new rows Empty,
  /// not editable, unselected) and brings the current row into range.
  void Rows(int32_t Value);
  /// The current row, first brought into 1..Rows when there are rows; 0 when none.
  int32_t AbsolutePosition();
  /// Moves to Value: MoveRecordBefore (may cancel), the pending edit is saved,
  /// then the after-events; the pointer stays when the save keeps the edit pending.
  void AbsolutePosition(int32_t Value);
  /// Composes the SQL (reporting bad criteria) and returns its condition.
  std::string RecordsetCondition();
  /// Composes the SQL and returns its order text.
  std::string RecordsetOrderBy();

  // ---- data source ----
  /// Writes the sort text into OrderBy. False; true on an error.
  bool GetOrderBy(std::string& OrderBy);
  /// Writes the condition (DefaultCondition and the criteria) into Condition.
  /// True when a criterion gives no predicate (error 94, reported) or on an error.
  bool GetCondition(std::string& Condition);
  /// Loads the rows. False when it ran, also when the fields are refused or
  /// there is nothing to open from (status E_Nothing, no rows). True when the
  /// database refused: reported in the error form, nothing changed, no events.
  bool InitDataSource();
  /// Reloads with the same configuration after saving a pending edit (false,
  /// nothing reloaded, when that save fails). True when the database refused:
  /// reported in a message box, nothing changed, no events.
  bool RefreshDataSource();
  /// Forgets the configuration, the marks and the pending edit (status
  /// E_Default, no event); the fields keep their values. Always false.
  bool CloseDataSource();
  /// Builds the fields from the rows of ViewName in a field-information
  /// recordset. True when it failed (no recordset: 91; a Null FieldObject: 94,
  /// no field added; a missing column or bad value): reported, fields added so far stay.
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
  /// Adds a field keyed by Name (a later rename does not re-key it); an
  /// unnamed field has no key. nullptr when Name is already a key (error 457, reported).
  std::shared_ptr<ClsFields> Add(const std::string& Name = "");
  /// A string selects by key (any case), a number by 1-based position; nullptr when absent.
  std::shared_ptr<ClsFields> Item(const Variant& Name) const;
  /// The same as Item.
  std::shared_ptr<ClsFields> operator[](const Variant& Name) const { return Item(Name); }
  /// The number of fields.
  int32_t Count() const;
  /// Removes (and detaches) the field of that key or position; later Col values stay.
  /// True, quietly, when there is no such field.
  bool Remove(const Variant& Name);
  /// Removes and detaches every field. Always false.
  bool Clear();
  /// The first field, in collection order.
  std::vector<std::shared_ptr<ClsFields>>::const_iterator begin() const;
  /// Past the last field.
  std::vector<std::shared_ptr<ClsFields>>::const_iterator end() const;

  // ---- navigation and selection ----
  /// Moves to row 1. True when there is no row (error 2103, reported); false
  /// when moved, cancelled, kept by an unsaved edit, or in E_Query/E_Nothing (nothing happens).
  bool MoveFirst();
  /// Moves one row up; true on row 1 (error 2103), otherwise as MoveFirst.
  bool MovePrevious();
  /// Moves one row down; true on the last row (error 2103), otherwise as MoveFirst.
  bool MoveNext();
  /// Moves to the last row; true when there is no row (error 2103), otherwise as MoveFirst.
  bool MoveLast();
  /// Sets the edit mark of Row. False, also when ignored (query mode, or a
  /// F_Locked field decides the marks: told in a message). True for a row outside the store.
  bool SetEdit(bool Value, int32_t Row = 0);
  /// Changes the selection (None: only Row; Shift: anchor to Row; Ctrl: Row
  /// toggled); Shift and Ctrl save the pending edit first and do nothing when
  /// it stays. False; true (error 9, no mark changed) for a row outside the store.
  bool SysSetMutliSelectRows(bool Value, int32_t Row = 0, Enum_SelectRow SelectOption = None);
  /// Whether Row may be edited (Row 0: the current row, false when Locked or
  /// there is none); true in query mode.
  bool GetEdit(int32_t Row = 0);
  /// Whether Row is selected; with S_None, Row 0 (the current row) always is.
  bool GetSelectRow(int32_t Row = 0);
  /// Selects every row after saving the pending edit (nothing when it stays). False.
  bool SelectAllRows();
  /// Inverts every row's selection after saving the pending edit. False.
  bool InvertSelectRows();
  /// Clears the selection (S_None); no save. False.
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
  /// Ends the pending edit: validates it, asks the client (UserUpdateRecord)
  /// and acts on the answer. E_Succeed: committed, nothing was pending, or
  /// discarded (Locked, row not editable) and taken back in memory. E_Defeat:
  /// cancelled, a required value missing, the client's answer, or an error;
  /// the edit stays. E_OtherErr: the client's answer; taken back in memory.
  Enum_EditRecord UpdateRecord();
  /// Changes Field in Row. True when refused (read-only: message 150),
  /// cancelled by ModifyBefore, rejected by FormatValue, or when another
  /// row's edit could not be saved first. False when applied, in E_Nothing,
  /// or when a pending deletion could not be saved (the save reported it).
  bool Modify(const Variant& Field, const Variant& Value, int32_t Row = 0);
  /// Removes the current row, kept for undo or roll-back. True when refused
  /// (EditDelete off for a saved row, E_Query, E_Nothing). False when deleted,
  /// no rows, cancelled, or the earlier edit could not be saved.
  bool DeleteRecord();
  /// Appends a copy of the current row (fields marked Copy; the rest as a new
  /// row). True when refused (EditCopy off, E_Query, E_Nothing, no row to
  /// copy). False when copied, cancelled, or the pending edit could not be saved.
  bool CopyRecord();
  /// Appends a new row from the fields' defaults. True when refused
  /// (EditAddNew off, E_Query, E_Nothing). False when added, cancelled, or
  /// the pending edit could not be saved.
  bool NewRecord();
  /// NewRecord, with Value in the field FieldName (applied last).
  bool NewRecord(const std::string& FieldName, const Variant& Value);
  /// Takes back one layer of the pending edit in memory. False, also when
  /// nothing is pending or cancelled; true when it failed (reported), e.g.
  /// when no deleted row was kept to put back.
  bool UndoRecord();
  /// Checks Value against Field's kind and range and rewrites it into its normal
  /// form; true (after telling the user why) when it is not acceptable.
  bool FormatValue(const Variant& Field, Variant& Value, int32_t Row = 0);

  // ---- query mode ----
  /// Saves the pending edit and enters query mode with empty criteria. False,
  /// also when cancelled or the edit could not be saved (nothing changes); true on an error.
  bool NewQuery();
  /// As NewQuery, keeping the criteria that produced the current rows.
  bool RefineQuery();
  /// Loads the rows that the criteria find. True when the condition cannot be
  /// built or the database refuses it: query mode and the kept criteria stay.
  /// False when run or cancelled (a cancelled query stays in E_Query).
  bool ExecuteQuery();
  /// Leaves query mode, giving back the criteria kept on entering it. False,
  /// also outside query mode; true (error 9) when no criteria were kept.
  bool CancelQuery();
  /// CancelQuery, then every criterion emptied. Always false.
  bool ClearQuery();

  // ---- auxiliary ----
  /// The first row whose value in the field is present and non-zero; 0 when none.
  int32_t GetIsMainRow(const Variant& FieldName);
  /// The field's value in the last deleted row; Empty when none was kept, the
  /// field is unknown or was added after the deletion.
  Variant GetDeleteValue(const Variant& FieldName);
  /// The field's value before the current modification; Empty as GetDeleteValue.
  Variant GetModifyValue(const Variant& FieldName);
  /// Raises UserEvent.
  void CallUserEvent();
  /// The current time (a SystemTime handler may replace it), its fraction of a second dropped.
  Date GetSysTime();

  // ---- events ----
  /// Connects an event sink; returns its cookie (0 for a null sink).
  int32_t Advise(ClsRecordsetEvents* Sink);
  /// Disconnects the sink of Cookie; a sink may unadvise while an event is raised.
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
