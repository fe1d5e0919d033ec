// The format lines: one token per line.
#include "formats/format_table.hpp"
#include "text/shell_word.hpp"

namespace orvane {
namespace {

constexpr std::string_view empty_line_token = "''";
constexpr std::string_view blanks_of_line = " \t";

/// Blank, or a comment.
bool is_skipped(std::string_view line) {
    const auto begin = line.find_first_not_of(blanks_of_line);
    return begin == line.npos || line[begin] == '#';
}

/// Some editors end lines with it, too.
std::string_view without_return(std::string_view line) {
    return line.ends_with('\r') ? line.substr(0, line.size() - 1) : line;
}

/// Why a token cannot be a line; empty when it can.
const char* why_no_line(const std::string& token) {
    if (token.empty()) return "";
    if (token.find('\n') != token.npos) return "contains a line break";
    if (token.ends_with('\r')) return "ends with a carriage return";
    if (token == empty_line_token) return "stands for an empty token there";
    if (!is_skipped(token)) return "";
    return token.find('#') == token.npos ? "is blank" : "looks like a comment";
}

} // namespace

bool is_lines(std::string_view) {
    return true;
}

ReadTokens read_lines(const LocatedText& text) {
    ReadTokens tokens;
    const std::string_view all = text.bytes;
    for (std::size_t begin = 0; begin < all.size();) {
        const std::size_t end = std::min(all.find('\n', begin), all.size());
        const std::string_view line = without_return(all.substr(begin, end - begin));
        if (!is_skipped(line))
            tokens.push_back({line == empty_line_token ? "" : std::string(line), text.spots[begin], begin,
                              begin + line.size()});
        begin = end + 1;
    }
    return tokens;
}

std::string as_lines(const TokenGroups& groups) {
    std::string text;
    for (const TokenGroup& group : groups)
        for (const std::string& token : group) {
            if (const char* const why = why_no_line(token); *why != 0)
                throw CannotHold("this token cannot be a line, because it " + std::string(why) + ": " +
                                 sh_word(token));
            text.append(token.empty() ? empty_line_token : token) += '\n';
        }
    return text;
}

} // namespace orvane
