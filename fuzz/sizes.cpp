// A size is accepted if and only if it has the documented form, and its value is the one that exact arithmetic gives.
#include "fuzz.hpp"

#include <regex>

void examine(std::string_view bytes) {
    const std::u16string value = text_from(bytes.substr(0, 200));
    const std::string text = ustring_to_utf8(value);
    static const std::regex form("([0-9]+)( *([BKMGTPE]|[KMGTPE]I?B))?", std::regex::icase);
    optional<std::uint64_t> expected;
    if (std::smatch parts; std::regex_match(text, parts, form)) {
        __extension__ unsigned __int128 size = 0, limit = 1;
        limit <<= 64;
        for (const char digit : parts[1].str())
            size = std::min(limit, size * 10 + unsigned(digit - '0'));
        if (parts[3].length() != 0)
            size <<= 10 * "bkmgtpe"s.find(static_cast<char>(std::tolower(parts[3].str()[0])));
        if (size < limit) expected = static_cast<std::uint64_t>(size);
    }
    const auto record = accepted(option::log_rotation_size(), value);
    promise((record ? record->log_rotation_size() : boost::none) == expected, "a size is what its text says");
}
