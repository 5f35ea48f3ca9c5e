#include "writer/writer_texts.h"

#include <array>

#include "varnel/messages.h"

namespace varnel::internal {
namespace {

struct TextRow {
  WriterText id;
  const char* english;
  const char* chinese;
};

constexpr std::array<TextRow, 22> kTexts = {{
    {WriterText::RowChanged,
     "The row was changed by someone else after it was read; nothing was saved. Your changes "
     "are kept: write them over the other change, or take the other change.",
     "该行在读取后已被他人修改，未保存任何内容。您的修改已保留：可以用您的修改覆盖，或采用他人的修"
     "改。"},
    {WriterText::RowDeleted,
     "The row was deleted by someone else after it was read; nothing was saved. Your changes "
     "are kept: write the row again, or take the deletion.",
     "该行在读取后已被他人删除，未保存任何内容。您的修改已保留：可以重新写入该行，或接受删除。"},
    {WriterText::RowNotUnique,
     "{n} rows match the row to be saved; nothing was saved. Your changes are kept.",
     "有 {n} 行与要保存的行相符，未保存任何内容。您的修改已保留。"},
    {WriterText::KeyNotField, "The key column '{name}' is not a field of the recordset.",
     "关键字列'{name}'不是记录集的字段。"},
    {WriterText::NoTable, "No table to save the row to.", "没有可保存该行的表。"},
    {WriterText::NoConnection, "No database connection to save the row through.",
     "没有可用于保存该行的数据库连接。"},
    {WriterText::NotNull,
     "'{name}' needs a value: the database does not accept it empty. Enter a value and save "
     "again; your changes are kept.",
     "'{name}'需要一个值：数据库不接受空值。请输入后再保存；您的修改已保留。"},
    {WriterText::Unique,
     "The value of '{name}' is already used by another row. Enter another value and save "
     "again; your changes are kept.",
     "'{name}'的值已被另一行使用。请输入其他值后再保存；您的修改已保留。"},
    {WriterText::Check,
     "The database refused the row: it breaks the rule '{name}'. Correct the values and save "
     "again; your changes are kept.",
     "数据库拒绝了该行：违反了规则'{name}'。请更正后再保存；您的修改已保留。"},
    {WriterText::ForeignKey,
     "The value of '{name}' refers to no existing row, or other rows refer to this one. "
     "Correct it and save again; your changes are kept.",
     "'{name}'的值没有对应的行，或有其他行引用此行。请更正后再保存；您的修改已保留。"},
    {WriterText::Busy,
     "The database is busy: another user is writing to it. Wait a moment and save again; your "
     "changes are kept.",
     "数据库正忙：另一用户正在写入。请稍候再保存；您的修改已保留。"},
    {WriterText::ReadOnly,
     "The database cannot be written to: it is read-only. Get write access, then save again; "
     "your changes are kept.",
     "数据库是只读的，无法写入。请取得写入权限后再保存；您的修改已保留。"},
    {WriterText::DiskFull,
     "The disk that holds the database is full. Free some space, then save again; your "
     "changes are kept.",
     "存放数据库的磁盘已满。请释放空间后再保存；您的修改已保留。"},
    {WriterText::ConnectionLost,
     "The database cannot be reached: the connection was lost or the server is down. Check "
     "the connection, then save again; your changes are kept.",
     "无法连接数据库：连接已断开或服务器未运行。请检查连接后再保存；您的修改已保留。"},
    {WriterText::CommitUnknown,
     "The connection was lost while the save was being committed: it is not known whether the "
     "row was written. Your changes are kept; save again when the database can be reached, "
     "and the row will not be written twice.",
     "提交保存时连接断开：无法确定该行是否已写入。您的修改已保留；请在数据库可连接后再保存，该行不"
     "会被重复写入。"},
    {WriterText::Refused,
     "The database refused the save. Your changes are kept: correct the values or try again.",
     "数据库拒绝了保存。您的修改已保留：请更正后重试。"},
    {WriterText::Unexpected,
     "The save failed unexpectedly; nothing was written and your changes are kept.",
     "保存意外失败；未写入任何内容，您的修改已保留。"},
    {WriterText::EmptyKey,
     "'{name}' identifies the row and the database does not fill it in: enter a value and "
     "save again; your changes are kept.",
     "'{name}'用于标识该行，数据库不会自动填写：请输入后再保存；您的修改已保留。"},
    {WriterText::TextNul,
     "The text of '{name}' holds a NUL character, which the database cannot store. Remove it "
     "and save again; your changes are kept.",
     "'{name}'的文本含有数据库无法保存的 NUL 字符。请删除后再保存；您的修改已保留。"},
    {WriterText::NoConflict, "There is no conflicting save to resolve.",
     "没有需要解决的保存冲突。"},
    {WriterText::KeylessConflict,
     "No row holds the values this row was read with: someone else changed or deleted it, and "
     "a table without a key cannot tell which. Nothing was saved; your changes are kept: take "
     "the other change (refresh to see the table as it is now).",
     "没有任何行保存着读取时的值：该行已被他人修改或删除，而没有关键字的表无法区分两者。未保存任何"
     "内"
     "容；您的修改已保留：请采用他人的修改（刷新即可看到表的当前内容）。"},
    {WriterText::KeylessKeepMine,
     "The table has no key, so the row someone else changed cannot be found again, and writing "
     "yours as a new row could leave both. Take the other change, then make yours again.",
     "该表没有关键字，无法再找到被他人修改的行；把您的修改写成新行可能留下两行。请采用他人的修改，"
     "然后重新修改。"},
}};

void ReplaceAll(std::string& text, const std::string& from, const std::string& to) {
  for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
}

}  // namespace

std::string WriterMessage(WriterText id, const std::string& arg) {
  std::string text;
  for (const TextRow& row : kTexts) {
    if (row.id == id) {
      text = GetThreadUILanguage() == 2052 ? row.chinese : row.english;
    }
  }
  ReplaceAll(text, "{n}", arg);
  ReplaceAll(text, "{name}", arg);
  return text;
}

}  // namespace varnel::internal
