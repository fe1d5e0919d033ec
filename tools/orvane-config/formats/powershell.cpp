// The format powershell: a command line, only written.
#include "formats/format_table.hpp"

#include <algorithm>

namespace orvane {
namespace {

/// PowerShell takes the curly ones for quotes, too.
constexpr std::string_view curly_and_straight[] = {"'", "\xE2\x80\x98", "\xE2\x80\x99", "\xE2\x80\x9A",
                                                   "\xE2\x80\x9B"};

bool is_plain_argument(const std::string& token) {
    const auto is_harmless = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
    };
    // Numbers, and words such as if, are no risk as arguments; a lone -- is.
    return token.size() > 2 && std::all_of(token.begin(), token.end(), is_harmless);
}

std::string quoted_for_powershell(const std::string& token) {
    if (is_plain_argument(token)) return token;
    std::string text = "'";
    for (std::string_view left = token; !left.empty();) {
        const auto quote = std::ranges::find_if(curly_and_straight,
                                                [&](std::string_view one) { return left.starts_with(one); });
        const bool doubled = quote != std::end(curly_and_straight);
        const std::size_t size = doubled ? quote->size() : 1;
        for (int times = doubled ? 2 : 1; times != 0; --times)
            text += left.substr(0, size);
        left.remove_prefix(size);
    }
    return text + "'";
}

} // namespace

std::string as_powershell(const TokenGroups& groups) {
    return joined(groups, quoted_for_powershell, " `\n    ") + '\n';
}

} // namespace orvane
