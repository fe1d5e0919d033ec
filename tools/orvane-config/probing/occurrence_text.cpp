// Occurrences as one would type them.
#include "probing/occurrence_text.hpp"

#include "text/lists.hpp"
#include "text/quoting.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>

namespace orvane {

std::string shown(const Occurrence& occurrence) {
    return joined(occurrence, " ", [](const Token& word) {
        if (word.asks_for_a_part()) return qel::i18n::ustring_to_utf8(word.sample);
        return word.sample.empty() ? shown(word.text) : "<value>";
    });
}

std::string numbers_of(const Occurrence& occurrence) {
    // One token may have become two, or two may have changed places.
    const auto [first, last] = std::minmax(occurrence.front().number, occurrence.back().number);
    if (first == last) return "token " + std::to_string(first);
    return "tokens " + std::to_string(first) + " and " + std::to_string(last);
}

} // namespace orvane
