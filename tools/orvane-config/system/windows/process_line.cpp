// The command line of a running process, on Windows: the system shows it in no file.
#include "system/process_line.hpp"

#include <stdexcept>

namespace orvane {

std::string process_line_file(unsigned) {
    throw std::runtime_error("the command line of a running process can be read only on Linux");
}

} // namespace orvane
