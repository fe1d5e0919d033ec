// The command line of a running process.
#pragma once

#include <string>

namespace orvane {

/// The file that has it, each word ended by a zero byte, the program first. Throws std::runtime_error where the system has
/// no such file, or there is no such process.
std::string process_line_file(unsigned pid);

} // namespace orvane
