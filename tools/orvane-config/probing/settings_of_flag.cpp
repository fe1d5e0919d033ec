// Which settings a flag is about.
#include "probing/settings_of_flag.hpp"

#include "probing/origins.hpp"
#include "text/lists.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>

namespace orvane {
namespace {

/// A line that the server accepts, with the flag in it.
Tokens line_with(const Reference& reference) {
    Tokens line;
    for (const std::string& word : reference.example_words())
        line.push_back(qel::i18n::utf8_to_ustring(word));
    const Reference& required = flag_with(Trait::required);
    if (!contains(line, required.wide))
        line.insert(line.begin(),
                    {std::u16string(required.wide), qel::i18n::utf8_to_ustring(required.sample())});
    return line;
}

} // namespace

std::vector<std::string> settings_of_flag(const Reference& reference) {
    const CommandLine line = occurrences_of(line_with(reference));
    const auto settings = settings_of(ask(line).settings);
    const auto is_it = [&](const Occurrence& occurrence) { return occurrence[0].text == reference.wide; };
    const auto at = std::find_if(line.begin(), line.end(), is_it) - line.begin();
    std::vector<std::string> names;
    for (const std::size_t position : decided_by(line, static_cast<std::size_t>(at), settings))
        names.push_back(settings[position].name);
    return names;
}

} // namespace orvane
