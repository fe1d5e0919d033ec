// Occurrences as one would type them.
#include "probing/occurrence_text.hpp"

#include "text/lists.hpp"
#include "text/quoting.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>

namespace orvane {
namespace {

std::string numbered(std::size_t number) {
    return "token " + std::to_string(number);
}

} // namespace

std::string shown(const Occurrence& occurrence) {
    return joined(occurrence, " ", [](const Token& word) {
        if (word.asks_for_a_part()) return qel::i18n::ustring_to_utf8(word.sample);
        return word.sample.empty() ? shown(word.text) : "<value>";
    });
}

std::string numbers_of(const Occurrence& occurrence) {
    // One token may have become two, or two may have changed places.
    const auto [first, last] = std::minmax(occurrence.front().number, occurrence.back().number);
    if (first == last) return numbered(first);
    return "tokens " + std::to_string(first) + " and " + std::to_string(last);
}

std::string at_token(std::size_t number, const SourcePlaces& places) {
    return number == 0 ? "" : numbered(number) + at_place(places, number) + ": ";
}

} // namespace orvane
