// Whether somebody is looking, and how much they see.
#pragma once

#include <cstddef>

namespace orvane {

enum class Stream { out, err };

/// Made ready for colours, where that has to be asked for.
bool is_terminal(Stream stream);

/// Columns of standard output's terminal; 80 when it is none.
std::size_t terminal_columns();

} // namespace orvane
