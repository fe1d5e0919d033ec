// There is no terminal.
#include "system/terminal.hpp"

namespace orvane {

bool is_terminal(Stream) {
    return false;
}

std::size_t terminal_columns() {
    return 80;
}

// Nothing has to be switched here.
Utf8Console::Utf8Console() : before_(0) {}
Utf8Console::~Utf8Console() = default;

} // namespace orvane
