// Which flags somebody asks about.
#include "explaining/lookup.hpp"

#include "explaining/meant_flags.hpp"
#include "probing/settings_of_flag.hpp"
#include "text/spelling.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <cctype>

namespace orvane {
namespace {

using qel::i18n::ustring_to_utf8;

/// Also by the name of the record in which the settings are: `https.ssl_context`.
std::vector<const Reference*> with_setting(const std::string& name) {
    std::vector<const Reference*> flags;
    const auto named = [&](const std::string& setting) {
        return setting == name || setting.starts_with(name + ".");
    };
    for (const Reference& one : references()) {
        const auto settings = settings_of_flag(one);
        if (std::any_of(settings.begin(), settings.end(), named)) flags.push_back(&one);
    }
    return flags;
}

/// False when the word is no name of anything.
bool add_named(const std::u16string& word, Lookup& found) {
    if (const Reference* const flag = flag_spelled(word)) {
        found.flags.push_back(flag);
        return true;
    }
    if (const auto synonym = synonym_of(ustring_to_utf8(normalized(word)))) {
        if (synonym->reference != nullptr) found.flags.push_back(synonym->reference);
        if (!synonym->advice.empty()) found.advice.push_back(ustring_to_utf8(word) + ": " + synonym->advice);
        return true;
    }
    const auto flags = with_setting(ustring_to_utf8(lower(word)));
    found.flags.insert(found.flags.end(), flags.begin(), flags.end());
    return !flags.empty();
}

/// Whether a word of the text begins with the letters.
bool mentions(const std::string& text, const std::string& letters) {
    for (std::size_t at = 0; (at = text.find(letters, at)) != text.npos; ++at)
        if (at == 0 || std::isalnum(static_cast<unsigned char>(text[at - 1])) == 0) return true;
    return false;
}

bool mentions_all(const Reference& one, const std::vector<std::u16string>& words) {
    const std::string text = std::string(one.flag) + " " + std::string(one.value) + " " + one.meaning() +
                             " " + one.relations() + " " + std::string(one.synonyms);
    const std::string folded = ustring_to_utf8(lower(qel::i18n::utf8_to_ustring(text)));
    return std::all_of(words.begin(), words.end(), [&](const std::u16string& word) {
        return !word.empty() && mentions(folded, ustring_to_utf8(lower(word)));
    });
}

/// In the order of the reference, each once.
void sort(std::vector<const Reference*>& flags) {
    std::sort(flags.begin(), flags.end());
    flags.erase(std::unique(flags.begin(), flags.end()), flags.end());
}

} // namespace

Lookup look_up(const std::vector<std::u16string>& words) {
    Lookup found;
    for (const std::u16string& word : words)
        if (!add_named(word, found)) found.unknown.push_back(ustring_to_utf8(word));
    if (!found.unknown.empty()) {
        std::vector<const Reference*> mentioning;
        for (const Reference& one : references())
            if (mentions_all(one, words)) mentioning.push_back(&one);
        if (!mentioning.empty()) found = {mentioning, {}, {}};
    }
    sort(found.flags);
    return found;
}

} // namespace orvane
