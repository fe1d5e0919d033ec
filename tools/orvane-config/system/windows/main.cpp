// Entry on Windows: arguments are UTF-16 and reach the library unchanged, ill-formed ones too.
#include "verbs/tool.hpp"

#include <iostream>

#include <windows.h>

#include <shellapi.h>

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

int main() {
    const Utf8Console console;
    int count = 0;
    wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
    orvane::Tokens args;
    for (int i = 1; i < count; ++i) {
        const std::wstring_view word(words[i]);
        args.emplace_back(word.begin(), word.end());
    }
    LocalFree(words);
    return static_cast<int>(orvane::run(args, std::cout, std::cerr));
}
