// The command interpreter of the data-entry console: one command line at a
// time against one recordset, printing the form after every change.
//
//   Console console(rs, std::cout);
//   console.Execute("goto 5");
//   console.Execute("set Quantity 12");
//   console.Execute("save");
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "varnel/varnel.h"

namespace varnel::app {

class Console {
 public:
  Console(ClsRecordset& recordset, std::ostream& out) : rs_(recordset), out_(out) {}

  // Runs one command line; false when the user asked to leave.
  bool Execute(const std::string& line);
  // The banner and the first form.
  void Start();
  // The input ended: a pending edit is left unsaved, with a notice.
  void Finish();
  // The command words and the fields' names, for completion.
  std::vector<std::string> Words() const;

 private:
  using Handler = void (Console::*)(const std::string& argument);
  struct Command {
    const char* name;
    const char* alias;
    Handler run;
  };
  static const Command kCommands[];

  void First(const std::string&);
  void Previous(const std::string&);
  void Next(const std::string&);
  void Last(const std::string&);
  void Goto(const std::string& argument);
  void Set(const std::string& argument);
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
  void Show(const std::string&);
  void Sql(const std::string&);
  void Refresh(const std::string&);
  void Help(const std::string&);

  void Refused(bool refused, const std::string& command);
  void Usage(const std::string& usage);
  bool Pending() const;
  std::shared_ptr<ClsFields> FindField(const std::string& text, std::string& rest) const;

  ClsRecordset& rs_;
  std::ostream& out_;
  bool quit_warned_ = false;
};

}  // namespace varnel::app
