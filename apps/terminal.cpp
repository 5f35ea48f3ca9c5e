#include "terminal.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>

#include "command_words.h"

namespace varnel::app {
namespace {

// Reads one line from Fd byte by byte (no buffering that could eat the
// commands after it).
std::optional<std::string> ReadLine(int fd) {
  std::string line;
  char c = 0;
  ssize_t n = 0;
  while ((n = read(fd, &c, 1)) == 1 && c != '\n') {
    line.push_back(c);
  }
  if (n != 1 && line.empty()) {
    return std::nullopt;
  }
  if (!line.empty() && line.back() == '\r') {
    line.pop_back();
  }
  return line;
}

}  // namespace

size_t OutputWidth() {
  winsize size{};
  if (isatty(STDOUT_FILENO) && ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) {
    return size.ws_col;
  }
  const char* columns = std::getenv("COLUMNS");
  if (columns != nullptr) {
    if (const auto width = NumberIn(columns, 1, 100000)) {
      return static_cast<size_t>(*width);
    }
  }
  return 0;
}

std::optional<std::string> ReadPassword(const std::string& prompt) {
  const int tty = open("/dev/tty", O_RDWR | O_NOCTTY);
  if (tty < 0) {
    return ReadLine(STDIN_FILENO);
  }
  // Echo goes off before the prompt shows, and nothing typed is flushed: a
  // password typed ahead is kept.
  termios saved{};
  const bool has_modes = tcgetattr(tty, &saved) == 0;
  if (has_modes) {
    termios quiet = saved;
    quiet.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    tcsetattr(tty, TCSANOW, &quiet);
  }
  (void)!write(tty, prompt.data(), prompt.size());
  std::optional<std::string> password = ReadLine(tty);
  if (has_modes) {
    tcsetattr(tty, TCSANOW, &saved);
  }
  (void)!write(tty, "\n", 1);
  close(tty);
  return password;
}

}  // namespace varnel::app
