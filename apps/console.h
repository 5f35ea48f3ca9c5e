// The command interpreter of the data-entry console: one command line at a
// time against one recordset, printing the form after every change.
//
//   Console console(rs, writer, ui, std::cout, {});
//   console.Execute("goto 5");
//   console.Execute("set Quantity 12");
//   console.Execute("save");
//
// No command ends the program: whatever a command raises is reported and the
// session goes on. A command fails when it is refused, is not understood or
// makes the library show a message; the failures are counted for the exit
// status of a scripted session.
#pragma once

#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "console_ui.h"
#include "line_reader.h"
#include "save_notices.h"
#include "screen_setup.h"
#include "varnel/varnel.h"

namespace varnel::app {

struct ConsoleSettings {
  bool interactive = false;  // a person at a terminal: deletions are confirmed
  bool assume_yes = false;   // --yes: no confirmation
  ScreenNames names;         // display names per language, for lang
};

// Asks the person a yes/no question; nullopt when the input ended.
using AskYesNo = std::function<std::optional<bool>(const std::string& question)>;

class Console {
 public:
  Console(ClsRecordset& recordset, TableWriter& writer, ConsoleUi& ui, std::ostream& out,
          ConsoleSettings settings, AskYesNo ask = {});
  ~Console();
  Console(const Console&) = delete;
  Console& operator=(const Console&) = delete;

  // Runs one command line; false when the user asked to leave.
  bool Execute(const std::string& line);
  // Whether the last command failed, and how many have failed so far.
  bool LastFailed() const { return last_failed_; }
  int Failures() const { return failures_; }
  // The banner and the first form.
  void Start();
  // The input ended. A pending edit is saved (after asking, on a terminal)
  // and the outcome told; false when it could not be saved.
  bool EndOfInput();
  // What Tab offers at the end of Line: commands first, then the display
  // names after set, the choices of select, lang and list.
  Completion Completions(const std::string& line) const;

 private:
  using Handler = void (Console::*)(const std::string& argument);
  struct Command {
    const char* name;
    const char* alias;
    Handler run;
  };
  static const Command kCommands[];

  void Dispatch(const std::string& word, const std::string& argument);
  void Move(bool failed);
  void First(const std::string&);
  void Previous(const std::string&);
  void Next(const std::string&);
  void Last(const std::string&);
  void Goto(const std::string& argument);
  void Set(const std::string& argument);
  void SetCriterion(ClsFields& field, const std::string& text);
  void New(const std::string&);
  void Copy(const std::string&);
  void Delete(const std::string&);
  void Save(const std::string&);
  void Undo(const std::string&);
  void Query(const std::string&);
  void Refine(const std::string&);
  void Run(const std::string&);
  void Cancel(const std::string&);
  void Clear(const std::string&);
  void Select(const std::string& argument);
  void List(const std::string& argument);
  void Export(const std::string& argument);
  void Show(const std::string&);
  void Sql(const std::string&);
  void Details(const std::string&);
  void Lang(const std::string& argument);
  void Refresh(const std::string&);
  void Conflict(const std::string&);
  void KeepMine(const std::string&);
  void TakeTheirs(const std::string&);
  void Help(const std::string&);

  void Refused(bool refused, const std::string& command);
  void Usage(const std::string& usage);
  void Say(const std::string& text);
  void Fail(const std::string& text);
  void AnnounceSave();
  void Form();
  void NotSaved();
  bool Pending() const;
  bool SavePending();
  std::shared_ptr<ClsFields> FindField(const std::string& text, std::string& rest) const;

  ClsRecordset& rs_;
  TableWriter& writer_;
  ConsoleUi& ui_;
  std::ostream& out_;
  ConsoleSettings settings_;
  AskYesNo ask_;
  SaveNotices notices_;
  int32_t notices_cookie_ = 0;
  bool quit_warned_ = false;
  bool failed_ = false;          // the command being run failed
  bool told_not_saved_ = false;  // the command has said why its save did not happen
  bool last_failed_ = false;
  int failures_ = 0;
};

}  // namespace varnel::app
