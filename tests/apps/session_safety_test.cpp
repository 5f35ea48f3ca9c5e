// Scripted sessions that once lost work or misled, and the screen's language:
// each row is a script on the sample screen, what the output must show, the
// exit status and what the database must hold afterwards. Every output is also
// checked to carry no raw control character.
#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "app_fixture.h"

namespace varnel::testing {
namespace {

struct SessionCase {
  const char* name;
  // {go}: to an unlocked order; {row}: its row; {db}: the sample database's
  // file. "--..." is an option and "env NAME=value" the environment's;
  // without either, the session is English.
  std::vector<std::string> script;
  std::vector<std::string> shown;  // what the output holds ({row} as above); "!...": not
  int exit_code;
  std::vector<const char*> check = {};  // a scalar over that order ({id}), and its value
};

// A value of 16,000 words: set reads it in one pass.
std::string ManyWords() {
  std::string words;
  for (int i = 0; i < 16000; ++i) {
    words += " w";
  }
  return words;
}

const SessionCase kCases[] = {
    {"emptied currency sign does not end the session",
     {"{go}", "set Note my note", "set Currency", "show", "set Currency €", "next"},
     {"Saved row {row}."},
     0,
     {"SELECT Note || Currency FROM Orders WHERE OrderId = {id}", "my note€"}},
    {"control characters are shown escaped",
     {"{go}", "set Note a\x1b]52;c;aGk=\x07z\x01", "save"},
     {"    Note        a\\x1b]52;c;aGk=\\x07z\\x01"},
     0,
     {"SELECT Note FROM Orders WHERE OrderId = {id}", "a\x1b]52;c;aGk=\x07z\x01"}},
    {"the end of a script saves the pending edit and says so",
     {"{go}", "set Note kept at the end"},
     {"Saved row {row}."},
     0,
     {"SELECT Note FROM Orders WHERE OrderId = {id}", "kept at the end"}},
    {"a rejected value names the field and the forms it takes",
     {"{go}", "set Quantity abc", "set Order date 2024-13-45", "set Paid yes", "save"},
     {"[Error] Error:13 Type Mismatch.", "Quantity takes a whole number from 1 to 1000, e.g. 12.",
      "Order date takes a date from 2000-01-01 to 2099-12-31, e.g. 2024-06-01 or 6/1/2024.",
      "2 command(s) failed."},
     1,
     {"SELECT Paid <> 0 FROM Orders WHERE OrderId = {id}", "1"}},
    {"an unreadable criterion is refused when typed with the field's criteria",
     {"query", "set Quantity 5..10", "set Order date today", "set Paid maybe", "run"},
     {"[Error] Error:94 'Quantity' can not be null.",
      "Criteria for Quantity (a number): 12 | >=10 AND <20 | <>3 | NOT 5 | null | notnull",
      "Criteria for Order date (a date): 2024-06-01", "Criteria for Paid (a yes/no): yes | no",
      "300 rows found."},
     1},
    {"a very long value is refused by the field, not by the console",
     {"{go}", "set Note" + ManyWords()},
     {"Note takes text of up to 80 characters, or nothing to empty it."},
     1},
    {"numbers given to commands are range-checked",
     {"list 2147483647", "goto 99999999999", "select shift 2147483648", "goto -1", "list 0"},
     {"Usage: list [<count>] | list --csv   (count 1 .. 1000000)", "Usage: goto <n>   (1 .. 300)",
      "5 command(s) failed."},
     1},
    {"bail stops at the first failed command and saves what was typed",
     {"--bail", "{go}", "set Note before the failure", "jump", "goto 3"},
     {"Unknown command 'jump'.", "Stopped at the first failed command (--bail).",
      "Saved row {row}.", "!varnel> goto 3"},
     1,
     {"SELECT Note FROM Orders WHERE OrderId = {id}", "before the failure"}},
    {"the language switches at run time",
     {"lang zh", "set 数量 abc", "lang en", "show"},
     {"语言：中文。", "  * 客户", "[错误] 错误：13 数据类型不匹配！",
      "数量 应为整数，范围 1 至 1000，例如 12。", "Language: English.", "  * Customer"},
     1},
    {"a Chinese environment gets the Chinese screen and messages",
     {"env LANG=zh_CN.UTF-8", "{go}", "set 数量 many", "new", "save", "undo", "quit"},
     {"第 1 行，共 300 行 | 浏览", "[错误] 错误：13 数据类型不匹配！",
      "[错误] 错误：94 请输入 '客户'  不能为空！", "未保存，您的修改已保留。请按提示处理后再保存。",
      "  * 订单日期  20"},
     1},
    {"--lang overrides the environment, either way",
     {"env LANG=zh_CN.UTF-8", "--lang=en", "quit"},
     {"Row 1 of 300 | Browse"},
     0},
    {"--lang zh overrides a plain environment",
     {"env LANG=C", "--lang=zh", "quit"},
     {"第 1 行，共 300 行", "  * 客户"},
     0},
    {"a screen read from the field-information table of a --connect database",
     {"--connect=Provider=SQLite;Data Source={db}", "--view=Orders",
      "--fields-table=FieldsInformation", "--lang=en", "quit"},
     {"Varnel: Orders, 300 rows.", "  * Unit price"},
     0},
    // Last: it deletes the order the others edit.
    {"a copy saved by a move and a deletion saved by a move are announced",
     {"last", "copy", "first", "{go}", "delete", "next"},
     {"Saved new row 301.", "Deleted row {row} from the database."},
     0,
     {"SELECT COUNT(*) FROM Orders WHERE OrderId = {id}", "0"}},
};

TEST_F(AppSession, SessionsKeepWorkAndSayWhatHappened) {
  const int32_t id = FirstOrderWhere("Locked = 0 AND Note IS NULL");
  const std::string go = Goto(id);
  const std::map<std::string, std::string> marks = {
      {"{go}", go}, {"{row}", go.substr(5)}, {"{id}", std::to_string(id)}, {"{db}", SamplePath()}};
  const auto filled = [&marks](std::string text) {
    for (const auto& [from, to] : marks) {
      for (size_t at = text.find(from); at != std::string::npos; at = text.find(from)) {
        text.replace(at, from.size(), to);
      }
    }
    return text;
  };
  for (const SessionCase& c : kCases) {
    SCOPED_TRACE(c.name);
    std::string script;
    std::vector<std::string> extra = {"--data-dir", dir_.path().string()};
    std::map<std::string, std::string> env;
    for (const std::string& marked : c.script) {
      const std::string line = filled(marked);
      if (line.rfind("--", 0) == 0) {
        extra.push_back(line);
      } else if (const size_t equals = line.find('='); line.rfind("env ", 0) == 0) {
        env[line.substr(4, equals - 4)] = line.substr(equals + 1);
      } else {
        script += line + "\n";
      }
    }
    if (env.empty() && extra.size() == 2) {
      extra.insert(extra.end(), {"--lang", "en"});
    }
    const AppRun run = RunApp(extra, script, env);
    EXPECT_EQ(run.exit_code, c.exit_code) << run.output;
    std::vector<std::string> shown(c.shown.size());
    std::transform(c.shown.begin(), c.shown.end(), shown.begin(), filled);
    ExpectShown(run.output, shown);
    for (const char byte : run.output) {
      ASSERT_FALSE((static_cast<unsigned char>(byte) < 0x20 && byte != '\n') || byte == 0x7f)
          << "raw control character " << int{byte} << " in\n"
          << run.output;
    }
    if (!c.check.empty()) {
      EXPECT_EQ(CStr(Scalar(filled(c.check[0]))), c.check[1]);
    }
  }
}

}  // namespace
}  // namespace varnel::testing
