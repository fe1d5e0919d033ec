// Converts a program's arguments to the tokens that the server's libraries take: UTF-16, without the program's name.
//
//     int main(int argc, char** argv) {
//         const auto tokens = qel::util::command_line_tokens(argc, argv);
#pragma once

#include "qel/i18n/convert.hpp"

#include <deque>
#include <memory>
#include <new>
#include <string>
#include <string_view>

#if defined(_WIN32)
// Declared, not included: <windows.h> must come after Asio's headers, and defines macros with everyday names. A program that has
// included it declares them a second time.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wredundant-decls"
#endif
extern "C" {
__declspec(dllimport) wchar_t* __stdcall GetCommandLineW();
__declspec(dllimport) wchar_t** __stdcall CommandLineToArgvW(const wchar_t*, int*);
__declspec(dllimport) void* __stdcall LocalFree(void*);
}
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif
#endif

namespace qel::util {

#if defined(_WIN32)

/// Tokens from arguments that are already UTF-16, such as those of a service's entry point. They are taken unchanged,
/// even if ill-formed. The first one, the program's name, is left out. Throws std::bad_alloc.
inline std::deque<std::u16string> tokens_of(int argc, const wchar_t* const* argv) {
    std::deque<std::u16string> tokens;
    for (int i = 1; i < argc; ++i) {
        const std::wstring_view word(argv[i]);
        tokens.emplace_back(word.begin(), word.end());
    }
    return tokens;
}

/// The tokens of this process. The arguments of `main` or `wmain` are not used: those of `main` have lost what the code
/// page cannot represent, and in both the C runtime may have expanded a `*` to file names. Instead, the system splits
/// the command line; ill-formed UTF-16 is taken unchanged. Throws std::bad_alloc.
template <class Char>
std::deque<std::u16string> command_line_tokens(int, Char**) {
    int count = 0;
    const std::unique_ptr<wchar_t*, decltype(&LocalFree)> words(CommandLineToArgvW(GetCommandLineW(), &count),
                                                                &LocalFree);
    if (words == nullptr) throw std::bad_alloc();
    return tokens_of(count, words.get());
}

#else

/// The tokens of this process, from the arguments of `main`: all but the first, the program's name. Bytes are read as
/// UTF-8, whatever the locale. Each ill-formed part becomes U+FFFD, so a file whose name is not UTF-8 cannot be given.
/// Throws std::bad_alloc.
inline std::deque<std::u16string> command_line_tokens(int argc, const char* const* argv) {
    std::deque<std::u16string> tokens;
    // A program can be started without any argument, not even its name.
    for (int i = 1; i < argc; ++i)
        tokens.push_back(i18n::utf8_to_ustring(argv[i]));
    return tokens;
}

#endif

} // namespace qel::util
