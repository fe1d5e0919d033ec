// Entry on Windows.
#include "verbs/tool.hpp"

#include "qel/util/command_line.hpp"

#include <iostream>

#include <windows.h>

namespace {

/// Everything the tool and the library print is UTF-8 while this lives, on the console too.
class Utf8Console {
public:
    Utf8Console() : before_(GetConsoleOutputCP()) { SetConsoleOutputCP(CP_UTF8); }
    Utf8Console(const Utf8Console&) = delete;
    Utf8Console& operator=(const Utf8Console&) = delete;
    ~Utf8Console() { SetConsoleOutputCP(before_); }

private:
    UINT before_;
};

} // namespace

int main(int argc, char** argv) {
    const Utf8Console console;
    const orvane::Tokens args = qel::util::command_line_tokens(argc, argv);
    return static_cast<int>(orvane::run(args, std::cout, std::cerr));
}
