#include "app_fixture.h"

#include <sstream>

namespace varnel::testing {

void AppSession::SetUp() {
  const AppRun first = RunApp(AppArgs(dir_), "");
  ASSERT_EQ(first.exit_code, 0) << first.output;
  ASSERT_NE(first.output.find("Created the sample database"), std::string::npos) << first.output;
}

AppRun AppSession::Run(const std::vector<std::string>& lines) {
  std::string script;
  for (const std::string& line : lines) {
    script += line + "\n";
  }
  return RunApp(AppArgs(dir_), script);
}

std::shared_ptr<db::Connection> AppSession::Database() {
  if (!database_) {
    database_ = std::make_shared<db::Connection>();
    database_->Open("Provider=SQLite;Data Source=" + SamplePath());
  }
  return database_;
}

Rows AppSession::Query(const std::string& sql) { return QueryRows(Database(), sql); }

Variant AppSession::Scalar(const std::string& sql) {
  const Rows rows = Query(sql);
  return rows.empty() ? Variant() : rows[0][0];
}

std::string AppSession::Goto(int32_t order_id) {
  const std::string id = std::to_string(order_id);
  return "goto " + CStr(Scalar("SELECT COUNT(*) FROM Orders o, Orders t WHERE t.OrderId = " + id +
                               " AND (o.OrderDate < t.OrderDate OR (o.OrderDate = t.OrderDate"
                               " AND o.OrderId <= t.OrderId))"));
}

int32_t AppSession::FirstOrderWhere(const std::string& condition) {
  return Scalar("SELECT OrderId FROM Orders WHERE " + condition +
                " ORDER BY OrderDate, OrderId LIMIT 1")
      .ToLong();
}

std::vector<std::string> AppArgs(const TempDir& dir, const std::vector<std::string>& extra) {
  std::vector<std::string> args = {"--data-dir", dir.path().string(), "--lang", "en"};
  args.insert(args.end(), extra.begin(), extra.end());
  return args;
}

Rows QueryRows(const std::shared_ptr<db::Connection>& connection, const std::string& sql) {
  db::Recordset recordset;
  recordset.Open(sql, connection);
  Rows rows;
  for (; !recordset.Eof(); recordset.MoveNext()) {
    std::vector<Variant> row;
    for (int32_t i = 0; i < recordset.Fields().Count(); ++i) {
      row.push_back(recordset.Fields().Item(i).Value());
    }
    rows.push_back(row);
  }
  return rows;
}

int CountLines(const std::string& output, const std::string& text, bool at_start) {
  std::istringstream lines(output);
  int count = 0;
  for (std::string line; std::getline(lines, line);) {
    const size_t found = line.find(text);
    count += (at_start ? found == 0 : found != std::string::npos) ? 1 : 0;
  }
  return count;
}

void ExpectShown(const std::string& output, const std::vector<std::string>& lines) {
  for (const std::string& line : lines) {
    const bool shown = line.empty() || line[0] != '!';
    EXPECT_EQ(output.find(line.substr(shown ? 0 : 1)) != std::string::npos, shown) << line << "\n"
                                                                                   << output;
  }
}

std::string FieldValue(const std::string& output, const std::string& name) {
  std::istringstream lines(output);
  std::string value;
  for (std::string line; std::getline(lines, line);) {
    // A form line: two blanks, a mark, a blank, the name, blanks and the value.
    if (line.size() > 4 && line.rfind("  ", 0) == 0 && line[3] == ' ' &&
        line.compare(4, name.size() + 1, name + " ") == 0) {
      const size_t begin = line.find_first_not_of(' ', 4 + name.size());
      value = begin == std::string::npos ? "" : line.substr(begin);
    }
  }
  return value;
}

std::vector<std::string> StatusLines(const std::string& output) {
  std::istringstream lines(output);
  std::vector<std::string> status;
  for (std::string line; std::getline(lines, line);) {
    if (line.rfind("Row ", 0) == 0 || line.rfind("No rows", 0) == 0 || line.rfind("第 ", 0) == 0) {
      status.push_back(line);
    }
  }
  return status;
}

std::vector<std::string> Statuses(const std::string& output) {
  std::vector<std::string> statuses;
  for (const std::string& line : StatusLines(output)) {
    const size_t bar = line.find(" | ");
    const size_t next = line.find(" | ", bar + 3);
    statuses.push_back(
        line.substr(bar + 3, next == std::string::npos ? std::string::npos : next - bar - 3));
  }
  return statuses;
}

}  // namespace varnel::testing
