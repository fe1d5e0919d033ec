// The command line of a running process, on POSIX.
#include "system/process_line.hpp"

#include <stdexcept>

#include <unistd.h>

namespace orvane {

std::string process_line_file(unsigned pid) {
    const std::string directory = "/proc/" + std::to_string(pid);
    if (access(directory.c_str(), F_OK) != 0)
        throw std::runtime_error("there is no process " + std::to_string(pid));
    return directory + "/cmdline";
}

} // namespace orvane
