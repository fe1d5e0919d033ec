// What the formats of command lines have in common.
#include "formats/format_table.hpp"
#include "text/lists.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <cctype>
#include <cstddef>

namespace orvane {
namespace {

constexpr bool begins_character(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
}

enum class Order { little, big, none };

/// The order of the bytes in UTF-16, which a mark tells, or that every other byte of the first eight characters is zero and
/// a flag is among them: no line of flags has eight tokens of one character.
Order utf16_order(std::string_view text) {
    if (text.starts_with("\xFE\xFF")) return Order::big;
    if (text.starts_with("\xFF\xFE")) return Order::little;
    using namespace std::string_view_literals;
    const auto zeros = [text](std::size_t from) {
        for (std::size_t i = 0; i != 16; ++i)
            if ((text[i] == '\0') != (i % 2 == from)) return false;
        return true;
    };
    if (text.size() < 16 || text.find("-\0-"sv) == text.npos) return Order::none;
    return zeros(0) ? Order::big : zeros(1) ? Order::little : Order::none;
}

/// From UTF-16, without its mark.
std::string utf8_of(std::string_view text, bool big) {
    const std::size_t mark = text.starts_with(big ? "\xFE\xFF" : "\xFF\xFE") ? 2 : 0;
    std::u16string units;
    for (std::size_t i = mark; i + 1 < text.size(); i += 2) {
        const auto byte = [&text](std::size_t at) { return static_cast<unsigned char>(text[at]); };
        units += static_cast<char16_t>(big ? byte(i) << 8 | byte(i + 1) : byte(i + 1) << 8 | byte(i));
    }
    return qel::i18n::ustring_to_utf8(units);
}

std::string utf8_of_token(const std::u16string& token) {
    std::string text = qel::i18n::ustring_to_utf8(token);
    if (qel::i18n::utf8_to_ustring(text) != token)
        throw CannotHold("a token contains half a surrogate pair, which UTF-8 cannot hold: " + text);
    return text;
}

TokenGroup texts_of(const ReadTokens& tokens) {
    TokenGroup texts;
    for (const ReadToken& token : tokens)
        texts.push_back(token.text);
    return texts;
}

/// Whether a text that was written in a format is also read as these tokens if nobody says which format it is.
bool is_read_as(const TokenGroup& tokens, const LineFormat& written, const std::string& text) {
    const std::string content = decoded(text);
    const LineFormat& told = format_of(content);
    if (&told == &written && content == text) return true;
    try {
        return texts_of(read(told, content)) == tokens;
    } catch (const NotUnderstood&) {
        return false;
    }
}

/// A first line that is continued, and empty, tells that a text is a shell's or a file of flags.
std::string readable(const LineFormat& format, std::string text) {
    const TokenGroup tokens = texts_of(read(format, text));
    if (is_read_as(tokens, format, text)) return text;
    text.insert(0, "\\\n");
    if (texts_of(read(format, text)) == tokens && is_read_as(tokens, format, text)) return text;
    throw CannotHold("in the format " + std::string(format.name) +
                     ", what begins with this token would be read as something else: " + tokens.front());
}

} // namespace

std::string decoded(std::string bytes) {
    if (const Order order = utf16_order(bytes); order != Order::none)
        bytes = utf8_of(bytes, order == Order::big);
    // No editor writes zero bytes.
    if (bytes.starts_with("\xEF\xBB\xBF") && !is_nul(bytes)) bytes.erase(0, 3);
    return bytes;
}

std::optional<Spot> first_not_utf8(const std::string& text) {
    const std::string again = qel::i18n::ustring_to_utf8(qel::i18n::utf8_to_ustring(text));
    const auto [at, other] = std::ranges::mismatch(text, again);
    if (at == text.end()) return {};
    return located(text).spots[static_cast<std::size_t>(at - text.begin())];
}

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

LocatedText part(const LocatedText& text, std::size_t begin, std::size_t end) {
    LocatedText result;
    result.append(text, begin, end);
    return result;
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
    return joined(groups, between, [quoted](const TokenGroup& group) { return joined(group, " ", quoted); });
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

bool is_section(std::string_view line) {
    const auto may_be_in = [](char c) {
        return std::isalnum(static_cast<unsigned char>(c)) != 0 ||
               std::string_view(" _.:-").find(c) != std::string_view::npos;
    };
    return line.size() > 2 && line.starts_with('[') && line.ends_with(']') &&
           std::isalpha(static_cast<unsigned char>(line[1])) != 0 &&
           std::ranges::all_of(line.substr(1, line.size() - 2), may_be_in);
}

const LineFormat& format_named(std::string_view name) {
    return *std::ranges::find(line_formats, name, &LineFormat::name);
}

const LineFormat& format_of(std::string_view text) {
    return *std::ranges::find_if(line_formats, [&](const LineFormat& format) {
        return format.is_written_so != nullptr && format.is_written_so(text);
    });
}

ReadTokens read(const LineFormat& format, const LocatedText& text) {
    ReadTokens tokens = format.read(text);
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
    std::string text = std::string(program.empty() ? "" : format.before_program) + format.write(texts);
    return !format.is_read ? text : readable(format, std::move(text));
}

} // namespace orvane
