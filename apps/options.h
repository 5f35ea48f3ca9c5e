// The command line of varnel.
//
//   varnel                                   the sample database's Orders screen
//   varnel --connect "Provider=SQLite;Data Source=shop.db" --table Orders
//   varnel --connect "..." --view Orders [--fields-table FieldsInformation]
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace varnel::app {

struct Options {
  std::string connect;  // "" = the sample database
  std::string table;    // fields made from the table's own columns
  std::string view;     // fields read from the field-information table
  std::string fields_table = "FieldsInformation";
  std::vector<std::string> keys;   // key columns for saving; empty = primary key
  int32_t language = 0;            // 1033, 2052, or 0 to follow the environment
  std::filesystem::path data_dir;  // where the sample database and history live
  bool ask_password = false;       // --password: prompt for it before connecting
  bool assume_yes = false;         // --yes: deletions are not confirmed
  bool bail = false;               // --bail: a scripted session stops at its first failure
  std::filesystem::path screenshot;  // varnel-screen: render the window to this PNG and exit
};

// Which program reads the command line: its name, and varnel-screen's --screenshot.
enum class Program { kConsole, kWindow };

// The options of the command line; nullopt after printing help, the version
// or a usage error, with the exit status in *exit_code.
std::optional<Options> ParseOptions(int argc, char** argv, int* exit_code,
                                    Program program = Program::kConsole);

// $VARNEL_DATA_DIR, else $XDG_DATA_HOME/varnel, else ~/.local/share/varnel.
std::filesystem::path DefaultDataDir();

}  // namespace varnel::app
