// Whether the output goes to a terminal, and how wide that is.
#pragma once

#include <cstddef>

namespace orvane {

enum class Stream { out, err };

/// Also prepares the terminal for colours, where the system needs that.
bool is_terminal(Stream stream);

/// Columns of standard output's terminal; 80 when it is none.
std::size_t terminal_columns();

} // namespace orvane
