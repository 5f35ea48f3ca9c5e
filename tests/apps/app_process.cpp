#include "app_process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <stdexcept>
#include <thread>

namespace varnel::testing {
namespace {

constexpr int kTimeLimitMs = 30000;

}  // namespace

void AppProcess::StartChild(std::vector<std::string>& argv,
                            const std::map<std::string, std::string>& env) {
  std::map<std::string, std::string> all = env;  // insert keeps what Env gives
  all.insert({{"LANGUAGE", ""},
              {"LC_ALL", ""},
              {"LC_MESSAGES", ""},
              {"LANG", "C.UTF-8"},
              {"TERM", "xterm"}});
  for (const auto& [name, value] : all) {
    if (value.empty()) {
      unsetenv(name.c_str());
    } else {
      setenv(name.c_str(), value.c_str(), 1);
    }
  }
  std::vector<char*> pointers;
  for (std::string& arg : argv) {
    pointers.push_back(arg.data());
  }
  pointers.push_back(nullptr);
  execv(pointers[0], pointers.data());
  _exit(127);
}

AppProcess::AppProcess(const std::vector<std::string>& args,
                       const std::map<std::string, std::string>& env, bool on_terminal)
    : on_terminal_(on_terminal) {
  std::vector<std::string> argv = {VARNEL_APP_PATH};
  argv.insert(argv.end(), args.begin(), args.end());
  signal(SIGPIPE, SIG_IGN);
  if (on_terminal_) {
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    if (terminal < 0 || grantpt(terminal) != 0 || unlockpt(terminal) != 0) {
      throw std::runtime_error("no pseudo-terminal");
    }
    terminal_name_ = ptsname(terminal);
    pid_ = fork();
    if (pid_ == 0) {
      setsid();  // the terminal opened next becomes the controlling one
      const int child = open(terminal_name_.c_str(), O_RDWR);
      winsize size{40, 100, 0, 0};
      ioctl(child, TIOCSWINSZ, &size);
      for (const int fd : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        dup2(child, fd);
      }
      close(terminal);
      StartChild(argv, env);
    }
    input_ = dup(terminal);
    output_ = terminal;
    return;
  }
  int to_child[2];
  int from_child[2];
  // Close-on-exec: the program keeps only the ends made its input and output.
  if (pipe2(to_child, O_CLOEXEC) != 0 || pipe2(from_child, O_CLOEXEC) != 0) {
    throw std::runtime_error("pipe failed");
  }
  pid_ = fork();
  if (pid_ == 0) {
    dup2(to_child[0], STDIN_FILENO);
    dup2(from_child[1], STDOUT_FILENO);
    dup2(from_child[1], STDERR_FILENO);
    StartChild(argv, env);
  }
  close(to_child[0]);
  close(from_child[1]);
  input_ = to_child[1];
  output_ = from_child[0];
}

AppProcess::~AppProcess() {
  if (pid_ > 0) {
    kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
  }
  for (const int fd : {input_, output_}) {
    if (fd >= 0) {
      close(fd);
    }
  }
}

void AppProcess::Send(const std::string& text) {
  size_t written = 0;
  while (written < text.size()) {
    const ssize_t n = write(input_, text.data() + written, text.size() - written);
    if (n <= 0) {
      return;  // the program has gone; Finish tells how it ended
    }
    written += static_cast<size_t>(n);
  }
}

bool AppProcess::ReadSome() {
  pollfd ready{output_, POLLIN, 0};
  if (poll(&ready, 1, kTimeLimitMs) <= 0) {
    return false;
  }
  char buffer[4096];
  const ssize_t n = read(output_, buffer, sizeof buffer);
  if (n <= 0) {
    return false;
  }
  seen_.append(buffer, static_cast<size_t>(n));
  return true;
}

std::string AppProcess::ReadUntil(const std::string& marker, size_t from) {
  while (seen_.find(marker, from) == std::string::npos && ReadSome()) {
  }
  return seen_;
}

// Keys that mean something to the line editor (Ctrl-C, Ctrl-D, Tab) only do
// so once the program has put the terminal into its editing mode: a person
// types at the prompt, not before it.
void AppProcess::WaitForLineEditing() const {
  const auto give_up = std::chrono::steady_clock::now() + std::chrono::milliseconds(kTimeLimitMs);
  while (std::chrono::steady_clock::now() < give_up) {
    const int terminal = open(terminal_name_.c_str(), O_RDWR | O_NOCTTY);
    termios mode{};
    const bool editing =
        terminal >= 0 && tcgetattr(terminal, &mode) == 0 && (mode.c_lflag & ICANON) == 0;
    if (terminal >= 0) {
      close(terminal);
    }
    if (editing) {
      return;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
}

void AppProcess::Type(const std::string& text, const std::string& marker) {
  const size_t from = seen_.size();
  if (on_terminal_) {
    WaitForLineEditing();
  }
  Send(text);
  ReadUntil(marker, from);
}

AppRun AppProcess::Finish() {
  if (!on_terminal_) {
    close(input_);
    input_ = -1;
  }
  while (ReadSome()) {
  }
  if (on_terminal_) {
    kill(pid_, SIGHUP);  // a program still waiting for input after the time limit
  }
  AppRun run;
  run.output = seen_;
  int status = 0;
  if (waitpid(pid_, &status, 0) == pid_ && WIFEXITED(status)) {
    run.exit_code = WEXITSTATUS(status);
  }
  pid_ = -1;
  return run;
}

AppRun RunApp(const std::vector<std::string>& args, const std::string& script,
              const std::map<std::string, std::string>& env) {
  AppProcess app(args, env);
  app.Send(script);
  return app.Finish();
}

}  // namespace varnel::testing
