// The program that takes the tool's place, on POSIX.
#include "system/become.hpp"

#include "system/posix/arguments.hpp"

#include <cerrno>
#include <ostream>

namespace orvane {

int become(const Tokens& command, std::ostream& err) {
    const Arguments arguments(command);
    arguments.execute();
    const NotStarted failure = arguments.failure(errno);
    err << "orvane-config: " << failure.what() << '\n';
    return failure.exit_code;
}

} // namespace orvane
