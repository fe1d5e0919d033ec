// The program that takes the tool's place, on POSIX.
#include "system/become.hpp"

#include "system/posix/arguments.hpp"

#include <cerrno>
#include <ostream>
#include <system_error>

#include <unistd.h>

namespace orvane {

int become(const Tokens& command, std::ostream& err) {
    const Arguments arguments(command);
    execvp(arguments.program().c_str(), arguments.words());
    const int error = errno;
    err << "orvane-config: cannot start " << arguments.program() << ": "
        << std::generic_category().message(error) << '\n';
    return error == ENOENT ? 127 : 126;
}

} // namespace orvane
