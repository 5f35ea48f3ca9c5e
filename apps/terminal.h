// What the console asks of the terminal it runs on: its width, and a
// password typed without echo.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace varnel::app {

// The columns available for a line of output: the terminal's width when
// standard output is one, else $COLUMNS when set, else 0 (no limit).
size_t OutputWidth();

// Reads a password from the controlling terminal with echo off, after
// Prompt; without a terminal, the first line of standard input. nullopt
// when nothing could be read.
std::optional<std::string> ReadPassword(const std::string& prompt);

}  // namespace varnel::app
