// The terminal on POSIX.
#include "system/terminal.hpp"

#include <sys/ioctl.h>
#include <unistd.h>

namespace orvane {

bool is_terminal(Stream stream) {
    return isatty(stream == Stream::out ? STDOUT_FILENO : STDERR_FILENO) != 0;
}

std::size_t terminal_columns() {
    winsize size{};
    return ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col != 0 ? size.ws_col : 80;
}

// Nothing has to be switched here.
Utf8Console::Utf8Console() : before_(0) {}
Utf8Console::~Utf8Console() = default;

} // namespace orvane
