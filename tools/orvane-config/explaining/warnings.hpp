// What is accepted, but probably not intended.
#pragma once

#include "explaining/explained_kind.hpp"
#include "probing/effects.hpp"

#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

struct Warning {
    std::size_t token; ///< the number of the token that it is about; 0: the line as a whole
    std::string_view id;
    std::string text;
    std::u16string meant{}; ///< the value for that token, where it is certain; else empty
};

using WarningIds = std::set<std::string, std::less<>>;

/// In the order of the tokens. `answer` and `effects` are those of the accepted line.
std::vector<Warning> warnings_of(const CommandLine& line, const Answer& answer, const Effects& effects,
                                 const WarningIds& ignored = {});

/// All kinds, in the order in which they are looked for.
std::span<const ExplainedKind> warning_kinds();

} // namespace orvane
