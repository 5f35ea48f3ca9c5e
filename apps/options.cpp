#include "options.h"

#include <CLI/CLI.hpp>
#include <cstdlib>

namespace varnel::app {
namespace {

std::filesystem::path FromEnvironment(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr && *value != '\0' ? std::filesystem::path(value)
                                            : std::filesystem::path();
}

void AddOptions(CLI::App& cli, Options& options, std::string& language, std::string& data_dir) {
  cli.add_option("--connect", options.connect,
                 "Connection string, e.g. \"Provider=SQLite;Data Source=shop.db\" "
                 "(default: the sample database)");
  auto* table = cli.add_option("--table", options.table,
                               "Open this table with a field for each of its columns");
  auto* view = cli.add_option("--view", options.view,
                              "Open this screen as the field-information table describes it");
  table->excludes(view);
  cli.add_option("--fields-table", options.fields_table,
                 "The field-information table read by --view")
      ->capture_default_str();
  cli.add_option("--key", options.keys,
                 "Key column(s) that identify a row when saving (default: the primary key)")
      ->delimiter(',');
  cli.add_option("--lang", language, "Language of the screen: en or zh (default: from LANG)")
      ->check(CLI::IsMember({"en", "zh"}));
  cli.add_option("--data-dir", data_dir,
                 "Directory of the sample database and the command history "
                 "(default: $VARNEL_DATA_DIR, $XDG_DATA_HOME/varnel or ~/.local/share/varnel)");
  cli.add_flag("--password,-W", options.ask_password,
               "Ask for the database password before connecting (it can also come from the "
               "PGPASSWORD or PGPASSFILE environment of PostgreSQL)");
  cli.add_flag("--yes,-y", options.assume_yes, "Delete rows without asking for confirmation");
  cli.add_flag("--bail", options.bail,
               "Stop at the first command that fails (the exit status is then 1)");
  cli.set_version_flag("--version", "varnel 0.1.0");
}

}  // namespace

std::filesystem::path DefaultDataDir() {
  if (auto dir = FromEnvironment("VARNEL_DATA_DIR"); !dir.empty()) {
    return dir;
  }
  if (auto dir = FromEnvironment("XDG_DATA_HOME"); !dir.empty()) {
    return dir / "varnel";
  }
  if (auto home = FromEnvironment("HOME"); !home.empty()) {
    return home / ".local" / "share" / "varnel";
  }
  return std::filesystem::current_path() / ".varnel";
}

std::optional<Options> ParseOptions(int argc, char** argv, int* exit_code, Program program) {
  const bool window = program == Program::kWindow;
  CLI::App cli(window ? "varnel-screen: a data-entry window on any database table"
                      : "varnel: a data-entry console on any database table",
               window ? "varnel-screen" : "varnel");
  Options options;
  std::string language;
  std::string data_dir;
  AddOptions(cli, options, language, data_dir);
  if (window) {
    cli.add_option("--screenshot", options.screenshot,
                   "Render the loaded window to this PNG file and exit (works without a display)");
  }
  try {
    cli.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    *exit_code = cli.exit(error);
    return std::nullopt;
  }
  if (!options.connect.empty() && options.table.empty() && options.view.empty()) {
    std::cerr << cli.get_name() << ": --connect needs --table or --view\n";
    *exit_code = 2;
    return std::nullopt;
  }
  options.language = language == "zh" ? 2052 : (language == "en" ? 1033 : 0);
  options.data_dir = data_dir.empty() ? DefaultDataDir() : std::filesystem::path(data_dir);
  *exit_code = 0;
  return options;
}

}  // namespace varnel::app
