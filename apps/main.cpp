// varnel: a data-entry console that puts a ClsRecordset in front of a person.
// With no arguments it opens the sample database (created on first run);
// --connect with --table or --view opens anything else. See --help.
#include <langinfo.h>
#include <unistd.h>

#include <clocale>
#include <cstring>
#include <iostream>
#include <memory>
#include <optional>

#include "console.h"
#include "console_ui.h"
#include "line_reader.h"
#include "load_progress.h"
#include "lock_marks.h"
#include "options.h"
#include "screen_setup.h"
#include "texts.h"
#include "varnel/varnel.h"

namespace varnel::app {
namespace {

// Connects a sink for the life of the scope.
class Advised {
 public:
  Advised(ClsRecordset& rs, ClsRecordsetEvents& sink) : rs_(rs), cookie_(rs.Advise(&sink)) {}
  ~Advised() { rs_.Unadvise(cookie_); }
  Advised(const Advised&) = delete;
  Advised& operator=(const Advised&) = delete;

 private:
  ClsRecordset& rs_;
  int32_t cookie_;
};

void Converse(Console& console, LineReader& reader, std::ostream& out) {
  console.Start();
  for (;;) {
    out.flush();
    const std::optional<std::string> line = reader.Next();
    if (!line) {
      console.Finish();
      return;
    }
    if (!console.Execute(*line)) {
      return;
    }
  }
}

// Characters are UTF-8 whatever the environment says, so that line editing
// takes Chinese input. Only the character type is set: numbers keep their ".".
void UseUtf8Characters() {
  if (std::setlocale(LC_CTYPE, "") == nullptr || std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0) {
    std::setlocale(LC_CTYPE, "C.UTF-8");
  }
}

int RunScreen(const Options& options, bool interactive) {
  std::ostream& out = std::cout;
  const std::string connection_string = ResolveConnection(options, out);
  auto connection = std::make_shared<db::Connection>();
  connection->Open(connection_string);

  ClsRecordset rs;
  DefineScreen(options, connection, rs);
  TableWriter writer(rs, options.keys);
  const std::vector<std::string> keys = writer.KeyColumns();
  ProtectKeys(rs, keys);
  if (!options.table.empty() && !keys.empty()) {
    rs.OrderByField1 = "[" + keys.front() + "]";  // the library's form of a column name
  }
  // Progress is drawn on standard error, so only when that is a terminal.
  std::optional<LoadProgress> progress;
  std::optional<Advised> progress_sink;
  if (isatty(STDERR_FILENO)) {
    progress.emplace(rs, *connection);
    progress_sink.emplace(rs, *progress);
  }
  ReopenOnRefresh reopen(rs);
  LockMarks locks(rs);
  Advised reopen_sink(rs, reopen);
  Advised locks_sink(rs, locks);
  rs.InitDataSource();

  Console console(rs, out);
  LineReader reader(interactive, interactive ? options.data_dir / "history" : "", std::cin, out);
  reader.SetCompletions(console.Words());
  Converse(console, reader, out);
  out.flush();
  return 0;
}

}  // namespace
}  // namespace varnel::app

int main(int argc, char** argv) {
  using namespace varnel::app;
  int exit_code = 0;
  const std::optional<Options> options = ParseOptions(argc, argv, &exit_code);
  if (!options) {
    return exit_code;
  }
  varnel::SetThreadUILanguage(options->language);
  varnel::SetMessageUi(std::make_shared<ConsoleUi>(std::cout));
  const bool interactive = isatty(STDIN_FILENO) && isatty(STDOUT_FILENO);
  if (interactive) {
    UseUtf8Characters();
  }
  try {
    return RunScreen(*options, interactive);
  } catch (const varnel::VbError& error) {
    std::cout.flush();
    std::cerr << "varnel: " << error.Description() << "\n";
  } catch (const std::exception& error) {
    std::cout.flush();
    std::cerr << "varnel: " << error.what() << "\n";
  }
  return 1;
}
