// The program that takes the tool's place, on Windows.
#include "system/become.hpp"

#include "system/child_process.hpp"

#include <exception>
#include <ostream>

namespace orvane {

int become(const Tokens& command, std::ostream& err) {
    try {
        return ChildProcess(command).run([] { return true; });
    } catch (const NotStarted& failure) {
        err << "orvane-config: " << failure.what() << '\n';
        return failure.exit_code;
    } catch (const std::exception& failure) {
        err << "orvane-config: " << failure.what() << '\n';
        return 126;
    }
}

} // namespace orvane
