// A process with one STEP of a start-up more than the one before: 0 does nothing, 1 has a stream, 2 makes the tokens,
// 3 loads the libraries and parses. bench/table.py counts their instructions.
#if STEP >= 1
#include <deque>
#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>
#endif
#if STEP >= 3
#include "qel/config/parse_settings.hpp"
#endif

int main([[maybe_unused]] int argc, [[maybe_unused]] char** argv) {
#if STEP >= 1
    struct Nowhere : std::streambuf {
    } nowhere;
    std::ostream out(&nowhere);
#endif
#if STEP >= 2
    std::deque<std::u16string> tokens;
    for (int i = 1; i != argc; ++i) {
        const std::string_view argument = argv[i];
        tokens.emplace_back(argument.begin(), argument.end());
    }
#endif
#if STEP >= 3
    qel::config::ServerSettings settings;
    if (parse_settings(settings, tokens, out)) return 1;
#endif
}
