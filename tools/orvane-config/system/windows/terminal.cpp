// The console on Windows.
#include "system/terminal.hpp"

#include <windows.h>

namespace orvane {

bool is_terminal(Stream stream) {
    const HANDLE console = GetStdHandle(stream == Stream::out ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
    DWORD mode = 0;
    return GetConsoleMode(console, &mode) != 0 &&
           SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

std::size_t terminal_columns() {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    if (!GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &info)) return 80;
    // A line that fills the window would be followed by an empty one.
    return static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left);
}

Utf8Console::Utf8Console() : before_(GetConsoleOutputCP()) {
    SetConsoleOutputCP(CP_UTF8);
}
Utf8Console::~Utf8Console() {
    SetConsoleOutputCP(before_);
}

} // namespace orvane
