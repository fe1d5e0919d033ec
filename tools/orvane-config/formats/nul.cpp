// The format nul: each token ended by a zero byte.
#include "formats/format_table.hpp"

namespace orvane {

bool is_nul(std::string_view text) {
    return text.find('\0') != text.npos;
}

ReadTokens read_nul(const LocatedText& text) {
    ReadTokens tokens;
    for (std::size_t begin = 0; begin < text.bytes.size();) {
        const std::size_t end = std::min(text.bytes.find('\0', begin), text.bytes.size());
        tokens.push_back({text.bytes.substr(begin, end - begin), {}});
        begin = end + 1;
    }
    return tokens;
}

std::string as_nul(const TokenGroups& groups) {
    std::string text;
    for (const TokenGroup& group : groups)
        for (const std::string& token : group)
            text.append(token) += '\0';
    return text;
}

} // namespace orvane
