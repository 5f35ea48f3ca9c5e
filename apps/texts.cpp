#include "texts.h"

#include <array>

#include "varnel/messages.h"

namespace varnel::app {
namespace {

struct TextRow {
  Text id;
  const char* english;
  const char* chinese;
};

constexpr const char* kHelpEnglish =
    "Moving:     first | prev | next | last | goto <n>   (a move saves a pending edit first)\n"
    "Editing:    set <field> <value>   (set <field> alone empties it)\n"
    "            new | copy | delete | save | undo\n"
    "Query:      query | refine, then set <field> <criterion>, then run | cancel | clear\n"
    "Selection:  select <n> (go to row n and select it) | select shift <n> | select ctrl <n>\n"
    "            select all | select invert | select none\n"
    "Showing:    show | list [<count>] | list --csv | export <file> | sql | refresh\n"
    "            details   (the statement and the database's words after a refusal)\n"
    "Conflicts:  conflict | keep-mine | take-theirs   (after someone else changed the row)\n"
    "Language:   lang en | lang zh\n"
    "Leaving:    quit   (saves a pending edit first, as moving does)\n"
    "In the form: * marks a required field, - a field that cannot be edited.\n"
    "In the list: > marks the current row, + a selected one, # a locked one.";

constexpr const char* kHelpChinese =
    "移动：    first | prev | next | last | goto <行号>   （移动前先保存未保存的修改）\n"
    "编辑：    set <字段> <值>   （只写 set <字段> 表示清空）\n"
    "          new | copy | delete | save | undo\n"
    "查询：    query | refine，然后 set <字段> <条件>，然后 run | cancel | clear\n"
    "选择：    select <行号>（转到该行并选中）| select shift <行号> | select ctrl <行号>\n"
    "          select all | select invert | select none\n"
    "显示：    show | list [<行数>] | list --csv | export <文件> | sql | refresh\n"
    "          details （数据库拒绝后，查看语句和数据库的原文）\n"
    "冲突：    conflict | keep-mine | take-theirs （他人修改了该行之后）\n"
    "语言：    lang en | lang zh\n"
    "退出：    quit （与移动一样，先保存未保存的修改）\n"
    "表单中：* 表示必填字段，- 表示不可编辑的字段。\n"
    "列表中：> 表示当前行，+ 表示已选行，# 表示锁定行。";

constexpr std::array<TextRow, static_cast<size_t>(Text::Count)> kTexts = {{
    {Text::Banner, "Varnel: {table}, {rows} rows. Type help for the commands.",
     "Varnel：{table}，{rows} 行。输入 help 查看命令。"},
    {Text::RowOf, "Row {row} of {rows}", "第 {row} 行，共 {rows} 行"},
    {Text::NoRows, "No rows", "没有记录"},
    {Text::Selected, "Selected: {count}", "已选：{count}"},
    {Text::ReadOnlyRow, "read-only row", "只读行"},
    {Text::Sum, "Sum", "合计"},
    {Text::SelectedSum, "Selected sum", "已选合计"},
    {Text::SumItem, "{name}: {value}", "{name}：{value}"},
    {Text::Saved, "Saved.", "已保存。"},
    {Text::NothingToSave, "Nothing to save.", "没有需要保存的修改。"},
    {Text::NotSavedKept,
     "Not saved; your changes are kept. Do what the message says, then save again.",
     "未保存，您的修改已保留。请按提示处理后再保存。"},
    {Text::NotSavedTakenBack,
     "Not saved: the change was taken back. Type refresh to see the rows as they are now.",
     "未保存：修改已撤回。输入 refresh 查看当前数据。"},
    {Text::NothingToUndo, "Nothing to undo.", "没有可撤销的修改。"},
    {Text::UnknownCommand, "Unknown command '{command}'. Type help for the commands.",
     "未知命令“{command}”。输入 help 查看命令。"},
    {Text::UnknownField, "There is no field '{field}'.", "没有字段“{field}”。"},
    {Text::Usage, "Usage: {usage}", "用法：{usage}"},
    {Text::NoSuchRow, "There is no row {row}.", "没有第 {row} 行。"},
    {Text::Refused, "Not possible here: {command}.", "此处不能执行：{command}。"},
    {Text::QueryHint, "Query mode: type criteria with set, then run (or cancel).",
     "查询模式：用 set 输入条件，然后 run（或 cancel）。"},
    {Text::RowsFound, "{rows} rows found.", "找到 {rows} 行。"},
    {Text::QuitPending, "The pending edit was not saved; quit again to leave without it.",
     "未保存的修改没有保存；再次输入 quit 将放弃它并退出。"},
    {Text::Discarded, "The pending edit was left unsaved.", "未保存的修改已放弃。"},
    {Text::SampleCreated, "Created the sample database {path}.", "已创建示例数据库 {path}。"},
    {Text::Loading, "Loading {table}: {done} of {total} rows",
     "正在加载 {table}：{done} / {total} 行"},
    {Text::CannotOpen, "Cannot open {what}: {reason}", "无法打开 {what}：{reason}"},
    {Text::NoQueryMode, "Not in query mode: type query or refine first.",
     "不在查询模式：请先输入 query 或 refine。"},
    {Text::Help, kHelpEnglish, kHelpChinese},
    {Text::CriteriaHeading, "Criteria, by kind of field:", "条件，按字段类型："},
    {Text::SavedRow, "Saved row {row}.", "已保存第 {row} 行。"},
    {Text::SavedNewRow, "Saved new row {row}.", "已保存新行 {row}。"},
    {Text::DeletedRow, "Deleted row {row} from the database.", "已从数据库删除第 {row} 行。"},
    {Text::DatabaseRefusedChange,
     "The database refused this change. Type details to see its reason and the statement.",
     "数据库拒绝了此修改。输入 details 查看原因和语句。"},
    {Text::DatabaseRefusedLoad,
     "The database refused to read the rows. Type details to see its reason and the statement.",
     "数据库拒绝读取数据。输入 details 查看原因和语句。"},
    {Text::DetailsHint, "Type details to see the database's own words and the statement.",
     "输入 details 查看数据库的原文和语句。"},
    {Text::NoDetails, "The database has refused nothing so far.", "数据库尚未拒绝任何操作。"},
    {Text::ConfirmDelete,
     "Delete row {row}? It goes from the database when the row is left. (yes/no) ",
     "删除第 {row} 行？离开该行时将从数据库中删除。(是/否) "},
    {Text::NotDeleted, "Not deleted.", "未删除。"},
    {Text::AskSavePending, "Save the pending edit before leaving? (yes/no) ",
     "退出前保存未保存的修改？(是/否) "},
    {Text::QueryFailed, "The query did not run; the criteria are kept: correct them, or cancel.",
     "查询未执行；条件已保留：请修改或输入 cancel。"},
    {Text::Exported, "Wrote {rows} rows to {file}.", "已将 {rows} 行写入 {file}。"},
    {Text::CannotWrite, "Cannot write {file}: {reason}", "无法写入 {file}：{reason}"},
    {Text::CommandsFailed, "{count} command(s) failed.", "{count} 条命令失败。"},
    {Text::Bailed, "Stopped at the first failed command (--bail).",
     "在第一条失败的命令处停止（--bail）。"},
    {Text::PasswordPrompt, "Password: ", "密码："},
    {Text::Language, "Language: English.", "语言：中文。"},
    {Text::AnswerYesNo, "Please answer yes or no.", "请回答是或否。"},
    {Text::NoConflict, "There is no conflict to resolve.", "没有需要解决的冲突。"},
    {Text::ConflictHint,
     "Someone else changed this row: type conflict to compare, then keep-mine or take-theirs.",
     "他人已修改此行：输入 conflict 查看对比，然后输入 keep-mine 或 take-theirs。"},
    {Text::ConflictChanged,
     "Someone else changed this row after it was read (! marks their changes):",
     "此行读取后已被他人修改（! 表示他人的修改）："},
    {Text::ConflictDeleted,
     "Someone else deleted this row after it was read:", "此行读取后已被他人删除："},
    {Text::ConflictKeyless,
     "Someone else changed or deleted this row after it was read (a table without a key cannot "
     "tell which):",
     "此行读取后已被他人修改或删除（没有关键字的表无法区分两者）："},
    {Text::ConflictColumns, "yours  |  in the database", "您的值  |  数据库中的值"},
    {Text::ConflictChoices,
     "keep-mine writes yours over theirs; take-theirs drops your edit and shows theirs.",
     "keep-mine 用您的值覆盖他人的修改；take-theirs 放弃您的修改并显示他人的值。"},
    {Text::StatusDefault, "Browse", "浏览"},
    {Text::StatusQuery, "Query", "查询"},
    {Text::StatusModify, "Modified", "已修改"},
    {Text::StatusDelete, "Deleted", "已删除"},
    {Text::StatusAddNew, "New", "新增"},
    {Text::StatusCopy, "Copied", "已复制"},
    {Text::StatusModifyDelete, "Modified, deleted", "已修改，已删除"},
    {Text::StatusAddNewDelete, "New, deleted", "新增，已删除"},
    {Text::StatusCopyDelete, "Copied, deleted", "已复制，已删除"},
    {Text::StatusNothing, "No data", "无数据"},
}};

// Every row stands at the index of its id: the table is looked up directly.
constexpr bool RowsInOrder() {
  for (size_t i = 0; i < kTexts.size(); ++i) {
    if (static_cast<size_t>(kTexts[i].id) != i) {
      return false;
    }
  }
  return true;
}
static_assert(RowsInOrder(), "kTexts must list the texts in the order of Text");

}  // namespace

const char* Tr(Text id) {
  const TextRow& row = kTexts[static_cast<size_t>(id)];
  return GetThreadUILanguage() == 2052 ? row.chinese : row.english;
}

}  // namespace varnel::app
