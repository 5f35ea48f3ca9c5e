// Widths of UTF-8 text on a terminal: Chinese characters take two columns.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace varnel::app {

// The number of terminal columns Text takes.
size_t DisplayWidth(std::string_view text);

// Text cut to at most Width columns (ending in an ellipsis "…" when cut), then padded
// with blanks to exactly Width columns.
std::string Fit(std::string_view text, size_t width);

// Text padded with blanks to at least Width columns (never cut).
std::string PadRight(std::string_view text, size_t width);
std::string PadLeft(std::string_view text, size_t width);

}  // namespace varnel::app
