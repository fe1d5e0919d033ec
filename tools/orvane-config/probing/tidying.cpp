// A shorter line that means the same.
#include "probing/tidying.hpp"

#include "reference/reference.hpp"

#include <algorithm>
#include <limits>

namespace orvane {
namespace {

/// By flag, the place at which it is sorted.
using Ranks = std::map<std::u16string, std::size_t>;

/// The one flag that limits what may follow it comes last, where nothing does.
Ranks ranks_in_reference() {
    Ranks ranks;
    for (const Reference& one : references())
        ranks.emplace(one.wide, one.trait == Trait::limits_next ? std::numeric_limits<std::size_t>::max()
                                                                : ranks.size());
    return ranks;
}

/// Flags that add to one setting stay in the order in which they add.
Ranks ranks_by_setting(const Effects& effects) {
    Ranks ranks = ranks_in_reference();
    for (const auto& [setting, occurrences] : effects.origins) {
        std::size_t least = std::numeric_limits<std::size_t>::max();
        for (const Occurrence& occurrence : occurrences)
            least = std::min(least, ranks[occurrence[0].text]);
        for (const Occurrence& occurrence : occurrences)
            ranks[occurrence[0].text] = least;
    }
    return ranks;
}

CommandLine sorted(CommandLine line, Ranks ranks) {
    std::stable_sort(line.begin(), line.end(), [&](const Occurrence& a, const Occurrence& b) {
        return ranks[a[0].text] < ranks[b[0].text];
    });
    return line;
}

/// The line without what has no effect.
CommandLine needed(const CommandLine& line, const Effects& effects) {
    std::set<std::size_t> dropped;
    for (const Redundant& redundant : effects.redundant)
        dropped.insert(redundant.occurrence[0].number);
    CommandLine kept;
    for (const Occurrence& occurrence : line)
        if (!dropped.contains(occurrence[0].number)) kept.push_back(occurrence);
    return kept;
}

} // namespace

std::optional<CommandLine> tidied(const CommandLine& line, const Answer& accepted, const Effects& effects) {
    const CommandLine kept = needed(line, effects);
    for (const CommandLine& candidate :
         {sorted(kept, ranks_in_reference()), sorted(kept, ranks_by_setting(effects)), kept}) {
        const Answer answer = ask(candidate);
        if (!answer.code && answer.settings == accepted.settings) return candidate;
    }
    return std::nullopt;
}

} // namespace orvane
