// Words of a POSIX shell's command line.
#include "text/shell_word.hpp"

#include <algorithm>
#include <string_view>

namespace orvane {

std::string sh_word(const std::string& token) {
    static constexpr std::string_view plain =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_./:,=@%+";
    const auto is_plain = [](char c) {
        return plain.find(c) != plain.npos || static_cast<signed char>(c) < 0;
    };
    // zsh takes =name for the path of a program.
    const bool equals = token.size() > 1 && token[0] == '=';
    if (!token.empty() && !equals && std::all_of(token.begin(), token.end(), is_plain)) return token;
    std::string quoted = "'";
    for (const char c : token)
        quoted += c == '\'' ? "'\\''" : std::string(1, c);
    return quoted + "'";
}

} // namespace orvane
