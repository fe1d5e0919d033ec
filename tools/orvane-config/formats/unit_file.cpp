// The lines of a systemd unit.
#include "formats/unit_file.hpp"

namespace orvane {
namespace {

/// An odd number of backslashes: the last one continues the line.
bool is_continued(std::string_view line) {
    const auto last = line.find_last_not_of('\\');
    return (line.size() - (last == line.npos ? 0 : last + 1)) % 2 == 1;
}

LocatedText trimmed(const LocatedText& text) {
    const auto begin = text.bytes.find_first_not_of(unit_blanks);
    return begin == text.bytes.npos ? LocatedText()
                                    : part(text, begin, text.bytes.find_last_not_of(unit_blanks) + 1);
}

/// The lines as systemd puts them together: continued ones are one, also across comments.
std::vector<LocatedText> whole_lines(const LocatedText& unit) {
    std::vector<LocatedText> lines(1);
    const std::string_view all = unit.bytes;
    for (std::size_t begin = 0; begin < all.size();) {
        // A carriage return ends a line, too.
        const std::size_t end = std::min(all.find_first_of("\r\n", begin), all.size());
        const std::size_t text = std::min(all.find_first_not_of(" \t", begin), end);
        begin = end + (all.substr(end).starts_with("\r\n") ? 2 : 1);
        if (text != end && (all[text] == '#' || all[text] == ';')) continue;
        LocatedText& line = lines.back();
        line.append(unit, text, end);
        if (is_continued(all.substr(text, end - text)))
            line.bytes.back() = ' ';
        else
            lines.emplace_back();
    }
    return lines;
}

} // namespace

std::vector<UnitSetting> service_settings(const LocatedText& unit) {
    std::vector<UnitSetting> settings;
    std::string_view section = "[Service]";
    const std::vector<LocatedText> lines = whole_lines(unit);
    for (const LocatedText& whole : lines) {
        const std::string_view bytes = whole.bytes;
        const std::string_view line =
            bytes.substr(std::min(bytes.find_first_not_of(unit_blanks), bytes.size()));
        if (line.starts_with('[')) section = line.substr(0, line.find_last_not_of(unit_blanks) + 1);
        const auto equals = bytes.find('=');
        if (section != "[Service]" || equals == bytes.npos) continue;
        settings.push_back(
            {trimmed(part(whole, 0, equals)).bytes, trimmed(part(whole, equals + 1, bytes.size()))});
    }
    return settings;
}

} // namespace orvane
