// Where tokens were read.
#pragma once

#include "formats/format.hpp"

#include <string>
#include <vector>

namespace orvane {

/// What people are told that it is called.
inline constexpr const char* standard_input = "standard input";

/// A place in a file.
struct SourcePlace {
    std::string file{}; ///< empty: the token was on the tool's command line
    Spot spot{};

    /// "unit.service:3:11"; only the name where the file has no lines.
    std::string text() const {
        if (spot.line == 0) return file;
        return file + ":" + std::to_string(spot.line) + ":" + std::to_string(spot.column);
    }
};

/// Of the tokens of a line. Those on the command line come last and may be missing.
using SourcePlaces = std::vector<SourcePlace>;

/// Null for a token that was not read from a file.
inline const SourcePlace* place_of(const SourcePlaces& places, std::size_t number) {
    if (number == 0 || number > places.size() || places[number - 1].file.empty()) return nullptr;
    return &places[number - 1];
}

/// ", unit.service:3:11", or nothing.
inline std::string at_place(const SourcePlaces& places, std::size_t number) {
    const SourcePlace* const place = place_of(places, number);
    return place == nullptr ? std::string() : ", " + place->text();
}

} // namespace orvane
