// Occurrences as one would type them.
#include "probing/occurrence_text.hpp"

#include "text/quoting.hpp"

#include <algorithm>

namespace orvane {

std::string shown(const Occurrence& occurrence) {
    std::string text;
    for (const Token& word : occurrence)
        text += (text.empty() ? "" : " ") + (!word.sample.empty() ? "<value>" : shown(word.text));
    return text;
}

std::string numbers_of(const Occurrence& occurrence) {
    // One token may have become two, or two may have changed places.
    const auto [first, last] = std::minmax(occurrence.front().number, occurrence.back().number);
    if (first == last) return "token " + std::to_string(first);
    return "tokens " + std::to_string(first) + " and " + std::to_string(last);
}

} // namespace orvane
