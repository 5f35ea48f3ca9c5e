// varnel: a data-entry console that puts a ClsRecordset in front of a person.
// With no arguments it opens the sample database (created on first run);
// --connect with --table or --view opens anything else. See --help.
//
// Exit status: 0; 1 when the program could not start, or when a scripted
// session had a failed command (or could not save its pending edit at the
// end); 2 for a bad command line.
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
#include "safe_output.h"
#include "screen_setup.h"
#include "secrets.h"
#include "terminal.h"
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

// A script succeeded when every command did and nothing typed was left unsaved.
int ScriptStatus(const Console& console, bool saved, std::ostream& out) {
  if (console.Failures() > 0) {
    out << Say(Text::CommandsFailed, fmt::arg("count", console.Failures())) << "\n";
  }
  return console.Failures() > 0 || !saved ? 1 : 0;
}

// Runs commands until quit or the end of the input; the exit status.
int Converse(Console& console, LineReader& reader, const Options& options, bool interactive,
             std::ostream& out) {
  console.Start();
  for (;;) {
    const std::optional<std::string> line = reader.Next();
    if (line && !console.Execute(*line)) {
      return interactive ? 0 : ScriptStatus(console, true, out);  // quit
    }
    const bool bail = line && !interactive && options.bail && console.LastFailed();
    if (bail) {
      out << Tr(Text::Bailed) << "\n";
    }
    if (!line || bail) {
      const bool saved = console.EndOfInput();
      return interactive ? 0 : ScriptStatus(console, saved, out);
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

std::shared_ptr<db::Connection> Connect(const Options& options, Secrets& secrets,
                                        std::ostream& out) {
  const std::string connection_string = ResolveConnection(options, out);
  std::string password;
  if (options.ask_password) {
    out.flush();
    password = ReadPassword(Tr(Text::PasswordPrompt)).value_or("");
  }
  secrets.AddConnection(connection_string, password);
  auto connection = std::make_shared<db::Connection>();
  connection->Open(connection_string, "", password);
  return connection;
}

int RunScreen(const Options& options, bool interactive, Secrets& secrets, ConsoleUi& ui) {
  std::ostream& out = std::cout;
  const std::shared_ptr<db::Connection> connection = Connect(options, secrets, out);
  ClsRecordset rs;
  DefineScreen(options, connection, rs);
  TableWriter writer(rs, options.keys);
  const std::vector<std::string> keys = writer.KeyColumns();
  ProtectKeys(rs, keys);
  if (!options.table.empty() && !keys.empty()) {
    rs.OrderByField1 = MdlQuery::QuoteName(keys.front());
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

  LineReader reader(interactive, interactive ? options.data_dir / "history" : "", std::cin, out);
  ConsoleSettings settings{interactive, options.assume_yes, ReadScreenNames(options, connection)};
  Console console(rs, writer, ui, out, std::move(settings), [&](const std::string& question) {
    return reader.AskYesNo(question, Tr(Text::AnswerYesNo));
  });
  reader.SetCompleter([&](const std::string& line) { return console.Completions(line); });
  const int status = Converse(console, reader, options, interactive, out);
  out.flush();
  return status;
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
  SafeOutput safe(std::cout);  // nothing from the database or the input drives the terminal
  Secrets secrets;
  auto ui = std::make_shared<ConsoleUi>(std::cout, secrets);
  varnel::SetMessageUi(ui);
  const bool interactive = isatty(STDIN_FILENO) && isatty(STDOUT_FILENO);
  if (interactive) {
    UseUtf8Characters();
  }
  std::string failure;
  try {
    return RunScreen(*options, interactive, secrets, *ui);
  } catch (const varnel::VbError& error) {
    failure = error.Description();
  } catch (const std::exception& error) {
    failure = error.what();
  }
  std::cout.flush();
  std::cerr << "varnel: " << Escaped(secrets.Hide(failure)) << "\n";
  varnel::SetMessageUi(nullptr);
  return 1;
}
