#include "app_process.h"

#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

extern char** environ;

namespace varnel::testing {
namespace {

constexpr int kTimeLimitMs = 30000;

std::vector<std::string> Environment(const std::map<std::string, std::string>& changes) {
  std::map<std::string, std::string> env;
  for (char** entry = environ; *entry != nullptr; ++entry) {
    const std::string text(*entry);
    const size_t equals = text.find('=');
    if (equals != std::string::npos) {
      env[text.substr(0, equals)] = text.substr(equals + 1);
    }
  }
  env.erase("LANGUAGE");
  env.erase("LC_ALL");
  env.erase("LC_MESSAGES");
  env["LANG"] = "C.UTF-8";
  for (const auto& [name, value] : changes) {
    if (value.empty()) {
      env.erase(name);
    } else {
      env[name] = value;
    }
  }
  std::vector<std::string> entries;
  for (const auto& [name, value] : env) {
    entries.push_back(name + "=" + value);
  }
  return entries;
}

std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& text : texts) {
    pointers.push_back(text.data());
  }
  pointers.push_back(nullptr);
  return pointers;
}

}  // namespace

AppProcess::AppProcess(const std::vector<std::string>& args,
                       const std::map<std::string, std::string>& env) {
  std::vector<std::string> argv = {VARNEL_APP_PATH};
  argv.insert(argv.end(), args.begin(), args.end());
  std::vector<std::string> envp = Environment(env);
  int to_child[2];
  int from_child[2];
  if (pipe(to_child) != 0 || pipe(from_child) != 0) {
    throw std::runtime_error("pipe failed");
  }
  signal(SIGPIPE, SIG_IGN);
  pid_ = fork();
  if (pid_ == 0) {
    dup2(to_child[0], STDIN_FILENO);
    dup2(from_child[1], STDOUT_FILENO);
    dup2(from_child[1], STDERR_FILENO);
    close(to_child[1]);
    close(from_child[0]);
    execve(argv[0].c_str(), Pointers(argv).data(), Pointers(envp).data());
    _exit(127);
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
  if (input_ >= 0) {
    close(input_);
  }
  if (output_ >= 0) {
    close(output_);
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

std::string AppProcess::ReadUntil(const std::string& marker) {
  size_t found = seen_.find(marker, marker_from_);
  while (found == std::string::npos && ReadSome()) {
    found = seen_.find(marker, marker_from_);
  }
  if (found != std::string::npos) {
    marker_from_ = found + marker.size();
  }
  return seen_;
}

AppRun AppProcess::Finish() {
  close(input_);
  input_ = -1;
  while (ReadSome()) {
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
