// What each occurrence in an accepted line does, found out by leaving it out.
#pragma once

#include "probing/probing.hpp"
#include "probing/settings.hpp"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace orvane {

/// An occurrence without which the record is the same, because of other occurrences.
struct Redundant {
    Occurrence occurrence{};
    std::optional<Occurrence> replaced_by{}; ///< without this one it would count
    bool needs_https = false;                ///< with a listener for TLS it would count

    std::size_t number() const { return occurrence[0].number; }
};

/// What the occurrences of an accepted line do.
struct Effects {
    std::vector<Redundant> redundant;
    CommandLine effective; ///< the line without them; it gives an equal record
    std::map<std::string, std::vector<Occurrence>>
        origins;                     ///< by setting: the occurrences without which it is another
    std::set<std::string> completed; ///< the settings to which the library adds at the end of the line

    CommandLine origins_of(const Setting& setting) const {
        const auto found = origins.find(setting.name);
        return found == origins.end() ? CommandLine() : found->second;
    }
};

/// `origins` and `completed` are filled when asked for. Costs a parse of the line for each occurrence, some more with
/// origins; of a long line, `effective` has only the first and last occurrences of each flag, which stand for the others.
Effects effects_of(const CommandLine& line, const Answer& accepted, bool with_origins);

} // namespace orvane
