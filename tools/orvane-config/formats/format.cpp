// What the formats of command lines have in common.
#include "formats/format_table.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>

namespace orvane {
namespace {

constexpr bool begins_character(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
}

std::string utf8_of_token(const std::u16string& token) {
    std::string text = qel::i18n::ustring_to_utf8(token);
    if (qel::i18n::utf8_to_ustring(text) != token)
        throw CannotHold("a token contains half a surrogate pair, which UTF-8 cannot hold: " + text);
    return text;
}

} // namespace

void LocatedText::append(const LocatedText& from, std::size_t begin, std::size_t end) {
    bytes.append(from.bytes, begin, end - begin);
    const auto first = from.spots.begin();
    spots.insert(spots.end(), first + static_cast<std::ptrdiff_t>(begin),
                 first + static_cast<std::ptrdiff_t>(end));
}

void LocatedText::append(char byte, Spot spot) {
    bytes += byte;
    spots.push_back(spot);
}

LocatedText located(std::string_view text) {
    LocatedText result{std::string(text), {}};
    result.spots.reserve(text.size());
    Spot spot{1, 0};
    bool after_line_end = false;
    for (const char byte : text) {
        if (after_line_end) spot = {spot.line + 1, 0};
        if (begins_character(byte) || spot.column == 0) ++spot.column;
        result.spots.push_back(spot);
        after_line_end = byte == '\n';
    }
    return result;
}

std::string joined(const TokenGroups& groups, std::string (*quoted)(const std::string&),
                   std::string_view between) {
    std::string text;
    for (const TokenGroup& group : groups) {
        if (&group != &groups.front()) text += between;
        for (const std::string& token : group)
            text.append(&token == &group.front() ? "" : " ").append(quoted(token));
    }
    return text;
}

std::string_view first_line_of(std::string_view text) {
    while (!text.empty()) {
        std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        const auto begin = line.find_first_not_of(" \t\r");
        if (begin == line.npos || line[begin] == '#') continue;
        return line.substr(begin, line.find_last_not_of(" \t\r") + 1 - begin);
    }
    return {};
}

const LineFormat& format_named(std::string_view name) {
    return *std::find_if(std::begin(line_formats), std::end(line_formats),
                         [&](const LineFormat& format) { return format.name == name; });
}

const LineFormat& format_of(std::string_view text) {
    return *std::find_if(std::begin(line_formats), std::end(line_formats), [&](const LineFormat& format) {
        return format.is_written_so != nullptr && format.is_written_so(text);
    });
}

ReadTokens read(const LineFormat& format, const std::string& text) {
    ReadTokens tokens = format.read(located(text));
    for (const ReadToken& token : tokens)
        if (token.text.find('\0') != token.text.npos)
            throw NotUnderstood(token.spot, "no argument of a program can contain a zero character");
    return tokens;
}

std::string write(const LineFormat& format, std::u16string program, const std::vector<Tokens>& groups) {
    if (program.empty() && format.has_program) program = u"orvane";
    TokenGroups texts;
    if (!program.empty()) texts.push_back({utf8_of_token(program)});
    for (const Tokens& tokens : groups) {
        TokenGroup& group = texts.emplace_back();
        for (const std::u16string& token : tokens)
            group.push_back(utf8_of_token(token));
    }
    return std::string(program.empty() ? "" : format.before_program) + format.write(texts);
}

} // namespace orvane
