// The command line and the name of a running process, on POSIX.
#include "system/process_line.hpp"

#include <fstream>
#include <stdexcept>

#include <unistd.h>

namespace orvane {

std::string process_line_file(unsigned pid) {
    const std::string directory = "/proc/" + std::to_string(pid);
    if (access(directory.c_str(), F_OK) != 0)
        throw std::runtime_error("there is no process " + std::to_string(pid));
    return directory + "/cmdline";
}

std::string process_name(unsigned pid) {
    std::ifstream in("/proc/" + std::to_string(pid) + "/comm");
    std::string name;
    std::getline(in, name);
    return name;
}

} // namespace orvane
