// The format systemd, written: ExecStart= of a unit; and how it is recognized.
#include "formats/format_table.hpp"
#include "formats/unit_file.hpp"
#include "text/lists.hpp"

namespace orvane {
namespace {

constexpr std::string_view plain_in_units =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_./:,=@+";

bool is_noncharacter(std::string_view left) {
    // U+FDD0 to U+FDEF, and the last two of each plane; systemd refuses lines with them.
    const auto byte = [&](std::size_t i) {
        return i < left.size() ? static_cast<unsigned char>(left[i]) : 0;
    };
    if (byte(0) == 0xEF && byte(1) == 0xB7) return byte(2) >= 0x90 && byte(2) <= 0xAF;
    const std::size_t last = byte(0) >= 0xF0 ? 3 : 2;
    return byte(0) >= 0xEF && byte(last) >= 0xBE && byte(last - 1) == 0xBF &&
           (last == 2 || (byte(1) & 0x0F) == 0x0F);
}

std::string quoted_for_systemd(const std::string& token) {
    std::string text;
    std::size_t to_escape = 0; // so many bytes of a character that has to be coded
    for (std::size_t i = 0; i != token.size(); ++i) {
        const auto byte = static_cast<unsigned char>(token[i]);
        if (is_noncharacter(std::string_view(token).substr(i))) to_escape = byte >= 0xF0 ? 4 : 3;
        if (to_escape != 0 || byte < 0x20 || byte == 0x7F) {
            constexpr std::string_view digits = "0123456789abcdef";
            text += {'\\', 'x', digits[byte >> 4U], digits[byte & 15U]};
            to_escape -= to_escape != 0 ? 1 : 0;
            continue;
        }
        if (byte == '"' || byte == '\\') text += '\\';
        if (byte == '%' || byte == '$') text += token[i];
        text += token[i];
    }
    const bool is_plain = !text.empty() && text.find_first_not_of(plain_in_units) == text.npos;
    return is_plain ? text : '"' + text + '"';
}

} // namespace

bool is_systemd(std::string_view text) {
    const std::string_view line = first_line_of(text);
    constexpr std::string_view key = "ExecStart", sections[] = {"[Unit]",   "[Service]", "[Install]",
                                                                "[Socket]", "[Timer]",   "[Path]"};
    return contains(sections, line) || (is_section(line) && !is_settings(text)) ||
           (line.starts_with(key) &&
            line.substr(std::min(line.find_first_not_of(unit_blanks, key.size()), line.size()))
                .starts_with('='));
}

std::string as_systemd(const TokenGroups& groups) {
    if (groups.front().front().find_first_of("$%") != std::string::npos ||
        marks_before_program.find(groups.front().front().front()) != marks_before_program.npos)
        throw CannotHold("the program's path has a $ or % in it, or begins with one of " +
                         std::string(marks_before_program) + ": choose another path for a unit");
    return joined(groups, quoted_for_systemd, " \\\n    ") + '\n';
}

} // namespace orvane
