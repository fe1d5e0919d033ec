// What somebody asks about.
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

bool add_id(const std::u16string& word, Lookup& found) {
    const auto kind = std::ranges::find(all_kinds(), ustring_to_utf8(word), &Explanation::id);
    if (kind == all_kinds().end()) return false;
    found.kinds.push_back(*kind);
    return true;
}

/// False when the word is no name of a flag.
bool add_flag(const std::u16string& word, Lookup& found) {
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

std::string text_of(const Reference& one) {
    return std::string(one.flag) + " " + std::string(one.value) + " " + one.meaning() + " " +
           one.relations() + " " + std::string(one.synonyms);
}

std::string text_of(const Explanation& one) {
    return one.id + " " + one.summary;
}

bool mentions_all(const std::string& text, const std::vector<std::u16string>& words) {
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
    for (const std::u16string& word : words) {
        const bool is_id = add_id(word, found), is_flag = add_flag(word, found);
        if (!is_id && !is_flag) found.unknown.push_back(ustring_to_utf8(word));
    }
    if (!found.unknown.empty()) {
        Lookup mentioning;
        for (const Reference& one : references())
            if (mentions_all(text_of(one), words)) mentioning.flags.push_back(&one);
        for (const Explanation& one : all_kinds())
            if (mentioning.flags.empty() && mentions_all(text_of(one), words))
                mentioning.kinds.push_back(one);
        if (!mentioning.flags.empty() || !mentioning.kinds.empty()) found = mentioning;
    }
    sort(found.flags);
    return found;
}

} // namespace orvane
