// Examples as one would type them on this system.
#include "reference/reference.hpp"
#include "text/lists.hpp"
#include "text/path_anchor.hpp"
#include "text/quoting.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace orvane {
namespace {

/// What an example has, and what it has instead on Windows. The first that fits counts.
struct Place {
    std::string_view posix, windows;
};

constexpr Place places[] = {
    {"/usr/bin/env nice", "C:\\Tools\\nice.exe"},
    {"/usr/bin/logger", "C:\\Tools\\logger.exe"},
    {"/etc/orvane", "C:\\ProgramData\\Orvane"},
    {"/srv/orvane", "C:\\ProgramData\\Orvane"},
    {"/var/lib/orvane", "C:\\ProgramData\\Orvane"},
    {"/var/log/orvane", "C:\\ProgramData\\Orvane\\log"},
    {"/run/orvane", "C:\\ProgramData\\Orvane\\run"},
    {"/opt/telvar/runtime", "C:\\Telvar"},
    {"/var", "C:\\Orvane"},
    {"/srv", "C:\\Orvane"},
    {"/opt", "C:\\Orvane"},
    {"/", "C:\\"},
    {"C:\\logs", "\\logs"}, // of another system
};

/// The words of an example, some of them in single quotes.
std::vector<std::string> words_of(std::string_view text) {
    std::vector<std::string> words;
    while (!text.empty()) {
        const bool quoted = text.starts_with('\'');
        text.remove_prefix(quoted ? 1 : 0);
        const std::size_t end = std::min(text.find(quoted ? '\'' : ' '), text.size());
        words.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + (quoted ? 2 : 1), text.size()));
    }
    return words;
}

/// The word with paths of Windows.
std::string in_places(std::string word) {
    for (std::size_t at = 0; at < word.size();
         at = std::min(word.find_first_of(" =\"", at), word.size() - 1) + 1) {
        const auto fits = [&](const Place& one) {
            return std::string_view(word).substr(at).starts_with(one.posix);
        };
        const auto place = std::ranges::find_if(places, fits);
        if (place == std::end(places)) continue;
        word.replace(at, place->posix.size(), place->windows);
        const auto begin = word.begin() + static_cast<std::ptrdiff_t>(at);
        std::replace(begin, std::find(begin, word.end(), ' '), '/', '\\');
    }
    return word;
}

} // namespace

std::vector<std::string> words_of_example(std::string_view raw) {
    std::vector<std::string> words = words_of(with_flags(raw));
    if (backslash_separates()) std::ranges::transform(words, words.begin(), in_places);
    return words;
}

std::string example_of(std::string_view raw) {
    return joined(words_of_example(raw), " ",
                  [](const std::string& word) { return shown(qel::i18n::utf8_to_ustring(word)); });
}

} // namespace orvane
