// What an attacker would gain from the settings of an accepted line.
#pragma once

#include "explaining/explained_kind.hpp"
#include "explaining/warnings.hpp"

#include <span>
#include <string_view>
#include <vector>

namespace orvane {

/// Printed with each answer: a newer tool that finds more does not look like a change of the server.
inline constexpr std::string_view hazards_version = "2026-11";

enum class Level {
    open, ///< it takes nothing but to come
    weak, ///< it takes a known attack, or another mistake
};

std::string_view to_text(Level level);

struct Hazard {
    ExplainedKind kind; ///< its explanation is gain and instead
    Level level;
    std::string_view gain, instead; ///< with {name} for flags
};

/// In the order of hazards.def.
std::span<const Hazard> all_hazards();

/// Null when the id is that of another kind of warning.
const Hazard* hazard_of(std::string_view id);

/// What was found for one hazard.
struct HazardLook {
    enum class State {
        found,
        safe,
        not_configured, ///< there is nothing to look at
        not_looked_at,  ///< this build cannot
    };
    const Hazard* hazard;
    State state;
    std::vector<Warning> warnings{}; ///< where it was found
    std::string_view missing{};      ///< what is not configured, in words
};

/// All that are not ignored. Looks at settings, not at what the flags say: a value that is replaced does not count.
std::vector<HazardLook> look_at_hazards(const CommandLine& line, const Answer& answer, const Effects& effects,
                                        const WarningIds& ignored = {});

/// The warnings of those that are open.
std::vector<Warning> open_hazards(const CommandLine& line, const Answer& answer, const Effects& effects,
                                  const WarningIds& ignored);

} // namespace orvane
