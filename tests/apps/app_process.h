// Runs the real varnel program with its standard input and output on pipes,
// so that a test types commands and reads what a person would see.
#pragma once

#include <sys/types.h>

#include <map>
#include <string>
#include <vector>

namespace varnel::testing {

struct AppRun {
  std::string output;  // standard output and standard error, as they came
  int exit_code = -1;
};

class AppProcess {
 public:
  // Starts the program with Args. Env entries replace the environment's; an
  // empty value removes the variable. LANGUAGE, LC_ALL and LC_MESSAGES are
  // removed and LANG is C.UTF-8 unless Env says otherwise. On_terminal: the
  // program's input and output are a pseudo-terminal (100 columns), where
  // Send("\x03") is Ctrl-C and Send("\x04") Ctrl-D.
  explicit AppProcess(const std::vector<std::string>& args,
                      const std::map<std::string, std::string>& env = {}, bool on_terminal = false);
  ~AppProcess();
  AppProcess(const AppProcess&) = delete;
  AppProcess& operator=(const AppProcess&) = delete;

  // Writes Text to the program's input.
  void Send(const std::string& text);
  // Reads until the output from byte From on holds Marker or the program
  // ends; returns all output so far.
  std::string ReadUntil(const std::string& marker, size_t from = 0);
  // Sends Text, then reads until Marker appears in what follows. On a
  // terminal Text is typed once the program edits a line.
  void Type(const std::string& text, const std::string& marker = "varnel> ");
  // Closes the input (a pipe; a terminal stays open until the program
  // leaves), reads everything and waits for the exit.
  AppRun Finish();

 private:
  bool ReadSome();  // false at the end of the output or after the time limit
  void WaitForLineEditing() const;

  void StartChild(std::vector<std::string>& argv, const std::map<std::string, std::string>& env);

  bool on_terminal_ = false;
  std::string terminal_name_;
  pid_t pid_ = -1;
  int input_ = -1;
  int output_ = -1;
  std::string seen_;
};

// Runs the program once with Script as its whole input.
AppRun RunApp(const std::vector<std::string>& args, const std::string& script,
              const std::map<std::string, std::string>& env = {});

}  // namespace varnel::testing
