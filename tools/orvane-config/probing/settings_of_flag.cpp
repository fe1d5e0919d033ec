// Which settings a flag is about.
#include "probing/settings_of_flag.hpp"

#include "probing/effects.hpp"
#include "text/lists.hpp"

#include "qel/i18n/convert.hpp"

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
    const Tokens line = line_with(reference);
    const Effects effects = effects_of(occurrences_of(line), ask(line), true);
    std::vector<std::string> names;
    for (const Setting& setting : settings_of({}))
        if (const auto origins = effects.origins.find(setting.name); origins != effects.origins.end())
            for (const Occurrence& occurrence : origins->second)
                if (occurrence[0].text == reference.wide) names.push_back(setting.name);
    return names;
}

} // namespace orvane
