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

constexpr std::array<TextRow, 5> kTexts = {{
    {WriterText::RowChanged,
     "The row was changed or deleted by someone else after it was read; nothing was saved.",
     "该行在读取后已被他人修改或删除，未保存任何内容。"},
    {WriterText::RowNotUnique, "{n} rows match the row to be saved; nothing was saved.",
     "有 {n} 行与要保存的行相符，未保存任何内容。"},
    {WriterText::KeyNotField, "The key column '{name}' is not a field of the recordset.",
     "关键字列'{name}'不是记录集的字段。"},
    {WriterText::NoTable, "No table to save the row to.", "没有可保存该行的表。"},
    {WriterText::NoConnection, "No database connection to save the row through.",
     "没有可用于保存该行的数据库连接。"},
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
