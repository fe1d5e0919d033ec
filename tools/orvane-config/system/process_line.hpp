// The command line and the name of a running process.
#pragma once

#include <string>

namespace orvane {

/// The file that has it, each word ended by a zero byte, the program first. Throws std::runtime_error where the system has
/// no such file, or there is no such process.
std::string process_line_file(unsigned pid);

/// That of its program, of which Linux knows 15 bytes; empty where the system does not tell this user.
std::string process_name(unsigned pid);

} // namespace orvane
